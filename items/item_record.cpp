#include "items/item_record.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "util/number_text.h"
#include "util/settings_text.h"

namespace pv {
namespace {

constexpr std::size_t kItemFieldCount = 8;
constexpr wchar_t kSeparator = L'|';

std::wstring boolean_text(bool value) { return value ? L"-1" : L"0"; }

bool equal_ignoring_case(std::wstring_view text, std::wstring_view lower) {
  return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](wchar_t a, wchar_t b) {
    return (a >= L'A' && a <= L'Z' ? static_cast<wchar_t>(a - L'A' + L'a') : a) == b;
  });
}

std::wstring joined(std::initializer_list<std::wstring_view> fields) {
  std::wstring record;
  for (const std::wstring_view field : fields) record.append(field).push_back(kSeparator);
  return record;
}

}  // namespace

bool boolean_of(std::wstring_view text) {
  if (equal_ignoring_case(text, L"true")) return true;
  return whole_number_text(text).value_or(0.0) != 0.0;
}

ItemRecord parse_item_record(std::wstring_view text) {
  std::vector<std::wstring> fields = split_record(text, kSeparator, kItemFieldCount);
  fields.resize(kItemFieldCount);
  return {.key = std::move(fields[0]),
          .item_id = integer_of<std::int16_t>(fields[1]),
          .by_meaning = boolean_of(fields[2]),
          .access = integer_of<std::int16_t>(fields[3]),
          .historian = boolean_of(fields[4]),
          .restore = boolean_of(fields[5]),
          .smart_wait = single_of(number_of(fields[6])).value_or(0.0F),
          .length = integer_of<std::int16_t>(fields[7])};
}

std::wstring format_item_record(const ItemRecord& item, wchar_t decimal) {
  return joined({item.key, integer_text(item.item_id), boolean_text(item.by_meaning),
                 integer_text(item.access), boolean_text(item.historian),
                 boolean_text(item.restore), general_text(item.smart_wait, decimal),
                 integer_text(item.length)});
}

VariableFields parse_variable_record(std::wstring_view text, VariableRecord initial) {
  std::vector<std::wstring> fields = split_record(text, kSeparator, kVariableFieldCount);
  VariableRecord& record = initial;
  const auto take_text = [&](std::size_t i, std::wstring& target) {
    if (i < fields.size()) target = std::move(fields[i]);
  };
  const auto take_integer = [&](std::size_t i, std::int16_t& target) {
    if (i < fields.size()) target = integer_of<std::int16_t>(fields[i]);
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
  return {std::move(record), fields.size()};
}

std::wstring format_variable_record(const VariableRecord& variable) {
  return joined({variable.key, variable.caption, variable.description,
                 integer_text(variable.parent_variable), integer_text(variable.dimension_id),
                 integer_text(variable.unit_id), integer_text(variable.decimals), L"",
                 variable.list_id, integer_text(variable.data_type), variable.symbol});
}

}  // namespace pv
