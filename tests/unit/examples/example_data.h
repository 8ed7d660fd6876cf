// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The example settings files in memory, for the tests that prove them.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/items/item_file.h"
#include "core/items/list_file.h"
#include "core/items/version_file.h"
#include "core/text/number_text.h"
#include "core/text/settings_text.h"
#include "core/units/dimension_file.h"
#include "tests/unit/items/plain_boolean.h"

namespace example_data {

namespace fs = std::filesystem;

inline constexpr int kSelectorDimension = -1;
inline constexpr int kNoneDimension = 17;
inline constexpr int kUpdateFlag = 64;
inline constexpr int kMaskFlag = 128;
inline constexpr const char* kExtensions[] = {"itm", "ver", "dim", "lst", "val"};

using VariableId = std::pair<int, int>;  // item id, position of the variable

inline std::string file_bytes(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline std::string bytes_of(const std::string& extension) {
  return file_bytes(fs::path(PV_EXAMPLE_DATA_DIR) / ("fluxor." + extension));
}

inline std::vector<std::string> lines_of(const std::string& bytes) {
  std::vector<std::string> lines;
  for (std::size_t from = 0, end; (end = bytes.find("\r\n", from)) != std::string::npos;
       from = end + 2)
    lines.push_back(bytes.substr(from, end - from));
  return lines;
}

inline std::wstring folded(std::wstring text) {
  for (wchar_t& c : text)
    if (c >= L'A' && c <= L'Z') c += L'a' - L'A';
  return text;
}

inline std::wstring id_text(int id) { return std::to_wstring(id); }

class ExampleData : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto item_table =
        pv::parse_item_file(bytes_of("itm"), pv::latin1_codec(), pv::plain_boolean);
    const auto version_table = pv::parse_version_file(bytes_of("ver"), pv::latin1_codec());
    const auto dimension_table = pv::parse_dimension_file(bytes_of("dim"), pv::latin1_codec());
    const auto list_table = pv::parse_list_file(bytes_of("lst"), pv::latin1_codec());
    ASSERT_TRUE(item_table && version_table && dimension_table && list_table);
    ASSERT_TRUE(version_table->complete);
    items_ = *item_table;
    versions_ = version_table->versions;
    dimensions_ = *dimension_table;
    lists_ = *list_table;
    read_values();
  }

  void read_values() {
    for (const std::string& line : lines_of(bytes_of("val"))) {
      const auto fields = pv::split_record(pv::latin1_codec().widen(line));
      ASSERT_EQ(fields.size(), 3u) << line;
      const VariableId id{pv::lenient_integer<short>(fields[0]),
                          pv::lenient_integer<short>(fields[1])};
      EXPECT_TRUE(values_.emplace(id, fields[2]).second) << "second value: " << line;
    }
  }

  const pv::LoadedItem* find_item(int id) const {
    const auto found = std::find_if(items_.begin(), items_.end(),
                                    [&](const auto& loaded) { return loaded.item.item_id == id; });
    return found == items_.end() ? nullptr : &*found;
  }

  const pv::ListRecord* list_of(const pv::VariableRecord& variable) const {
    const auto id = pv::lenient_integer<short>(variable.list_id);
    return id >= 1 && static_cast<std::size_t>(id) <= lists_.size()
               ? &lists_[static_cast<std::size_t>(id) - 1]
               : nullptr;
  }

  static const pv::ListMemberRecord* find_member(const pv::ListRecord& list,
                                                 const std::wstring& key) {
    const auto found = std::find_if(list.members.begin(), list.members.end(),
                                    [&](const auto& member) { return member.key == key; });
    return found == list.members.end() ? nullptr : &*found;
  }

  std::wstring value_of(int item, int variable = 1) const {
    const auto found = values_.find({item, variable});
    return found == values_.end() ? L"" : found->second;
  }
  double number(int item, int variable = 1) const {
    return pv::lenient_number(value_of(item, variable));
  }

  /// Id of the item whose dimension and unit the variable shows; nullopt when they are its own.
  std::optional<int> carrier_of(const pv::LoadedItem& loaded,
                                const pv::VariableRecord& variable) const {
    const int parent = variable.parent_variable;
    if (parent == 0) return std::nullopt;
    if (parent < 0) return pv::lenient_integer<short>(value_of(loaded.item.item_id, -parent));
    const pv::LoadedItem* selector = find_item(parent);
    if (selector == nullptr || selector->variables.empty()) return parent;
    if (selector->variables[0].dimension_id != kSelectorDimension) return parent;
    const pv::ListRecord* list = list_of(selector->variables[0]);
    if (list == nullptr) return pv::lenient_integer<short>(value_of(parent));
    const pv::ListMemberRecord* member = find_member(*list, value_of(parent));
    return member == nullptr ? 0 : pv::lenient_integer<short>(member->tag);
  }

  std::vector<pv::LoadedItem> items_;
  std::vector<pv::VersionRecord> versions_;
  std::vector<pv::DimensionRecord> dimensions_;
  std::vector<pv::ListRecord> lists_;
  std::map<VariableId, std::wstring> values_;
};

}  // namespace example_data
