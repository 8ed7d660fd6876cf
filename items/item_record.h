// The records of an item and of a variable: fields ended by '|', as the item file and CVariable
// hold them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pv {

struct ItemRecord {
  std::wstring key;
  std::int16_t item_id = 0;
  bool by_meaning = false;
  std::int16_t access = 0;
  bool historian = false;
  bool restore = false;
  float smart_wait = 0;
  std::int16_t length = 0;
};

/// A variable's record. Its value is not part of it: the record keeps an empty field in that place.
struct VariableRecord {
  std::wstring key;
  std::wstring caption;
  std::wstring description;
  std::int16_t parent_variable = 0;
  std::int16_t dimension_id = 0;
  std::int16_t unit_id = 0;
  std::int16_t decimals = 0;
  std::wstring list_id;  ///< as written; a loader of files takes integer_of<std::int16_t> of it
  std::int16_t data_type = 0;
  std::wstring symbol;
};

/// Number of fields of a complete variable record.
inline constexpr std::size_t kVariableFieldCount = 11;

struct VariableFields {
  VariableRecord record;
  /// Fields that the text has, the one behind a last '|' included; complete from
  /// kVariableFieldCount on, where the count ends.
  std::size_t present = 0;
};

/// Reads an item record through the tolerant conversions. Missing fields count as empty text; a
/// SmartWait beyond single precision is 0.
ItemRecord parse_item_record(std::wstring_view text);
std::wstring format_item_record(const ItemRecord& item, wchar_t decimal);
/// The same into a text that is there already: its room is used again.
void write_item_record(const ItemRecord& item, wchar_t decimal, std::wstring& record);

/// Reads a variable record: fields that are there replace those of `initial`.
VariableFields parse_variable_record(std::wstring_view text, VariableRecord initial = {});
std::wstring format_variable_record(const VariableRecord& variable);
void write_variable_record(const VariableRecord& variable, std::wstring& record);

/// The Boolean that a text stands for: "True" and "False" in any case, a number other than 0 is
/// true; any other text is false.
bool boolean_of(std::wstring_view text);

}  // namespace pv
