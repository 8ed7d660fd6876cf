// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/units/CDimension.h"

#include "classes/units/CUnits.h"
#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CDimension>();

CDimension::CDimension() : units_(make<CUnits>()) {}

Ref<_CUnits> CDimension::units() const {
  if (file_) {
    const auto read = make<CUnits>();
    for (const UnitRecord& unit : file_->units(file_index_)) read->add(unit.caption, unit);
    units_ = read;
    file_.reset();
  }
  return units_;
}

STDMETHODIMP CDimension::get_Units(_CUnits** value) noexcept {
  return method_with_result(value, [&] { return units(); });
}

STDMETHODIMP CDimension::putref_Units(_CUnits* value) noexcept {
  return method([&] {
    set_field(units_, value);
    file_.reset();
  });
}

void CDimension::copy_to(_CDimension* dest) const {
  if (dest == this) return;
  const Ref<_CUnits> own = units();
  const long count = own ? result_of(own, &_CUnits::get_Count) : 0;
  const auto target =
      count > 0 ? required_object(result_of(dest, &_CDimension::get_Units)) : Ref<_CUnits>();
  const auto copies = make<CUnits>();
  for (long i = 1; i <= count; ++i) {
    const auto unit = result_of(own, &_CUnits::get_Item, Variant(i));
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
