// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "core/items/item_record.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CVariable)

/// One field of an item.
class CVariable final : public AutomationObject<CVariable> {
 public:
  CVariable() = default;
  /// A variable that never had the texts of a new one.
  explicit CVariable(VariableRecord record) : description_(), caption_() {
    assign(std::move(record));
  }

  STORED(Key, BSTR, key_)
  STORED(DataType, short, data_type_)
  STORED(Dirty, VARIANT_BOOL, dirty_)
  STORED(ParentVariable, short, parent_variable_)
  STORED(ListID, VARIANT, list_id_)
  STORED(Value, VARIANT, value_)
  STORED(Tolerance, VARIANT, tolerance_)
  STORED(EnableTolerance, VARIANT_BOOL, enable_tolerance_)
  STORED(Decimals, short, decimals_)
  STORED(UnitID, short, unit_id_)
  STORED(DimensionID, short, dimension_id_)
  STORED(Symbol, BSTR, symbol_)
  STORED(Description, BSTR, description_)
  STORED(Caption, BSTR, caption_)
  STDMETHODIMP Load(VARIANT members, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Save(BSTR* result) noexcept override;

  /// The fields that a variable record holds, as they stand here; `list_id` is the text of the
  /// list, which may be a value that has none.
  VariableRecordView view(std::wstring_view list_id) const;
  void assign(VariableRecord record);

  const std::wstring& key() const { return key_; }
  const Variant& list_id() const { return list_id_; }

 private:
  std::wstring key_;
  short data_type_ = edtBit;
  bool dirty_ = false;
  short parent_variable_ = 0;
  Variant list_id_{static_cast<short>(0)};
  Variant value_{0.0};
  Variant tolerance_{0.0};
  bool enable_tolerance_ = true;
  short decimals_ = 2;
  short unit_id_ = 1;
  short dimension_id_ = 1;
  std::wstring symbol_;
  std::wstring description_ = L"New variable";
  std::wstring caption_ = L"New";
};

}  // namespace pv
