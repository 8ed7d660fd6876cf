// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <utility>

#include "com/call.h"
#include "com/object.h"
#include "core/items/item_record.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CItem)

/// One parameter of a transmitter.
class CItem final : public AutomationObject<CItem> {
 public:
  STORED(Key, BSTR, record_.key)
  STORED(ItemID, short, record_.item_id)
  STORED(ByMeaning, VARIANT_BOOL, record_.by_meaning)
  STORED(Access, short, record_.access)
  STORED(Historian, VARIANT_BOOL, record_.historian)
  STORED(Restore, VARIANT_BOOL, record_.restore)
  STORED(SmartWait, float, record_.smart_wait)
  STDMETHODIMP get_Length(short index, short* result) noexcept override;
  STDMETHODIMP put_Length(short index, short value) noexcept override;
  STDMETHODIMP get_Variables(_CVariables** result) noexcept override;
  STDMETHODIMP putref_Variables(_CVariables* value) noexcept override;

  // Properties of the variable at `index`; an index out of range means the first variable.
// NOLINTBEGIN(bugprone-macro-parentheses): types take no parentheses.
#define OF_VARIABLE(Name, Type, Property)                                                 \
  STDMETHODIMP get_##Name(short index, Type* result) noexcept override {                  \
    return method_with_result(                                                            \
        result, [&] { return result_of(variable(index), &_CVariable::get_##Property); }); \
  }                                                                                       \
  STDMETHODIMP put_##Name(short index, Type value) noexcept override {                    \
    return method([&] { call(variable(index), &_CVariable::put_##Property, value); });    \
  }
  OF_VARIABLE(Dimension, short, DimensionID)
  OF_VARIABLE(Unit, short, UnitID)
  OF_VARIABLE(Caption, BSTR, Caption)
  OF_VARIABLE(Description, BSTR, Description)
  OF_VARIABLE(Symbol, BSTR, Symbol)
  OF_VARIABLE(Decimals, short, Decimals)
  OF_VARIABLE(Value, VARIANT, Value)
  OF_VARIABLE(Dirty, VARIANT_BOOL, Dirty)
  OF_VARIABLE(DataType, short, DataType)
// NOLINTEND(bugprone-macro-parentheses)
#undef OF_VARIABLE

  STDMETHODIMP Copy(_CItem* dest, _CItem** result) noexcept override;
  STDMETHODIMP CheckVarIndex(short index, short* result) noexcept override;

  const ItemRecord& record() const { return record_; }
  void assign(ItemRecord record) { record_ = std::move(record); }
  void identify(std::wstring_view key, short item_id) {
    record_.key = key;
    record_.item_id = item_id;
  }
  void set_variables(Ref<_CVariables> variables) { variables_ = std::move(variables); }
  const Ref<_CVariables>& variables();
  void copy_to(_CItem* dest);

 private:
  short checked_index(short index);
  Ref<_CVariable> variable(short index);

  ItemRecord record_{{}, 0, true, 1, false, false, 0.5f, 4};
  Ref<_CVariables> variables_;
};

}  // namespace pv
