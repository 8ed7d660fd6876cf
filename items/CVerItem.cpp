#include "items/CVerItem.h"

#include "com/fetch.h"

namespace pv {

STDMETHODIMP CVerItem::Copy(_CVerItem* dest, _CVerItem** result) noexcept {
  return returning(result, [&] {
    call(dest, &_CVerItem::put_Key, Bstr(entry_.key));
    call(dest, &_CVerItem::put_IndexKey, Bstr(entry_.index_key));
    return Ref<_CVerItem>(dest);
  });
}

}  // namespace pv
