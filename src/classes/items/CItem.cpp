#include "classes/items/CItem.h"

#include "classes/items/CVariables.h"
#include "com/fetch.h"

namespace pv {
namespace {

void copy_variable(_CVariable* variable, const Ref<_CVariables>& target) {
  fetch(target, &_CVariables::Add, Bstr(fetch(variable, &_CVariable::get_Key)),
        Bstr(fetch(variable, &_CVariable::get_Caption)),
        Bstr(fetch(variable, &_CVariable::get_Description)),
        Bstr(fetch(variable, &_CVariable::get_Symbol)),
        fetch(variable, &_CVariable::get_ParentVariable),
        fetch(variable, &_CVariable::get_DimensionID), fetch(variable, &_CVariable::get_UnitID),
        fetch(variable, &_CVariable::get_Decimals), fetch(variable, &_CVariable::get_Value),
        fetch(variable, &_CVariable::get_ListID), fetch(variable, &_CVariable::get_DataType));
}

VARIANT_BOOL automation_boolean(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

}  // namespace

const Ref<_CVariables>& CItem::variables() {
  if (!variables_) set_variables(make<CVariables>());
  return variables_;
}

short CItem::checked_index(short index) {
  return index >= 1 && index <= fetch(variables(), &_CVariables::get_Count) ? index : short{1};
}

Ref<_CVariable> CItem::variable(short index) {
  return fetch(variables(), &_CVariables::get_Item, Variant(checked_index(index)));
}

template <class Out, class Getter>
HRESULT CItem::get_of_variable(short index, Out* result, Getter getter,
                               const Location& where) noexcept {
  return returning(
      result, [&] { return fetch(variable(index), getter); }, where);
}

template <class Value, class Putter>
HRESULT CItem::put_to_variable(short index, Value value, Putter putter,
                               const Location& where) noexcept {
  return doing([&] { call(variable(index), putter, value); }, where);
}

// The length is one value per item; the index is there for the likeness with its neighbours.
STDMETHODIMP CItem::get_Length(short, short* result) noexcept {
  return returning(result, [&] { return record_.length; });
}

STDMETHODIMP CItem::put_Length(short, short value) noexcept {
  return doing([&] { record_.length = value; });
}

STDMETHODIMP CItem::get_Variables(_CVariables** result) noexcept {
  return returning(result, [&] { return variables(); });
}

STDMETHODIMP CItem::putref_Variables(_CVariables* value) noexcept {
  return doing([&] { set_variables(value); });
}

STDMETHODIMP CItem::get_Dimension(short index, short* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_DimensionID);
}
STDMETHODIMP CItem::put_Dimension(short index, short value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_DimensionID);
}
STDMETHODIMP CItem::get_Unit(short index, short* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_UnitID);
}
STDMETHODIMP CItem::put_Unit(short index, short value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_UnitID);
}
STDMETHODIMP CItem::get_Caption(short index, BSTR* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_Caption);
}
STDMETHODIMP CItem::put_Caption(short index, BSTR value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_Caption);
}
STDMETHODIMP CItem::get_Description(short index, BSTR* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_Description);
}
STDMETHODIMP CItem::put_Description(short index, BSTR value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_Description);
}
STDMETHODIMP CItem::get_Symbol(short index, BSTR* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_Symbol);
}
STDMETHODIMP CItem::put_Symbol(short index, BSTR value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_Symbol);
}
STDMETHODIMP CItem::get_Decimals(short index, short* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_Decimals);
}
STDMETHODIMP CItem::put_Decimals(short index, short value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_Decimals);
}
STDMETHODIMP CItem::get_Value(short index, VARIANT* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_Value);
}
STDMETHODIMP CItem::put_Value(short index, VARIANT value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_Value);
}
STDMETHODIMP CItem::get_Dirty(short index, VARIANT_BOOL* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_Dirty);
}
STDMETHODIMP CItem::put_Dirty(short index, VARIANT_BOOL value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_Dirty);
}
STDMETHODIMP CItem::get_DataType(short index, short* result) noexcept {
  return get_of_variable(index, result, &_CVariable::get_DataType);
}
STDMETHODIMP CItem::put_DataType(short index, short value) noexcept {
  return put_to_variable(index, value, &_CVariable::put_DataType);
}

void CItem::copy_to(_CItem* dest) {
  if (dest == this) return;
  const auto target = present(fetch(dest, &_CItem::get_Variables));
  const long count = fetch(variables(), &_CVariables::get_Count);
  const auto copies = make<CVariables>();  // all of them first: both items may share theirs
  for (long i = 1; i <= count; ++i) {
    copy_variable(fetch(variables(), &_CVariables::get_Item, Variant(i)).get(), copies);
  }
  call(dest, &_CItem::put_Key, Bstr(record_.key));  // the last step that takes memory
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
  return returning(result, [&] {
    copy_to(dest);
    return Ref<_CItem>(dest);
  });
}

STDMETHODIMP CItem::CheckVarIndex(short index, short* result) noexcept {
  return returning(result, [&] { return checked_index(index); });
}

}  // namespace pv
