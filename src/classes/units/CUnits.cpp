// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/units/CUnits.h"

namespace pv {

template ClassEntry class_entry<CUnits>();

Ref<CUnit> CUnits::add(std::wstring_view key, UnitRecord unit) {
  return added(key, make<CUnit>(key, std::move(unit)));
}

STDMETHODIMP CUnits::Add(BSTR key, BSTR caption, double slope, double offset,
                         _CUnit** result) noexcept {
  return method_with_result(result, [&] {
    return add(view_of(key), {std::wstring(view_of(caption)), slope, offset});
  });
}

STDMETHODIMP CUnits::List(BSTR separator, BSTR* result) noexcept {
  return method_with_result(result, [&] {
    const std::wstring_view given = view_of(separator);
    std::wstring captions;
    for (const auto& unit : list_) {
      captions.append(unit->record().caption).append(given.empty() ? L"|" : given);
    }
    return captions;
  });
}

}  // namespace pv
