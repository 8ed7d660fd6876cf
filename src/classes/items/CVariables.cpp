// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CVariables.h"

#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CVariables>();

STDMETHODIMP CVariables::Add(BSTR key, BSTR caption, BSTR description, BSTR symbol,
                             short parent_variable, short dimension_id, short unit_id,
                             short decimals, VARIANT value, VARIANT list_id, short data_type,
                             _CVariable** result) noexcept {
  return method_with_result(result, [&] {
    auto variable = make<CVariable>();
    const Ref<_CVariable> properties = variable;
    call(properties, &_CVariable::put_Key, key);
    call(properties, &_CVariable::put_Caption, caption);
    call(properties, &_CVariable::put_Description, description);
    call(properties, &_CVariable::put_Symbol, symbol);
    call(properties, &_CVariable::put_ParentVariable, parent_variable);
    call(properties, &_CVariable::put_DimensionID, dimension_id);
    call(properties, &_CVariable::put_UnitID, unit_id);
    call(properties, &_CVariable::put_Decimals, decimals);
    call(properties, &_CVariable::put_Value, value);
    call(properties, &_CVariable::put_ListID, list_id);
    call(properties, &_CVariable::put_DataType, data_type);
    list_.append(variable, view_of(key));
    return variable;
  });
}

bool CVariables::add(const Ref<CVariable>& variable) {
  return static_cast<bool>(added(variable->key(), variable));
}

}  // namespace pv
