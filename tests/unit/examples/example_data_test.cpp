// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Proves that the example settings files are complete and agree with each other.
#include "example_data.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/items/data_type.h"

namespace {

using namespace example_data;
namespace fs = std::filesystem;

/// Characters of one variable on the wire, by data type.
const std::map<int, int> kWireWidths{{1, 2},  {2, 2},    {3, 4},   {4, 8},   {5, 8},   {6, 4},
                                     {7, 14}, {8, 6},    {9, 2},   {10, 16}, {11, 80}, {12, 100},
                                     {13, 2}, {14, 8},   {15, 32}, {16, 7},  {17, 7},  {18, 9},
                                     {19, 2}, {20, 120}, {21, 150}};

// --- Files
// -------------------------------------------------------------------------------------------

TEST(ExampleFiles, HoldAnsiTextInCrLfLines) {
  for (const std::string extension : kExtensions) {
    const std::string bytes = bytes_of(extension);
    ASSERT_FALSE(bytes.empty()) << extension;
    EXPECT_TRUE(bytes.ends_with("\r\n")) << extension;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      const auto byte = static_cast<unsigned char>(bytes[i]);
      if (byte == '\r')
        EXPECT_EQ(bytes.substr(i, 2), "\r\n") << extension << " at " << i;
      else if (byte == '\n')
        EXPECT_EQ(bytes.substr(i - 1, 2), "\r\n") << extension << " at " << i;
      else if (byte > 0x7E)
        EXPECT_TRUE(byte == 0xB0 || byte == 0xB5) << extension << " at " << i;
      else
        EXPECT_GE(byte, 0x20) << extension << " at " << i;
    }
  }
}

// A count that disagrees with its lines, or sections out of order, would come back differently.
TEST_F(ExampleData, ComesBackByteForByteWhenSaved) {
  const pv::TextCodec& codec = pv::latin1_codec();
  const pv::FileStamp stamp{L"1.00.00", L"Fluxor example settings"};
  EXPECT_EQ(pv::format_item_file(items_, stamp, codec, L'.'), bytes_of("itm"));
  EXPECT_EQ(pv::format_version_file(versions_, stamp, codec), bytes_of("ver"));
  EXPECT_EQ(pv::format_dimension_file(dimensions_, stamp, codec, L'.', false), bytes_of("dim"));
  EXPECT_EQ(pv::format_list_file(lists_, stamp, codec), bytes_of("lst"));
}

TEST(ExampleFiles, AreWhatTheScriptWrites) {
  if (std::system("python3 -c pass") != 0) GTEST_SKIP() << "python3 is not installed";
  std::string folder = (fs::temp_directory_path() / "fluxorXXXXXX").string();
  ASSERT_NE(mkdtemp(folder.data()), nullptr);
  const std::string script = (fs::path(PV_EXAMPLE_DATA_DIR) / "make_data.py").string();
  EXPECT_EQ(std::system(("python3 '" + script + "' '" + folder + "'").c_str()), 0);
  for (const std::string extension : kExtensions)
    EXPECT_EQ(file_bytes(fs::path(folder) / ("fluxor." + extension)), bytes_of(extension));
  fs::remove_all(folder);
}

// --- Items
// -------------------------------------------------------------------------------------------

TEST_F(ExampleData, ItemsAreKeyedByTheirUniqueIds) {
  EXPECT_EQ(items_.size(), 66u);
  std::set<int> ids;
  for (const auto& [item, variables] : items_) {
    EXPECT_EQ(item.key, id_text(item.item_id));
    EXPECT_TRUE(item.item_id >= 1 && item.item_id <= 199) << item.item_id;
    EXPECT_TRUE(ids.insert(item.item_id).second) << item.item_id;
    EXPECT_GT(item.smart_wait, 0) << item.item_id;
  }
}

TEST_F(ExampleData, VariablesAreNumberedAndHaveTextsOfTheirOwn) {
  std::set<std::wstring> captions;
  std::size_t several = 0;
  for (const auto& [item, variables] : items_) {
    ASSERT_FALSE(variables.empty()) << item.item_id;
    several += variables.size() > 1;
    for (std::size_t i = 0; i < variables.size(); ++i) {
      EXPECT_EQ(variables[i].key, id_text(static_cast<int>(i) + 1)) << item.item_id;
      EXPECT_FALSE(variables[i].description.empty()) << item.item_id;
      EXPECT_TRUE(captions.insert(folded(variables[i].caption)).second) << item.item_id;
      EXPECT_TRUE(variables[i].decimals >= 0 && variables[i].decimals <= 8) << item.item_id;
    }
  }
  EXPECT_GE(several, 5u);
}

TEST_F(ExampleData, LengthIsTheSumOfTheVariablesOnTheWire) {
  std::set<int> used;
  for (const auto& [item, variables] : items_) {
    int sum = 0;
    for (const auto& variable : variables) {
      ASSERT_TRUE(kWireWidths.contains(variable.data_type)) << item.item_id;
      sum += kWireWidths.at(variable.data_type);
      used.insert(variable.data_type);
    }
    EXPECT_EQ(item.length, sum) << item.item_id;
  }
  EXPECT_EQ(used.size(), kWireWidths.size()) << "every data type has an example";
}

TEST_F(ExampleData, AccessWordsHoldTheFourLevelsAndThePasswordFlags) {
  std::set<int> read_levels, write_levels;
  std::set<bool> historian, restore;
  for (const auto& [item, variables] : items_) {
    EXPECT_EQ(item.access & ~255, 0) << item.item_id;
    read_levels.insert((item.access & 56) / 8);
    write_levels.insert(item.access & 7);
    historian.insert(item.historian);
    restore.insert(item.restore);
    const bool password = variables[0].data_type == 14;
    EXPECT_EQ((item.access & kMaskFlag) != 0, password) << item.item_id;
    EXPECT_EQ((item.access & kUpdateFlag) != 0, item.item_id == 140) << item.item_id;
  }
  EXPECT_EQ(read_levels, (std::set<int>{0, 1, 2, 3, 4}));
  EXPECT_EQ(write_levels, (std::set<int>{0, 1, 2, 3, 4}));
  EXPECT_EQ(historian.size() + restore.size(), 4u);
}

TEST_F(ExampleData, EveryListExistsAndItemsWithListsShowMeanings) {
  for (const auto& [item, variables] : items_) {
    bool has_list = false;
    for (const auto& variable : variables) {
      if (variable.list_id == L"0") continue;
      EXPECT_NE(list_of(variable), nullptr) << item.item_id;
      has_list = true;
    }
    EXPECT_EQ(item.by_meaning, has_list) << item.item_id;
  }
}

TEST_F(ExampleData, EveryDimensionAndUnitExists) {
  std::set<int> used;
  for (const auto& [item, variables] : items_) {
    for (const auto& variable : variables) {
      if (variable.dimension_id == kSelectorDimension) continue;
      used.insert(variable.dimension_id);
      ASSERT_TRUE(variable.dimension_id >= 1 && variable.dimension_id <= 22) << item.item_id;
      const auto& units = dimensions_[static_cast<std::size_t>(variable.dimension_id) - 1].units;
      EXPECT_TRUE(variable.unit_id >= 1 &&
                  static_cast<std::size_t>(variable.unit_id) <= units.size())
          << item.item_id;
    }
  }
  EXPECT_EQ(used.size(), 22u) << "every dimension has an example";
}

TEST_F(ExampleData, SelectorsNameItemsThatCarryADimension) {
  int selectors = 0;
  for (const auto& [item, variables] : items_) {
    if (variables[0].dimension_id != kSelectorDimension) continue;
    ++selectors;
    ASSERT_NE(list_of(variables[0]), nullptr) << item.item_id;
    for (const auto& member : list_of(variables[0])->members) {
      const pv::LoadedItem* named = find_item(pv::lenient_integer<short>(member.tag));
      ASSERT_NE(named, nullptr) << item.item_id;
      EXPECT_GT(named->variables[0].dimension_id, 0) << item.item_id;
    }
  }
  EXPECT_EQ(selectors, 1);
}

TEST_F(ExampleData, VariablesThatFollowAnItemHaveItsDimensionAndUnit) {
  int items = 0, selected = 0, siblings = 0;
  for (const auto& loaded : items_) {
    for (const auto& variable : loaded.variables) {
      const auto carrier = carrier_of(loaded, variable);
      if (!carrier) continue;
      const int id = loaded.item.item_id;
      (variable.parent_variable < 0           ? siblings
       : *carrier == variable.parent_variable ? items
                                              : selected)++;
      const pv::LoadedItem* source = find_item(*carrier);
      ASSERT_NE(source, nullptr) << id;
      EXPECT_EQ(variable.dimension_id, source->variables[0].dimension_id) << id;
      EXPECT_EQ(variable.unit_id, source->variables[0].unit_id) << id;
      EXPECT_EQ(source->variables[0].parent_variable, 0) << id;
    }
  }
  EXPECT_GT(items, 0);
  EXPECT_GT(selected, 0);
  EXPECT_GT(siblings, 0);
}

TEST_F(ExampleData, OutputAssignmentsAreOffOrItemsWithADimension) {
  for (const int id : {70, 71}) {
    const pv::LoadedItem* output = find_item(id);
    ASSERT_NE(output, nullptr);
    for (const auto& member : list_of(output->variables[0])->members) {
      if (member.key == L"0") continue;
      const pv::LoadedItem* source = find_item(pv::lenient_integer<short>(member.key));
      ASSERT_NE(source, nullptr) << id;
      EXPECT_NE(source->variables[0].dimension_id, kNoneDimension) << id;
      EXPECT_EQ(member.caption, source->variables[0].caption) << id;
    }
  }
}

// --- Versions
// ----------------------------------------------------------------------------------------

TEST_F(ExampleData, VersionsShowExistingItems) {
  ASSERT_EQ(versions_.size(), 3u);
  std::set<std::wstring> names;
  int mapped = 0;
  for (const auto& version : versions_) {
    EXPECT_TRUE(names.insert(folded(version.name)).second);
    EXPECT_EQ(static_cast<std::size_t>(version.item_count), version.entries.size());
    std::set<std::wstring> keys;
    for (const auto& entry : version.entries) {
      EXPECT_TRUE(keys.insert(entry.key).second);
      ASSERT_NE(find_item(pv::lenient_integer<short>(entry.key)), nullptr);
      ASSERT_NE(find_item(pv::lenient_integer<short>(entry.index_key)), nullptr);
      mapped += entry.key != entry.index_key;
    }
    for (const auto& entry : version.entries) {
      const pv::LoadedItem& shown = *find_item(pv::lenient_integer<short>(entry.index_key));
      for (const auto& variable : shown.variables) {
        if (const auto carrier = carrier_of(shown, variable)) {
          EXPECT_TRUE(keys.contains(id_text(*carrier))) << shown.item.item_id;
        }
        if (variable.parent_variable > 0) {
          EXPECT_TRUE(keys.contains(id_text(variable.parent_variable))) << shown.item.item_id;
        }
      }
    }
  }
  EXPECT_EQ(mapped, 3);
}

TEST_F(ExampleData, EveryItemIsShownByAVersion) {
  std::set<std::wstring> shown;
  for (const auto& version : versions_)
    for (const auto& entry : version.entries) shown.insert(entry.index_key);
  EXPECT_EQ(shown.size(), items_.size());
}

// --- Display lists
// -----------------------------------------------------------------------------------

TEST_F(ExampleData, ListsHaveUniqueCaptionsAndNumericKeys) {
  ASSERT_EQ(lists_.size(), 12u);
  std::set<std::wstring> captions;
  for (const auto& list : lists_) {
    EXPECT_TRUE(captions.insert(folded(list.caption)).second);
    std::set<std::wstring> keys, texts;
    for (const auto& member : list.members) {
      EXPECT_EQ(member.key, id_text(pv::lenient_integer<short>(member.key)));
      EXPECT_TRUE(keys.insert(member.key).second);
      EXPECT_TRUE(texts.insert(folded(member.caption)).second);
      EXPECT_FALSE(member.tag.empty());
    }
  }
}

TEST_F(ExampleData, ErrorTextsAreKeyedZeroToSixtyFour) {
  ASSERT_EQ(lists_[0].caption, L"ERROR_TEXT");
  ASSERT_EQ(lists_[0].members.size(), 65u);
  for (int n = 0; n <= 64; ++n)
    EXPECT_EQ(lists_[0].members[static_cast<std::size_t>(n)].key, id_text(n));
}

TEST_F(ExampleData, EveryListIsUsedByAVariable) {
  std::set<std::wstring> used;
  for (const auto& loaded : items_)
    for (const auto& variable : loaded.variables) used.insert(variable.list_id);
  used.erase(L"0");
  EXPECT_EQ(used.size(), lists_.size());
}

// --- Values
// ------------------------------------------------------------------------------------------

TEST_F(ExampleData, EveryVariableButThePasswordsHasAValue) {
  std::size_t expected = 0;
  for (const auto& [item, variables] : items_)
    for (std::size_t i = 1; i <= variables.size(); ++i) {
      const bool known = values_.contains({item.item_id, static_cast<int>(i)});
      EXPECT_EQ(known, (item.access & kMaskFlag) == 0) << item.item_id;
      expected += known;
    }
  EXPECT_EQ(values_.size(), expected) << "a value names a variable that does not exist";
}

TEST_F(ExampleData, ValuesFitTheirDataTypes) {
  const std::map<int, std::pair<double, double>> ranges{
      {1, {0, 1}}, {2, {0, 255}}, {3, {-32768, 32767}}, {4, {-1e9, 1e9}}};
  for (const auto& [item, variables] : items_) {
    for (std::size_t i = 0; i < variables.size(); ++i) {
      const std::wstring value = value_of(item.item_id, static_cast<int>(i) + 1);
      const int type = variables[i].data_type;
      if (pv::data_class(type) == pv::DataClass::kString) {
        EXPECT_LE(value.size(), static_cast<std::size_t>(kWireWidths.at(type))) << item.item_id;
      }
      if (!ranges.contains(type)) continue;
      const auto numeric = pv::parse_number(value);
      ASSERT_TRUE(numeric) << item.item_id;
      EXPECT_GE(*numeric, ranges.at(type).first) << item.item_id;
      EXPECT_LE(*numeric, ranges.at(type).second) << item.item_id;
    }
  }
}

TEST_F(ExampleData, ValuesWithAListHaveAMeaning) {
  int meanings = 0;
  for (const auto& [item, variables] : items_)
    for (std::size_t i = 0; i < variables.size(); ++i) {
      const pv::ListRecord* list = list_of(variables[i]);
      if (list == nullptr) continue;
      EXPECT_NE(find_member(*list, value_of(item.item_id, static_cast<int>(i) + 1)), nullptr)
          << item.item_id;
      ++meanings;
    }
  EXPECT_GE(meanings, 12);
}

TEST_F(ExampleData, MeasuredValuesAgreeWithEachOther) {
  const double volume_flow = number(1), density = number(3), full_scale = number(30);
  EXPECT_NEAR(number(2), volume_flow / 1000 * density, 1e-9) << "l/s times kg/m3";
  EXPECT_NEAR(number(22), number(21) * density, 1) << "m3 times kg/m3";
  EXPECT_NEAR(number(7), volume_flow / full_scale * 100, 1e-6) << "per cent of the full scale";
  EXPECT_NEAR(number(75), volume_flow / 1000 / number(76), 1e-9) << "pulses of a volume";
  const auto current = [&](int output, double value) {
    return 4 + 16 * (value - number(output, 2)) / (number(output, 3) - number(output, 2));
  };
  EXPECT_NEAR(number(72), current(70, volume_flow), 1e-6);
  EXPECT_NEAR(number(73), current(71, density), 1e-6);
}

// The error byte, the packed record and the plain number all tell of the same last error.
TEST_F(ExampleData, ErrorRecordsAgreeWithTheLastError) {
  const int last = static_cast<int>(number(133));
  for (int byte = 0; byte < 8; ++byte) {
    const int bits = last > 8 * byte && last <= 8 * byte + 8 ? 1 << (last - 1) % 8 : 0;
    EXPECT_EQ(std::stoi(value_of(130, byte + 2), nullptr, 16), bits) << byte;
  }
  const std::wstring packed = value_of(131);
  ASSERT_EQ(packed.size(), 7u);
  EXPECT_EQ(static_cast<int>(packed[6]) - 28 + 1, last);
  EXPECT_EQ(value_of(132, 1), packed);
}

}  // namespace
