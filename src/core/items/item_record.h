// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The records of an item and of a variable: fields ended by '|', as the item file and CVariable
// hold them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
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
template <class Text>
struct BasicVariableRecord {
  Text key;
  Text caption;
  Text description;
  std::int16_t parent_variable = 0;
  std::int16_t dimension_id = 0;
  std::int16_t unit_id = 0;
  std::int16_t decimals = 0;
  Text list_id;  ///< as written; a loader of files takes lenient_integer<std::int16_t> of it
  std::int16_t data_type = 0;
  Text symbol;

  /// The same record with texts of another kind.
  template <class Other>
  BasicVariableRecord<Other> as() const {
    return {.key = Other(key),
            .caption = Other(caption),
            .description = Other(description),
            .parent_variable = parent_variable,
            .dimension_id = dimension_id,
            .unit_id = unit_id,
            .decimals = decimals,
            .list_id = Other(list_id),
            .data_type = data_type,
            .symbol = Other(symbol)};
  }
};
using VariableRecord = BasicVariableRecord<std::wstring>;
/// A record whose texts stand elsewhere.
using VariableRecordView = BasicVariableRecord<std::wstring_view>;

/// Number of fields of a complete variable record.
inline constexpr std::size_t kVariableFieldCount = 11;

struct VariableFields {
  VariableRecordView record;
  /// Fields that the text has, the one behind a last '|' included; complete from
  /// kVariableFieldCount on, where the count ends.
  std::size_t present = 0;
};

/// The fields of a record as they are written. Texts are those of the record, which must stay.
class RecordFields {
 public:
  RecordFields(const ItemRecord& item, wchar_t decimal);
  explicit RecordFields(const VariableRecordView& variable);
  RecordFields(const RecordFields&) = delete;
  RecordFields& operator=(const RecordFields&) = delete;
  RecordFields(RecordFields&&) = delete;
  RecordFields& operator=(RecordFields&&) = delete;
  ~RecordFields() = default;

  std::span<const std::wstring_view> all() const { return {fields_.data(), count_}; }

 private:
  void text(std::wstring_view field) { fields_[count_++] = field; }
  void number(std::int16_t field);
  void boolean(bool field) { text(field ? L"-1" : L"0"); }

  static constexpr std::size_t kLongestNumber = std::string_view("-32768").size();

  std::array<std::wstring_view, kVariableFieldCount> fields_;
  std::size_t count_ = 0;
  std::array<wchar_t, kVariableFieldCount * kLongestNumber> digits_;  // of the whole numbers
  wchar_t* end_of_digits_ = digits_.data();
  std::wstring smart_wait_;
};

/// The platform's conversion of a text into a Boolean; false for a text that is none.
using BooleanConversion = bool (*)(std::wstring_view text);

/// The Boolean that a text stands for, which is the platform's affair. The usual texts do not need
/// it: "True" and "False" in any case and whole numbers, of which all but 0 are true.
bool parse_boolean(std::wstring_view text, BooleanConversion platform);

/// Reads an item record through the tolerant conversions. Missing fields count as empty text; a
/// SmartWait beyond single precision is 0. `decimal` is the symbol that the writer may have used.
ItemRecord parse_item_record(std::wstring_view text, BooleanConversion platform,
                             wchar_t decimal = L',');
std::wstring format_item_record(const ItemRecord& item, wchar_t decimal);

/// Reads a variable record: fields that are there replace those of `initial`. Views both.
VariableFields parse_variable_record(std::wstring_view text,
                                     const VariableRecordView& initial = {});
std::wstring format_variable_record(const VariableRecordView& variable);
inline std::wstring format_variable_record(const VariableRecord& variable) {
  return format_variable_record(variable.as<std::wstring_view>());
}

}  // namespace pv
