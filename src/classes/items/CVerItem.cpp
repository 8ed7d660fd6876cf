// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CVerItem.h"

#include "com/text_properties.h"

namespace pv {

template ClassEntry class_entry<CVerItem>();

STDMETHODIMP CVerItem::Copy(_CVerItem* dest, _CVerItem** result) noexcept {
  return method_with_result(result, [&] {
    put_together<_CVerItem>(
        dest, {{&_CVerItem::get_Key, &_CVerItem::put_Key, entry_.key},
               {&_CVerItem::get_IndexKey, &_CVerItem::put_IndexKey, entry_.index_key}});
    return Ref<_CVerItem>(dest);
  });
}

}  // namespace pv
