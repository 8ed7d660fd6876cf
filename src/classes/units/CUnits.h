// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/units/CUnit.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CUnits)

/// The units of a dimension.
class CUnits final : public Collection<CUnits, CUnit, Missing::kIsNothing> {
 public:
  STDMETHODIMP Add(BSTR key, BSTR caption, double slope, double offset,
                   _CUnit** result) noexcept override;
  STDMETHODIMP List(BSTR separator, BSTR* result) noexcept override;

  /// Nothing when the key is in use.
  Ref<CUnit> add(std::wstring_view key, UnitRecord unit);
};

}  // namespace pv
