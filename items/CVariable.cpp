#include "items/CVariable.h"

#include "util/number_text.h"

namespace pv {

VariableRecord CVariable::record() const {
  return {key_,     caption_,  description_,      parent_variable_, dimension_id_,
          unit_id_, decimals_, text_of(list_id_), data_type_,       symbol_};
}

void CVariable::assign(const VariableRecord& record) {
  key_ = record.key;
  caption_ = record.caption;
  description_ = record.description;
  parent_variable_ = record.parent_variable;
  dimension_id_ = record.dimension_id;
  unit_id_ = record.unit_id;
  decimals_ = record.decimals;
  // Values are never part of a record: a float starts as number, everything else as text.
  value_ = record.data_type == edtFloat ? Variant(0.0f) : Variant(L"0");
  list_id_ = Variant(integer_of<short>(record.list_id));
  data_type_ = record.data_type;
  symbol_ = record.symbol;
}

STDMETHODIMP CVariable::Load(VARIANT members, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    const VariableFields fields = parse_variable_record(text_of(dereferenced(members)), record());
    assign(fields.record);
    return fields.present >= kVariableFieldCount;
  });
}

STDMETHODIMP CVariable::Save(BSTR* result) noexcept {
  return returning(result, [&] { return format_variable_record(record()); });
}

}  // namespace pv
