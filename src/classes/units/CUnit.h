// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "core/units/dimension_file.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CUnit)

/// An engineering unit.
class CUnit final : public AutomationObject<CUnit> {
 public:
  CUnit() = default;
  CUnit(std::wstring_view key, UnitRecord unit) : key_(key), unit_(std::move(unit)) {}

  STORED(Key, BSTR, key_)
  STORED(Caption, BSTR, unit_.caption)
  STORED(Slope, double, unit_.slope)
  STORED(Offset, double, unit_.offset)
  STDMETHODIMP Load(BSTR members, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Save(BSTR* result) noexcept override;

  const UnitRecord& record() const { return unit_; }

 private:
  std::wstring key_;
  UnitRecord unit_{L"Untitled", 0, 0};
};

}  // namespace pv
