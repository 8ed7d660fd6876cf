// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The four settings files: what is read and written again reads the same, and every reader finds
// what the plain search finds.

#include <algorithm>
#include <string>

#include "core/items/item_file.h"
#include "core/items/list_file.h"
#include "core/items/version_file.h"
#include "core/text/number_text.h"
#include "core/units/dimension_file.h"
#include "tests/fuzz/plain_search.h"
#include "tests/fuzz/target.h"
#include "tests/unit/items/plain_boolean.h"

namespace pv::fuzz {
namespace {

const FileStamp kStamp{L"1.00.00", L"written by a test"};
constexpr wchar_t kComma = L',';

/// Files that announce more than this are read, but not compared: that would only take time.
constexpr std::size_t kMostCompared = 300;

/// Tables of a file, written, read and written again: the same text. Where a table has separators
/// between its fields, the same text means the same fields.
template <class Table, class Read, class Write>
void require_round_trip(const Table& table, const Read& read, const Write& write) {
  const std::string once = write(table);
  const auto again = read(once);
  require(again.has_value(), "a written file is read");
  require(write(*again) == once, "what is written and read is written the same");
}

long announced(PlainSearch& file, const std::wstring& section) {
  return lenient_integer<std::int16_t>(file.find(section, L"Count").value_or(L"0"));
}

long next_count(PlainSearch& file, const std::wstring& fallback) {
  return lenient_integer<std::int16_t>(file.find_key(L"Count").value_or(fallback));
}

std::wstring numbered(const std::wstring& name, std::size_t index) {
  return name + std::to_wstring(index + 1);
}

/// Whether the file announced `count` entries, of which there are `size`.
bool agrees(long count, std::size_t size) {
  return size == static_cast<std::size_t>(std::max(count, 0L));
}

// --- Items

void require_found(const std::vector<LoadedItem>& items, PlainSearch file) {
  require(agrees(announced(file, L"Items"), items.size()), "as many items as announced");
  for (const LoadedItem& loaded : items) {
    require(agrees(next_count(file, L"1"), loaded.variables.size()), "all variables of an item");
    const std::wstring record =
        file.find_key(L"Settings").value_or(L"59|59|4|True|0|True|False|0|4|");
    require(format_item_record(loaded.item, kComma) ==
                format_item_record(parse_item_record(record, plain_boolean), kComma),
            "an item has the record of its line");
    for (std::size_t j = 0; j < loaded.variables.size(); ++j) {
      const std::wstring line = file.find_key(numbered(L"VAR", j)).value_or(L"1|||0|3|6|2|0|0||");
      require(format_variable_record(loaded.variables[j]) ==
                  format_variable_record(parse_variable_record(line).record),
              "a variable has the record of its line");
    }
  }
}

// --- Versions

void require_found(const VersionFile& versions, PlainSearch file) {
  const long count = announced(file, L"Versions");
  for (const VersionRecord& version : versions.versions) {
    require(version.name == file.find_key(L"Name"), "a version has its name");
    require(agrees(next_count(file, L"0"), version.entries.size()), "all entries of a version");
    require(version.item_count ==
                lenient_integer<std::int16_t>(file.find_key(L"ItemCount").value_or(L"255")),
            "a version has its number of items");
    for (std::size_t j = 0; j < version.entries.size(); ++j) {
      const std::wstring line = file.find_key(numbered(L"Item", j)).value_or(L"1|1");
      const VersionEntry& entry = version.entries[j];
      const std::wstring fields = entry.key + L"|" + entry.index_key;
      require((line + L"|").starts_with(fields + L"|") || line + L"|" == fields,
              "an entry has the fields of its line");
    }
  }
  if (versions.complete) {
    require(agrees(count, versions.versions.size()), "as many versions as announced");
  } else {
    require(file.find_key(L"Name").value_or(L"").empty(), "only a missing name ends the reading");
  }
}

// --- Lists

void require_found(const std::vector<ListRecord>& lists, PlainSearch file) {
  require(agrees(announced(file, L"Lists"), lists.size()), "as many lists as announced");
  for (std::size_t i = 0; i < lists.size(); ++i) {
    require(lists[i].caption == file.find_key(L"Caption").value_or(numbered(L"Untitled", i)),
            "a list has its caption");
    require(agrees(next_count(file, L"1"), lists[i].members.size()), "all members of a list");
    for (std::size_t j = 0; j < lists[i].members.size(); ++j) {
      const std::wstring line = file.find_key(numbered(L"ITEM", j)).value_or(L"Item#1|Tag#1");
      require(
          format_list_member(lists[i].members[j]) == format_list_member(parse_list_member(line)),
          "a member has the record of its line");
    }
  }
}

// --- Dimensions

/// Whether the table is small enough to be compared: a small file may hold a huge one.
bool is_comparable(const DimensionFile& file) {
  if (file.size() > kMostCompared) return false;
  std::size_t units = 0;
  for (std::size_t i = 0; i < file.size() && units <= kMostCompared; ++i) {
    units += file.units(i).size();
  }
  return units <= kMostCompared;
}

/// The units of a dimension as its lines have them; of missing lines only the first counts.
std::vector<std::wstring> plain_units(PlainSearch& file, const std::wstring& section, long count) {
  std::vector<std::wstring> units;
  bool has_default = false;
  for (long m = 1; m <= count; ++m) {
    const auto line = file.find(section, L"UNIT" + std::to_wstring(m));
    if (!line && has_default) continue;
    has_default = has_default || !line;
    units.push_back(format_unit(parse_unit(line.value_or(L"Unit#1|1.0|0.0")).unit, kComma));
  }
  return units;
}

void require_found(const std::vector<DimensionRecord>& dimensions, PlainSearch file) {
  require(agrees(announced(file, L"Dimensions"), dimensions.size()),
          "as many dimensions as announced");
  // Each unit that was asked for costs a search through the whole file here.
  std::size_t budget = 2'000'000 / (file.line_count() + 1);
  for (std::size_t n = 0; n < dimensions.size(); ++n) {
    const std::wstring section = numbered(L"DIM", n);
    require(
        dimensions[n].caption == file.find(section, L"Caption").value_or(numbered(L"Untitled", n)),
        "a dimension has its caption");
    const long count = lenient_integer<std::int16_t>(file.find(section, L"Count").value_or(L"1"));
    const auto searches = static_cast<std::size_t>(std::max(count, 0L)) + 2;
    if (searches > budget) return;
    budget -= searches;
    const std::vector<std::wstring> expected = plain_units(file, section, count);
    require(std::equal(expected.begin(), expected.end(), dimensions[n].units.begin(),
                       dimensions[n].units.end(),
                       [](const std::wstring& text, const UnitRecord& unit) {
                         return text == format_unit(unit, kComma);
                       }),
            "a dimension has the units of its lines");
  }
}

}  // namespace

void item_file(std::string_view bytes) {
  const auto read = [](std::string_view file) {
    return parse_item_file(file, latin1_codec(), plain_boolean);
  };
  const auto items = read(bytes);
  PlainSearch file(bytes);
  require(items.has_value() == (announced(file, L"Items") >= 1), "a file with items is read");
  if (!items || items->size() > kMostCompared) return;
  require_found(*items, PlainSearch(bytes));
  require_round_trip(*items, read, [](const std::vector<LoadedItem>& table) {
    return format_item_file(table, kStamp, latin1_codec(), kComma);
  });
}

void version_file(std::string_view bytes) {
  const auto read = [](std::string_view file) { return parse_version_file(file, latin1_codec()); };
  const auto versions = read(bytes);
  PlainSearch file(bytes);
  require(versions.has_value() == (announced(file, L"Versions") >= 1),
          "a file with versions is read");
  if (!versions) return;
  require_found(*versions, PlainSearch(bytes));
  if (versions->versions.empty()) return;
  require_round_trip(*versions, read, [](const VersionFile& table) {
    return format_version_file(table.versions, kStamp, latin1_codec());
  });
}

void list_file(std::string_view bytes) {
  const auto read = [](std::string_view file) { return parse_list_file(file, latin1_codec()); };
  const auto lists = read(bytes);
  PlainSearch file(bytes);
  require(lists.has_value() == (announced(file, L"Lists") >= 1), "a file with lists is read");
  if (!lists || lists->size() > kMostCompared) return;
  require_found(*lists, PlainSearch(bytes));
  require_round_trip(*lists, read, [](const std::vector<ListRecord>& table) {
    return format_list_file(table, kStamp, latin1_codec());
  });
}

void dimension_file(std::string_view bytes) {
  const auto read = [](std::string_view file) {
    return parse_dimension_file(std::string(file), latin1_codec());
  };
  const auto opened = DimensionFile::open(std::string(bytes), latin1_codec());
  PlainSearch file(bytes);
  require((opened != nullptr) == (announced(file, L"Dimensions") >= 1),
          "a file with dimensions is read");
  if (!opened || !is_comparable(*opened)) return;
  const auto dimensions = read(bytes);
  require_found(*dimensions, PlainSearch(bytes));
  require_round_trip(*dimensions, read, [](const std::vector<DimensionRecord>& table) {
    return format_dimension_file(table, kStamp, latin1_codec(), kComma, false);
  });
}

}  // namespace pv::fuzz
