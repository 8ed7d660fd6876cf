// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/item_record.h"

#include <algorithm>
#include <array>

#include "core/text/ascii.h"
#include "core/text/number_text.h"
#include "core/text/settings_text.h"

namespace pv {
namespace {

constexpr std::size_t kItemFieldCount = 8;

std::wstring joined(std::span<const std::wstring_view> fields) {
  std::wstring record;
  for (const std::wstring_view field : fields) record.append(field).push_back(kRecordSeparator);
  return record;
}

}  // namespace

bool parse_boolean(std::wstring_view text, BooleanConversion platform) {
  if (const auto value = parse_integer(text)) return *value != 0;
  if (same_ascii(text, L"true")) return true;
  return !same_ascii(text, L"false") && platform(text);
}

ItemRecord parse_item_record(std::wstring_view text, BooleanConversion platform, wchar_t decimal) {
  std::array<std::wstring_view, kItemFieldCount> fields;
  split_record(text, kRecordSeparator, fields);
  return {.key = std::wstring(fields[0]),
          .item_id = lenient_integer<std::int16_t>(fields[1]),
          .by_meaning = parse_boolean(fields[2], platform),
          .access = lenient_integer<std::int16_t>(fields[3]),
          .historian = parse_boolean(fields[4], platform),
          .restore = parse_boolean(fields[5], platform),
          .smart_wait = single_of(lenient_number(fields[6], decimal)).value_or(0.0F),
          .length = lenient_integer<std::int16_t>(fields[7])};
}

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only digits that were written are read.
RecordFields::RecordFields(const ItemRecord& item, wchar_t decimal)
    : smart_wait_(format_number(item.smart_wait, decimal)) {
  text(item.key);
  number(item.item_id);
  boolean(item.by_meaning);
  number(item.access);
  boolean(item.historian);
  boolean(item.restore);
  text(smart_wait_);
  number(item.length);
}

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only digits that were written are read.
RecordFields::RecordFields(const VariableRecordView& variable) {
  text(variable.key);
  text(variable.caption);
  text(variable.description);
  number(variable.parent_variable);
  number(variable.dimension_id);
  number(variable.unit_id);
  number(variable.decimals);
  text({});
  text(variable.list_id);
  number(variable.data_type);
  text(variable.symbol);
}

void RecordFields::number(std::int16_t field) {
  wchar_t* const begin = end_of_digits_;
  end_of_digits_ = write_integer(field, begin);
  text({begin, static_cast<std::size_t>(end_of_digits_ - begin)});
}

std::wstring format_item_record(const ItemRecord& item, wchar_t decimal) {
  return joined(RecordFields(item, decimal).all());
}

VariableFields parse_variable_record(std::wstring_view text, const VariableRecordView& initial) {
  std::array<std::wstring_view, kVariableFieldCount> fields;
  const std::size_t present = split_record(text, kRecordSeparator, fields);
  VariableRecordView record = initial;
  const auto take_text = [&](std::size_t i, std::wstring_view& target) {
    if (i < present) target = fields[i];
  };
  const auto take_integer = [&](std::size_t i, std::int16_t& target) {
    if (i < present) target = lenient_integer<std::int16_t>(fields[i]);
  };
  take_text(0, record.key);
  take_text(1, record.caption);
  take_text(2, record.description);
  take_integer(3, record.parent_variable);
  take_integer(4, record.dimension_id);
  take_integer(5, record.unit_id);
  take_integer(6, record.decimals);
  // Field 7 is the place of the value, which is never stored.
  take_text(8, record.list_id);
  take_integer(9, record.data_type);
  take_text(10, record.symbol);
  return {record, present};
}

std::wstring format_variable_record(const VariableRecordView& variable) {
  return joined(RecordFields(variable).all());
}

}  // namespace pv
