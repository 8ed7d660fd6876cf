#include "classes/units/CUnits.h"

namespace pv {

Ref<CUnit> CUnits::add(std::wstring_view key, UnitRecord unit) {
  return added(key, make<CUnit>(key, std::move(unit)));
}

STDMETHODIMP CUnits::Add(BSTR key, BSTR caption, double slope, double offset,
                         _CUnit** result) noexcept {
  return returning(result, [&] {
    return add(view_of(key), {std::wstring(view_of(caption)), slope, offset});
  });
}

STDMETHODIMP CUnits::List(BSTR separator, BSTR* result) noexcept {
  return returning(result, [&] {
    const std::wstring_view given = view_of(separator);
    std::wstring captions;
    for (const auto& unit : list_) {
      captions.append(unit->record().caption).append(given.empty() ? L"|" : given);
    }
    return captions;
  });
}

}  // namespace pv
