// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The framing of the settings files. The first two lines of the input name a section and a key, the
// rest is the file.

#include "core/text/settings_text.h"

#include <string>
#include <vector>

#include "tests/fuzz/plain_search.h"
#include "tests/fuzz/target.h"

namespace pv::fuzz {
namespace {

using Found = std::vector<std::wstring>;

constexpr std::size_t kMostFound = 200;

/// Every value of the key, in the file's order.
Found read_whole(std::string_view file, std::wstring_view key) {
  SettingsReader reader(file, latin1_codec());
  Found found;
  while (found.size() < kMostFound) {
    const auto value = reader.find_key(key);
    if (!value) break;
    found.emplace_back(*value);
  }
  return found;
}

/// The same, each search with a reader of its own that begins where the one before stood.
Found read_in_pieces(std::string_view file, std::wstring_view key) {
  Found found;
  while (found.size() < kMostFound) {
    SettingsReader reader(file, latin1_codec());
    const auto value = reader.find_key(key);
    require(reader.offset() <= file.size(), "a reader stays within its file");
    file.remove_prefix(reader.offset());
    if (!value) break;
    found.emplace_back(*value);
  }
  return found;
}

Found read_plainly(std::string_view file, const std::wstring& key) {
  PlainSearch search(file);
  Found found;
  while (found.size() < kMostFound) {
    const auto value = search.find_key(key);
    if (!value) break;
    found.push_back(*value);
  }
  return found;
}

void require_searches_agree(std::string_view file, const std::wstring& section,
                            const std::wstring& key) {
  const Found found = read_whole(file, key);
  require(found == read_in_pieces(file, key), "whole and split files agree");
  require(found == read_plainly(file, key), "a reader finds what the plain search finds");

  const auto plain = PlainSearch(file).find(section, key);
  const SettingsIndex index(file, latin1_codec());
  require(index.find(section, key) == plain, "the index finds what the plain search finds");
  require(index.has_key(key) == !found.empty(), "the index knows the keys of the file");
  SettingsReader reader(file, latin1_codec());
  require(reader.value(section, key, L"none", true, true) == plain.value_or(L"none"),
          "a reader's search of both steps finds the same");
}

bool holds(std::wstring_view text, std::wstring_view any_of) {
  return text.find_first_of(any_of) != std::wstring_view::npos;
}

bool is_in_code_page(std::wstring_view text) {
  return latin1_codec().widen(latin1_codec().narrow(text)) == text;
}

/// A file with one value in one section, appended to the file given.
void require_written_is_found(std::string_view before, const std::wstring& section,
                              const std::wstring& key, const std::wstring& value) {
  SettingsWriter writer(latin1_codec(), !before.empty());
  writer.section(section);
  writer.value(key, value);
  const std::string written = writer.take();
  if (holds(key, L"=") || !is_in_code_page(section) || !is_in_code_page(key)) return;
  require(SettingsIndex(written, latin1_codec()).find(section, key) == value,
          "a written value is found");
  const std::string file = std::string(before) + "\n" + written;
  SettingsReader reader(file, latin1_codec());
  require(reader.find_section(section), "an appended section is found");
  require(reader.find_key(key).has_value(), "an appended value is found");
}

}  // namespace

void settings(std::string_view bytes) {
  const std::wstring section = wide(take_line(bytes));
  const std::wstring key = wide(take_line(bytes));
  require_searches_agree(bytes, section, key);

  const std::wstring value = latin1_codec().widen(bytes.substr(0, bytes.find('\n')));
  require_written_is_found(bytes, section, key, value);

  require(latin1_codec().narrow(latin1_codec().widen(bytes)) == bytes, "every byte is a character");
  std::wstring joined;
  for (const std::wstring& field : split_record(value)) joined.append(field).push_back(L'|');
  joined.pop_back();
  require(joined == value, "the fields of a record make up the record");
}

}  // namespace pv::fuzz
