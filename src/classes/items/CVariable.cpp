// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CVariable.h"

#include "core/text/number_text.h"

namespace pv {

template ClassEntry class_entry<CVariable>();

namespace {

constexpr std::size_t kListIdField = 8;

}  // namespace

VariableRecordView CVariable::view(std::wstring_view list_id) const {
  return {.key = key_,
          .caption = caption_,
          .description = description_,
          .parent_variable = parent_variable_,
          .dimension_id = dimension_id_,
          .unit_id = unit_id_,
          .decimals = decimals_,
          .list_id = list_id,
          .data_type = data_type_,
          .symbol = symbol_};
}

void CVariable::assign(const VariableRecordView& record, RecentTexts& texts) {
  // Values are never part of a record: a float starts as number, everything else as text.
  Variant value = record.data_type == edtFloat ? Variant(0.0f) : Variant(L"0");
  Variant list_id(lenient_integer<short>(record.list_id));
  SharedText key = texts.shared(record.key);
  SharedText caption = texts.shared(record.caption);
  SharedText description = texts.shared(record.description);
  SharedText symbol = texts.shared(record.symbol);
  // From here on nothing is allocated.
  key_ = std::move(key);
  caption_ = std::move(caption);
  description_ = std::move(description);
  symbol_ = std::move(symbol);
  parent_variable_ = record.parent_variable;
  dimension_id_ = record.dimension_id;
  unit_id_ = record.unit_id;
  decimals_ = record.decimals;
  value_ = std::move(value);
  list_id_ = std::move(list_id);
  data_type_ = record.data_type;
}

STDMETHODIMP CVariable::get_Tolerance(VARIANT* result) noexcept {
  return method_with_result(result, [&] { return tolerance_ ? *tolerance_ : Variant(0.0); });
}

STDMETHODIMP CVariable::put_Tolerance(VARIANT value) noexcept {
  return method([&] { tolerance_ = std::make_unique<Variant>(dereferenced(value)); });
}

STDMETHODIMP CVariable::Load(VARIANT members, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    std::wstring text;
    if (!attempt([&] { text = to_text(dereferenced(members)); })) return false;
    const VariableFields fields = parse_variable_record(text, view({}));
    Variant list_id = list_id_;
    RecentTexts texts;
    assign(fields.record, texts);
    if (fields.present <= kListIdField) list_id_ = std::move(list_id);
    return fields.present >= kVariableFieldCount;
  });
}

STDMETHODIMP CVariable::Save(BSTR* result) noexcept {
  return method_with_result(result, [&] {
    const std::wstring list_id = to_text(list_id_);
    return format_variable_record(view(list_id));
  });
}

}  // namespace pv
