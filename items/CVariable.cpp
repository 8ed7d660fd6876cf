#include "items/CVariable.h"

#include "util/number_text.h"

namespace pv {
namespace {

constexpr std::size_t kListIdField = 8;

}  // namespace

VariableRecord CVariable::record_without_list() const {
  return {key_,     caption_,  description_, parent_variable_, dimension_id_,
          unit_id_, decimals_, {},           data_type_,       symbol_};
}

VariableRecord CVariable::record() const {
  VariableRecord record = record_without_list();
  record.list_id = text_of(list_id_);
  return record;
}

void CVariable::assign(VariableRecord record) {
  key_ = std::move(record.key);
  caption_ = std::move(record.caption);
  description_ = std::move(record.description);
  parent_variable_ = record.parent_variable;
  dimension_id_ = record.dimension_id;
  unit_id_ = record.unit_id;
  decimals_ = record.decimals;
  // Values are never part of a record: a float starts as number, everything else as text.
  value_ = record.data_type == edtFloat ? Variant(0.0f) : Variant(L"0");
  list_id_ = Variant(integer_of<short>(record.list_id));
  data_type_ = record.data_type;
  symbol_ = std::move(record.symbol);
}

STDMETHODIMP CVariable::Load(VARIANT members, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    std::wstring text;
    if (!attempt([&] { text = text_of(dereferenced(members)); })) return false;
    VariableFields fields = parse_variable_record(text, record_without_list());
    Variant list_id = list_id_;
    assign(std::move(fields.record));
    if (fields.present <= kListIdField) list_id_ = std::move(list_id);
    return fields.present >= kVariableFieldCount;
  });
}

STDMETHODIMP CVariable::Save(BSTR* result) noexcept {
  return returning(result, [&] { return format_variable_record(record()); });
}

}  // namespace pv
