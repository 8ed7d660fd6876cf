// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/units/CDimension.h"
#include "com/collection.h"

namespace pv {

class CUnit;
AUTOMATION_CLASS(CDimensions)

/// The dimension table of a transmitter.
class CDimensions final : public Collection<CDimensions, CDimension, Missing::kIsNothing> {
 public:
  STORED(Changed, VARIANT_BOOL, changed_)
  STDMETHODIMP LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Add(BSTR key, BSTR caption, _CUnits* units, _CDimension** result) noexcept override;
  STDMETHODIMP List(BSTR* result) noexcept override;
  STDMETHODIMP ToUnit(VARIANT value, VARIANT dimension, VARIANT unit, VARIANT* decimals,
                      ShowModeTypes mode, VARIANT_BOOL dirty, BSTR* result) noexcept override;
  /// What ToUnit answers; negative `decimals` mean the ordinary text of the number, and more than 8
  /// mean 8.
  Bstr shown(const VARIANT& value, const VARIANT& dimension, const VARIANT& unit, long decimals,
             ShowModeTypes mode, bool dirty) const;
  STDMETHODIMP ToBase(VARIANT value, VARIANT dimension, VARIANT unit,
                      VARIANT* result) noexcept override;
  STDMETHODIMP GetUnitObject(VARIANT dimension, VARIANT unit, _CUnit** result) noexcept override;
  STDMETHODIMP ChangeTitle(short index, BSTR new_name, VARIANT_BOOL* result) noexcept override;

 private:
  struct FoundUnit {
    Ref<_CUnit> unit;
    const CUnit* own = nullptr;  // the same, in units of our own
  };
  static FoundUnit unit_in(const Ref<_CUnits>& units, const VARIANT& unit);
  FoundUnit find_unit(const VARIANT& dimension, const VARIANT& unit) const;

  bool changed_ = false;
};

}  // namespace pv
