// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/version_file.h"

#include <utility>

#include "core/text/number_text.h"

namespace pv {
namespace {

VersionEntry parse_entry(std::wstring_view text) {
  std::vector<std::wstring> fields = split_record(text, kRecordSeparator, 2);
  fields.resize(2);
  return {std::move(fields[0]), std::move(fields[1])};
}

/// nullopt for a version without a name.
std::optional<VersionRecord> read_version(SettingsReader& reader) {
  VersionRecord version;
  version.name = reader.next_value(L"Name", L"");
  if (version.name.empty()) return std::nullopt;
  const auto entry_count = lenient_integer<std::int16_t>(reader.next_value(L"Count", L"0"));
  version.item_count = lenient_integer<std::int16_t>(reader.next_value(L"ItemCount", L"255"));
  for (int j = 1; j <= entry_count; ++j) {
    version.entries.push_back(parse_entry(reader.next_value(L"Item" + format_integer(j), L"1|1")));
  }
  return version;
}

}  // namespace

std::optional<VersionFile> parse_version_file(std::string_view bytes, const TextCodec& codec) {
  SettingsReader reader(bytes, codec);
  const auto count =
      lenient_integer<std::int16_t>(reader.value(L"Versions", L"Count", L"0", true, true));
  if (count < 1) return std::nullopt;
  VersionFile file;
  for (int i = 1; i <= count && file.complete; ++i) {
    std::optional<VersionRecord> version = read_version(reader);
    file.complete = version.has_value();
    if (version) file.versions.push_back(std::move(*version));
  }
  return file;
}

std::string format_version_file(const std::vector<VersionRecord>& versions, const FileStamp& stamp,
                                const TextCodec& codec) {
  SettingsWriter writer(codec);
  writer.head(L"Versions", versions.size(), stamp);
  long i = 0;
  for (const VersionRecord& version : versions) {
    writer.section(L"Version" + format_integer(++i));
    writer.value(L"Name", version.name);
    writer.count(version.entries.size());
    writer.value(L"ItemCount", format_integer(version.item_count));
    long j = 0;
    for (const VersionEntry& entry : version.entries) {
      writer.value(L"Item" + format_integer(++j), entry.key + L"|" + entry.index_key);
    }
  }
  return writer.take();
}

}  // namespace pv
