// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/items/CVariable.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CVariables)

/// The ordered, keyed variables of an item.
class CVariables final : public Collection<CVariables, CVariable, Missing::kRaises> {
 public:
  STDMETHODIMP Add(BSTR key, BSTR caption, BSTR description, BSTR symbol, short parent_variable,
                   short dimension_id, short unit_id, short decimals, VARIANT value,
                   VARIANT list_id, short data_type, _CVariable** result) noexcept override;

  /// Adds a variable under its own key; false when the key is in use.
  bool add(const Ref<CVariable>& variable);
};

}  // namespace pv
