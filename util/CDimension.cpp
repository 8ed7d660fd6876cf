#include "util/CDimension.h"

#include "com/fetch.h"
#include "util/CUnits.h"

namespace pv {

CDimension::CDimension() : units_(make<CUnits>()) {}

void CDimension::copy_to(_CDimension* dest) const {
  if (dest == this) return;
  const long count = units_ ? fetch(units_, &_CUnits::get_Count) : 0;
  if (count > 0) {
    const auto target = fetch(dest, &_CDimension::get_Units);
    call(target, &_CUnits::Clear);
    for (long i = 1; i <= count; ++i) {
      const auto unit = fetch(units_, &_CUnits::get_Item, Variant(i));
      const Bstr caption(fetch(unit, &_CUnit::get_Caption));
      fetch(target, &_CUnits::Add, caption, caption, fetch(unit, &_CUnit::get_Slope),
            fetch(unit, &_CUnit::get_Offset));
    }
  }
  call(dest, &_CDimension::put_Caption, Bstr(caption_));
}

STDMETHODIMP CDimension::Copy(_CDimension* dest, _CDimension** result) noexcept {
  return returning(result, [&] {
    attempt([&] { copy_to(dest); });
    return Ref<_CDimension>(dest);
  });
}

}  // namespace pv
