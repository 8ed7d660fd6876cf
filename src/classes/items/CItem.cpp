// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CItem.h"

#include "classes/items/CVariables.h"
#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CItem>();

namespace {

void copy_variable(_CVariable* variable, const Ref<_CVariables>& target) {
  result_of(
      target, &_CVariables::Add, Bstr(result_of(variable, &_CVariable::get_Key)),
      Bstr(result_of(variable, &_CVariable::get_Caption)),
      Bstr(result_of(variable, &_CVariable::get_Description)),
      Bstr(result_of(variable, &_CVariable::get_Symbol)),
      result_of(variable, &_CVariable::get_ParentVariable),
      result_of(variable, &_CVariable::get_DimensionID),
      result_of(variable, &_CVariable::get_UnitID), result_of(variable, &_CVariable::get_Decimals),
      result_of(variable, &_CVariable::get_Value), result_of(variable, &_CVariable::get_ListID),
      result_of(variable, &_CVariable::get_DataType));
}

VARIANT_BOOL automation_boolean(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

}  // namespace

const Ref<_CVariables>& CItem::variables() {
  if (!variables_) set_variables(make<CVariables>());
  return variables_;
}

short CItem::checked_index(short index) {
  return index >= 1 && index <= result_of(variables(), &_CVariables::get_Count) ? index : short{1};
}

Ref<_CVariable> CItem::variable(short index) {
  return result_of(variables(), &_CVariables::get_Item, Variant(checked_index(index)));
}

// The length is one value per item; the index is there for the likeness with its neighbours.
STDMETHODIMP CItem::get_Length(short, short* result) noexcept {
  return method_with_result(result, [&] { return record_.length; });
}

STDMETHODIMP CItem::put_Length(short, short value) noexcept {
  return method([&] { record_.length = value; });
}

STDMETHODIMP CItem::get_Variables(_CVariables** result) noexcept {
  return method_with_result(result, [&] { return variables(); });
}

STDMETHODIMP CItem::putref_Variables(_CVariables* value) noexcept {
  return method([&] { set_variables(value); });
}

void CItem::copy_to(_CItem* dest) {
  if (dest == this) return;
  const auto target = required_object(result_of(dest, &_CItem::get_Variables));
  const long count = result_of(variables(), &_CVariables::get_Count);
  const auto copies = make<CVariables>();  // all of them first: both items may share theirs
  for (long i = 1; i <= count; ++i) {
    copy_variable(result_of(variables(), &_CVariables::get_Item, Variant(i)).get(), copies);
  }
  call(dest, &_CItem::put_Key, Bstr(record_.key));  // the last step that allocates
  give_members(copies, target, [](const Ref<_CVariables>& variables, CVariable& copy) {
    copy_variable(&copy, variables);
  });
  call(dest, &_CItem::put_ItemID, record_.item_id);
  call(dest, &_CItem::put_ByMeaning, automation_boolean(record_.by_meaning));
  call(dest, &_CItem::put_Access, record_.access);
  call(dest, &_CItem::put_Historian, automation_boolean(record_.historian));
  call(dest, &_CItem::put_Restore, automation_boolean(record_.restore));
  call(dest, &_CItem::put_SmartWait, record_.smart_wait);
  call(dest, &_CItem::put_Length, short{1}, record_.length);
}

STDMETHODIMP CItem::Copy(_CItem* dest, _CItem** result) noexcept {
  return method_with_result(result, [&] {
    copy_to(dest);
    return Ref<_CItem>(dest);
  });
}

STDMETHODIMP CItem::CheckVarIndex(short index, short* result) noexcept {
  return method_with_result(result, [&] { return checked_index(index); });
}

}  // namespace pv
