// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "com/object.h"
#include "core/items/item_record.h"
#include "core/text/shared_text.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CVariable)

/// One field of an item.
class CVariable final : public AutomationObject<CVariable> {
 public:
  CVariable() : description_(L"New variable"), caption_(L"New") {}
  /// A variable of a file, whose texts are shared with those of others.
  CVariable(const VariableRecordView& record, RecentTexts& texts) { assign(record, texts); }

  STORED(Key, BSTR, key_)
  STORED(DataType, short, data_type_)
  STORED(Dirty, VARIANT_BOOL, dirty_)
  STORED(ParentVariable, short, parent_variable_)
  STORED(ListID, VARIANT, list_id_)
  STORED(Value, VARIANT, value_)
  STDMETHODIMP get_Tolerance(VARIANT* result) noexcept override;
  STDMETHODIMP put_Tolerance(VARIANT value) noexcept override;
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
  void assign(const VariableRecordView& record, RecentTexts& texts);

  std::wstring_view key() const { return key_; }
  const Variant& list_id() const { return list_id_; }
  const Variant& value() const { return value_; }
  bool dirty() const { return dirty_; }
  short parent_variable() const { return parent_variable_; }
  short decimals() const { return decimals_; }
  short unit_id() const { return unit_id_; }
  short dimension_id() const { return dimension_id_; }

 private:
  // There are very many variables: members are small, and in an order that leaves no gaps.
  SharedText key_;
  SharedText symbol_;
  SharedText description_;
  SharedText caption_;
  std::unique_ptr<Variant> tolerance_;  // made when one is set; 0 until then
  short data_type_ = edtBit;
  short parent_variable_ = 0;
  short decimals_ = 2;
  short unit_id_ = 1;
  short dimension_id_ = 1;
  bool dirty_ = false;
  bool enable_tolerance_ = true;
  Variant list_id_{static_cast<short>(0)};
  Variant value_{0.0};
};

}  // namespace pv
