// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/item_file.h"

#include <algorithm>
#include <cstdint>

#include "core/text/number_text.h"

namespace pv {
namespace {

// The texts do not all fit their fields; the tolerant conversions take them as they stand.
constexpr std::wstring_view kDefaultItem = L"59|59|4|True|0|True|False|0|4|";
constexpr std::wstring_view kDefaultVariable = L"1|||0|3|6|2|0|0||";

}  // namespace

ItemFileReader::ItemFileReader(std::string_view bytes, const TextCodec& codec,
                               BooleanConversion booleans, wchar_t decimal)
    : reader_(bytes, codec),
      booleans_(booleans),
      decimal_(decimal),
      count_(lenient_integer<std::int16_t>(reader_.value(L"Items", L"Count", L"0", true, true))) {}

// The file's order finds the lines: neither search looks for a section.
bool ItemFileReader::next(ItemRecord& item) {
  for (VariableRecordView passed_over; next_variable(passed_over);) continue;
  if (read_ >= count_) return false;
  ++read_;
  const auto variables = lenient_integer<std::int16_t>(reader_.next_value(L"Count", L"1"));
  variable_count_ = std::max<int>(variables, 0);
  variables_read_ = 0;
  item = parse_item_record(reader_.next_value(L"Settings", kDefaultItem), booleans_, decimal_);
  return true;
}

bool ItemFileReader::next_variable(VariableRecordView& variable) {
  if (variables_read_ >= variable_count_) return false;
  const std::wstring_view key = variable_key_.with(++variables_read_);
  variable = parse_variable_record(reader_.next_value(key, kDefaultVariable)).record;
  return true;
}

std::optional<std::vector<LoadedItem>> parse_item_file(std::string_view bytes,
                                                       const TextCodec& codec,
                                                       BooleanConversion booleans) {
  ItemFileReader reader(bytes, codec, booleans);
  if (reader.count() < 1) return std::nullopt;
  std::vector<LoadedItem> items;
  for (LoadedItem loaded; reader.next(loaded.item); loaded = {}) {
    for (VariableRecordView variable; reader.next_variable(variable);) {
      loaded.variables.push_back(variable.as<std::wstring>());
    }
    items.push_back(std::move(loaded));
  }
  return items;
}

ItemFileWriter::ItemFileWriter(std::size_t count, const FileStamp& stamp, const TextCodec& codec,
                               wchar_t decimal)
    : writer_(codec), decimal_(decimal) {
  writer_.head(L"Items", count, stamp);
}

void ItemFileWriter::item(const ItemRecord& item, std::size_t variable_count) {
  writer_.section(item_section_.with(++items_));
  writer_.count(variable_count);
  writer_.record(L"Settings", RecordFields(item, decimal_).all());
  variables_ = 0;
}

void ItemFileWriter::variable(const VariableRecordView& variable) {
  writer_.record(variable_key_.with(++variables_), RecordFields(variable).all());
}

std::string format_item_file(const std::vector<LoadedItem>& items, const FileStamp& stamp,
                             const TextCodec& codec, wchar_t decimal) {
  ItemFileWriter writer(items.size(), stamp, codec, decimal);
  for (const LoadedItem& loaded : items) {
    writer.item(loaded.item, loaded.variables.size());
    for (const VariableRecord& variable : loaded.variables) {
      writer.variable(variable.as<std::wstring_view>());
    }
  }
  return writer.take();
}

}  // namespace pv
