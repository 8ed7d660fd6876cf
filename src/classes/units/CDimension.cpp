#include "classes/units/CDimension.h"

#include "classes/units/CUnits.h"
#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CDimension>();

CDimension::CDimension() : units_(make<CUnits>()) {}

void CDimension::copy_to(_CDimension* dest) const {
  if (dest == this) return;
  const long count = units_ ? result_of(units_, &_CUnits::get_Count) : 0;
  const auto target =
      count > 0 ? required_object(result_of(dest, &_CDimension::get_Units)) : Ref<_CUnits>();
  const auto copies = make<CUnits>();
  for (long i = 1; i <= count; ++i) {
    const auto unit = result_of(units_, &_CUnits::get_Item, Variant(i));
    const std::wstring caption = result_of(unit, &_CUnit::get_Caption);
    copies->add(caption, {caption, result_of(unit, &_CUnit::get_Slope),
                          result_of(unit, &_CUnit::get_Offset)});
  }
  call(dest, &_CDimension::put_Caption, Bstr(caption_));  // the last step that takes memory
  if (count == 0) return;
  give_members(copies, target, [](const Ref<_CUnits>& units, const CUnit& copy) {
    const UnitRecord& unit = copy.record();
    const Bstr caption(unit.caption);
    result_of(units, &_CUnits::Add, caption, caption, unit.slope, unit.offset);
  });
}

STDMETHODIMP CDimension::Copy(_CDimension* dest, _CDimension** result) noexcept {
  return method_with_result(result, [&] {
    attempt([&] { copy_to(dest); });
    return Ref<_CDimension>(dest);
  });
}

}  // namespace pv
