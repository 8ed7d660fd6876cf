#include "items/item_file.h"

#include <cstdint>

#include "util/number_text.h"

namespace pv {
namespace {

// The texts do not all fit their fields; the tolerant conversions take them as they stand.
constexpr std::wstring_view kDefaultItem = L"59|59|4|True|0|True|False|0|4|";
constexpr std::wstring_view kDefaultVariable = L"1|||0|3|6|2|0|0||";

LoadedItem read_item(SettingsReader& reader) {
  // The file's order finds the lines: neither search looks for a section.
  const auto variable_count = integer_of<std::int16_t>(reader.next_value(L"Count", L"1"));
  LoadedItem loaded{parse_item_record(reader.next_value(L"Settings", kDefaultItem)), {}};
  for (int j = 1; j <= variable_count; ++j) {
    const std::wstring record = reader.next_value(L"VAR" + integer_text(j), kDefaultVariable);
    loaded.variables.push_back(parse_variable_record(record).record);
  }
  return loaded;
}

}  // namespace

std::optional<std::vector<LoadedItem>> read_item_file(std::string_view bytes,
                                                      const TextCodec& codec) {
  SettingsReader reader(bytes, codec);
  const auto count = integer_of<std::int16_t>(reader.value(L"Items", L"Count", L"0", true, true));
  if (count < 1) return std::nullopt;
  std::vector<LoadedItem> items;
  for (int i = 1; i <= count; ++i) items.push_back(read_item(reader));
  return items;
}

std::string write_item_file(const std::vector<LoadedItem>& items, const FileStamp& stamp,
                            const TextCodec& codec, wchar_t decimal) {
  SettingsWriter writer(codec);
  writer.head(L"Items", items.size(), stamp);
  long i = 0;
  for (const LoadedItem& loaded : items) {
    writer.section(L"ITEM" + integer_text(++i));
    writer.count(loaded.variables.size());
    writer.value(L"Settings", format_item_record(loaded.item, decimal));
    long j = 0;
    for (const VariableRecord& variable : loaded.variables) {
      writer.value(L"VAR" + integer_text(++j), format_variable_record(variable));
    }
  }
  return writer.take();
}

}  // namespace pv
