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

void CVariable::assign(VariableRecord record) {
  // Values are never part of a record: a float starts as number, everything else as text.
  Variant value = record.data_type == edtFloat ? Variant(0.0f) : Variant(L"0");
  Variant list_id(lenient_integer<short>(record.list_id));
  // From here on nothing is allocated.
  key_ = std::move(record.key);
  caption_ = std::move(record.caption);
  description_ = std::move(record.description);
  parent_variable_ = record.parent_variable;
  dimension_id_ = record.dimension_id;
  unit_id_ = record.unit_id;
  decimals_ = record.decimals;
  value_ = std::move(value);
  list_id_ = std::move(list_id);
  data_type_ = record.data_type;
  symbol_ = std::move(record.symbol);
}

STDMETHODIMP CVariable::Load(VARIANT members, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    std::wstring text;
    if (!attempt([&] { text = to_text(dereferenced(members)); })) return false;
    VariableFields fields = parse_variable_record(text, view({}).as<std::wstring>());
    Variant list_id = list_id_;
    assign(std::move(fields.record));
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
