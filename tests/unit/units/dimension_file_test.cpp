// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/units/dimension_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

#include "core/text/number_text.h"

namespace pv {
namespace {

const TextCodec& kCodec = latin1_codec();
const FileStamp kStamp{L"1.02.03", L"a build"};

std::vector<DimensionRecord> some_dimensions() {
  return {{L"Volume flow", {{L"m3/h", 3.6, 0}, {L"l/s", 1, 0}}},
          {L"Temperature",
           {{L"\xB0"
             "C",
             1, -273.15}}},
          {L"None", {}}};
}

TEST(Unit, ReadsEitherDecimalSeparator) {
  const ParsedUnit parsed = parse_unit(L"l/s|1,5|0.25");
  EXPECT_TRUE(parsed.complete);
  EXPECT_EQ(parsed.unit.caption, L"l/s");
  EXPECT_EQ(parsed.unit.slope, 1.5);
  EXPECT_EQ(parsed.unit.offset, 0.25);
}

// What is written with the separator of a locale is read with it, as the usual ones are.
TEST(Unit, ReadsAnyDecimalSeparatorThatItIsWrittenWith) {
  for (const wchar_t decimal : {L'.', L',', L'\'', L'\x66B', L'*'}) {
    const std::wstring text = format_unit({L"u", 1.5, -0.25}, decimal);
    EXPECT_EQ(text, std::wstring(L"u|1") + decimal + L"5|-0" + decimal + L"25|");
    for (const std::wstring& record : {text, std::wstring(L"u|1.5|-0,25|")}) {
      const ParsedUnit parsed = parse_unit(record, {}, decimal);
      EXPECT_EQ(parsed.unit.slope, 1.5) << static_cast<int>(decimal);
      EXPECT_EQ(parsed.unit.offset, -0.25) << static_cast<int>(decimal);
    }
  }
}

TEST(Unit, IsIncompleteWithFewerThanThreeFields) {
  const UnitRecord initial{L"c", 7, 8};
  const ParsedUnit one = parse_unit(L"x", initial);
  EXPECT_FALSE(one.complete);
  EXPECT_EQ(format_unit(one.unit, L'.'), L"x|7|8|");
  const ParsedUnit two = parse_unit(L"x|2", initial);
  EXPECT_FALSE(two.complete);
  EXPECT_EQ(format_unit(two.unit, L'.'), L"x|2|8|");
  const ParsedUnit none = parse_unit(L"", initial);
  EXPECT_FALSE(none.complete);
  EXPECT_EQ(none.unit.caption, L"");
}

TEST(Unit, TakesEmptyFieldsAndTextAsZero) {
  const ParsedUnit parsed = parse_unit(L"x||abc", {L"c", 7, 8});
  EXPECT_TRUE(parsed.complete);
  EXPECT_EQ(parsed.unit.slope, 0);
  EXPECT_EQ(parsed.unit.offset, 0);
}

TEST(Unit, IgnoresWhatFollowsTheThirdField) {
  const ParsedUnit parsed = parse_unit(L"x|1|2|3|4|");
  EXPECT_TRUE(parsed.complete);
  EXPECT_EQ(parsed.unit.offset, 2);
}

TEST(Unit, IsWrittenInOrdinaryTextWithASeparatorAtTheEnd) {
  EXPECT_EQ(format_unit(parse_unit(L"Unit#1|1.0|0.0").unit, L'.'), L"Unit#1|1|0|");
  EXPECT_EQ(format_unit({L"m3/h", 3.6, 0}, L'.'), L"m3/h|3.6|0|");
  EXPECT_EQ(format_unit({L"m3/h", 3.6, -0.5}, L','), L"m3/h|3,6|-0,5|");
  EXPECT_EQ(format_unit({L"x", 1e-7, 1e20}, L'.'), L"x|1E-07|1E+20|");
}

TEST(Unit, ComesBackAsWritten) {
  for (const wchar_t decimal : {L'.', L','}) {
    const std::wstring text = format_unit({L"x", 1.0 / 3, -273.15}, decimal);
    EXPECT_EQ(format_unit(parse_unit(text).unit, decimal), text);
  }
}

TEST(DimensionFile, IsWrittenInItsExactForm) {
  EXPECT_EQ(format_dimension_file(some_dimensions(), kStamp, kCodec, L',', false),
            "[Dimensions]\r\n"
            "Count=3\r\n"
            "Version=1.02.03\r\n"
            "Date=a build\r\n"
            "\r\n"
            "[DIM1]\r\n"
            "Caption=Volume flow\r\n"
            "Count=2\r\n"
            "UNIT1=m3/h|3,6|0|\r\n"
            "UNIT2=l/s|1|0|\r\n"
            "\r\n"
            "[DIM2]\r\n"
            "Caption=Temperature\r\n"
            "Count=1\r\n"
            "UNIT1=\xB0"
            "C|1|-273,15|\r\n"
            "\r\n"
            "[DIM3]\r\n"
            "Caption=None\r\n"
            "Count=0\r\n");
}

TEST(DimensionFile, StartsWithAnEmptyLineWhenItContinuesAFile) {
  EXPECT_EQ(format_dimension_file({}, kStamp, kCodec, L'.', true),
            "\r\n[Dimensions]\r\nCount=0\r\nVersion=1.02.03\r\nDate=a build\r\n");
}

TEST(DimensionFile, ComesBackAsWrittenAlsoBehindOtherText) {
  for (const wchar_t decimal : {L'.', L',', L'\''}) {
    const std::string table =
        format_dimension_file(some_dimensions(), kStamp, kCodec, decimal, true);
    const auto dimensions = parse_dimension_file("[Other]\r\nCount=1\r\n" + table, kCodec, decimal);
    ASSERT_TRUE(dimensions);
    ASSERT_EQ(dimensions->size(), 3U);
    EXPECT_EQ((*dimensions)[1].units[0].offset, -273.15);
    EXPECT_EQ(format_dimension_file(*dimensions, kStamp, kCodec, decimal, true), table);
  }
}

TEST(DimensionFile, OfAnAppendedTableGivesTheFirstOne) {
  const std::string bytes = format_dimension_file(some_dimensions(), kStamp, kCodec, L'.', false) +
                            format_dimension_file({{L"New", {}}}, kStamp, kCodec, L'.', true);
  const auto dimensions = parse_dimension_file(bytes, kCodec);
  ASSERT_TRUE(dimensions);
  EXPECT_EQ(dimensions->size(), 3U);
  EXPECT_EQ((*dimensions)[0].caption, L"Volume flow");
}

TEST(DimensionFile, WithoutDimensionsIsNone) {
  for (const char* bytes :
       {"", "[Dimensions]\n", "[Dimensions]\nCount=0\n", "[Dimensions]\nCount=-1\n",
        "[Dimensions]\nCount=32768\n", "[DIM1]\nCaption=x\nCount=1\n", "Count=1\n"}) {
    EXPECT_FALSE(parse_dimension_file(bytes, kCodec)) << bytes;
  }
}

TEST(DimensionFile, GivesDefaultsForMissingLines) {
  const auto dimensions = parse_dimension_file("[Dimensions]\nCount=3\n[DIM3]\n", kCodec);
  ASSERT_TRUE(dimensions);
  ASSERT_EQ(dimensions->size(), 3U);
  EXPECT_EQ((*dimensions)[2].caption, L"Untitled3");
  ASSERT_EQ((*dimensions)[2].units.size(), 1U);
  EXPECT_EQ(format_unit((*dimensions)[2].units[0], L'.'), L"Unit#1|1|0|");
}

TEST(DimensionFile, TakesAMissingCountFromTheNextSectionThatHasOne) {
  const auto dimensions = parse_dimension_file(
      "[Dimensions]\nCount=3\n"
      "[DIM1]\nCaption=A\nUNIT1=a|1|0|\n"
      "[DIM2]\nCaption=B\nCount=2\nUNIT1=b|1|0|\nUNIT2=c|1|0|\n"
      "[DIM3]\nCaption=C\n",
      kCodec);
  ASSERT_TRUE(dimensions);
  ASSERT_EQ((*dimensions)[0].units.size(), 2U);
  EXPECT_EQ((*dimensions)[0].units[0].caption, L"a");
  EXPECT_EQ((*dimensions)[0].units[1].caption, L"c");
  ASSERT_EQ((*dimensions)[2].units.size(), 1U);
  EXPECT_EQ((*dimensions)[2].units[0].caption, L"Unit#1");
}

TEST(DimensionFile, ReadsSectionsInAnyOrder) {
  const auto dimensions = parse_dimension_file(
      "[DIM2]\nCaption=B\nCount=0\n[DIM1]\nCaption=A\nCount=0\n[Dimensions]\nCount=2\n", kCodec);
  ASSERT_TRUE(dimensions);
  EXPECT_EQ((*dimensions)[0].caption, L"A");
  EXPECT_EQ((*dimensions)[1].caption, L"B");
}

TEST(DimensionFile, HoldsTheDefaultUnitOfADimensionOnlyOnce) {
  const auto dimensions = parse_dimension_file(
      "[Dimensions]\nCount=1\n[DIM1]\nCaption=A\nCount=6\nUNIT2=b|1|0|\nUNIT5=e|1|0|\n", kCodec);
  ASSERT_TRUE(dimensions);
  std::wstring captions;
  for (const UnitRecord& unit : (*dimensions)[0].units) captions += unit.caption + L" ";
  EXPECT_EQ(captions, L"Unit#1 b e ");
}

TEST(DimensionFile, IncompleteUnitLinesKeepTheirZeroes) {
  const auto dimensions =
      parse_dimension_file("[Dimensions]\nCount=1\n[DIM1]\nCount=2\nUNIT1=a\nUNIT2=\n", kCodec);
  ASSERT_TRUE(dimensions);
  EXPECT_EQ(format_unit((*dimensions)[0].units[0], L'.'), L"a|0|0|");
  EXPECT_EQ(format_unit((*dimensions)[0].units[1], L'.'), L"|0|0|");
}

/// The table as it is defined: every value is searched from the start of the file.
std::vector<DimensionRecord> read_from_the_start(std::string_view bytes) {
  SettingsReader reader(bytes, kCodec);
  const auto value = [&](const std::wstring& section, const std::wstring& key,
                         const std::wstring& fallback) {
    return reader.value(section, key, fallback, true, true);
  };
  std::vector<DimensionRecord> dimensions;
  const int count = lenient_integer<std::int16_t>(value(L"Dimensions", L"Count", L"0"));
  for (int n = 1; n <= count; ++n) {
    const std::wstring section = L"DIM" + format_integer(n);
    DimensionRecord dimension{value(section, L"Caption", L"Untitled" + format_integer(n)), {}};
    const int units = lenient_integer<std::int16_t>(value(section, L"Count", L"1"));
    for (int m = 1; m <= units; ++m) {
      dimension.units.push_back(
          parse_unit(value(section, L"UNIT" + format_integer(m), L"Unit#1|1.0|0.0")).unit);
    }
    dimensions.push_back(dimension);
  }
  return dimensions;
}

/// Drops units whose caption is in use, as the collection of units does.
void drop_repeated_units(std::vector<DimensionRecord>& dimensions) {
  for (DimensionRecord& dimension : dimensions) {
    std::vector<UnitRecord> kept;
    for (const UnitRecord& unit : dimension.units) {
      const bool used = std::any_of(kept.begin(), kept.end(), [&](const UnitRecord& other) {
        return !unit.caption.empty() && other.caption == unit.caption;
      });
      if (!used) kept.push_back(unit);
    }
    dimension.units = kept;
  }
}

TEST(DimensionFile, GivesTheSameTableAsSearchesFromTheStart) {
  static const std::vector<std::string> kLines = {"[Dimensions]",
                                                  "[DIM1]",
                                                  "[DIM2]",
                                                  "[DIM3]",
                                                  "Caption=A",
                                                  "Caption=B",
                                                  "Count=0",
                                                  "Count=2",
                                                  "Count=3",
                                                  "Count=5",
                                                  "UNIT1=a|2|3|",
                                                  "UNIT2=b|1|",
                                                  "UNIT3=Unit#1|7|8|",
                                                  "UNIT4=d",
                                                  "UNIT5=a|1|1|",
                                                  "UNIT3=|1|1|",
                                                  "junk",
                                                  "[DIM2]Count=4",
                                                  ""};
  std::mt19937 random(6);
  int read = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string bytes = "[Dimensions]\nCount=3\n";
    const int count = std::uniform_int_distribution<int>(0, 25)(random);
    for (int i = 0; i < count; ++i) {
      bytes +=
          kLines[std::uniform_int_distribution<std::size_t>(0, kLines.size() - 1)(random)] + "\n";
    }
    auto dimensions = parse_dimension_file(bytes, kCodec);
    ASSERT_TRUE(dimensions);
    auto expected = read_from_the_start(bytes);
    drop_repeated_units(*dimensions);
    drop_repeated_units(expected);
    ASSERT_EQ(format_dimension_file(*dimensions, kStamp, kCodec, L'.', false),
              format_dimension_file(expected, kStamp, kCodec, L'.', false))
        << bytes;
    for (const DimensionRecord& dimension : *dimensions) read += dimension.units.size() > 2;
  }
  EXPECT_GT(read, 500);
}

TEST(DimensionFile, IsNotHeldUpByHugeCountsWithoutUnitLines) {
  std::string bytes = "[Dimensions]\nCount=32767\n";
  for (int n = 1; n <= 32767; ++n) bytes += "[DIM" + std::to_string(n) + "]\n";
  bytes += "Count=32767\n";
  const auto dimensions = parse_dimension_file(bytes, kCodec);
  ASSERT_TRUE(dimensions);
  EXPECT_EQ(dimensions->size(), 32767U);
  for (const DimensionRecord& dimension : *dimensions) ASSERT_EQ(dimension.units.size(), 1U);
}

// Every dimension takes all the units at the end of the file.
std::string file_of_shared_units(int dimensions, int units) {
  std::string bytes = "[Dimensions]\nCount=" + std::to_string(dimensions) + "\n";
  for (int n = 1; n <= dimensions; ++n) bytes += "[DIM" + std::to_string(n) + "]\n";
  bytes += "Count=" + std::to_string(units) + "\n";
  for (int m = 1; m <= units; ++m) {
    bytes += "UNIT" + std::to_string(m) + "=u" + std::to_string(m) + "\n";
  }
  return bytes;
}

// Together these would be a thousand million units, far more than any memory holds.
TEST(DimensionFile, ReadsOnlyTheUnitsThatAreAskedFor) {
  const auto file = DimensionFile::open(file_of_shared_units(32767, 32767), kCodec);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->size(), 32767U);
  EXPECT_EQ(file->caption(32766), L"Untitled32767");
  for (const std::size_t index : {0U, 20'000U, 32'766U}) {
    const std::vector<UnitRecord> units = file->units(index);
    ASSERT_EQ(units.size(), 32767U);
    EXPECT_EQ(units.back().caption, L"u32767");
  }
}

TEST(DimensionFile, IsReadAsAWholeToo) {
  const auto table = parse_dimension_file(file_of_shared_units(100, 100), kCodec);
  ASSERT_TRUE(table);
  ASSERT_EQ(table->size(), 100U);
  for (const DimensionRecord& dimension : *table) ASSERT_EQ(dimension.units.size(), 100U);
}

// Of a file in the memory of its opener nothing is needed afterwards.
TEST(DimensionFile, KeepsWhatItReadsFrom) {
  auto bytes = std::make_unique<std::string>("[Dimensions]\nCount=1\n[DIM1]\nUNIT1=a|2|3|\n");
  const auto file = DimensionFile::open(*bytes, kCodec);
  bytes.reset();
  ASSERT_TRUE(file);
  ASSERT_EQ(file->units(0).size(), 1U);
  EXPECT_EQ(file->units(0)[0].slope, 2);
}

}  // namespace
}  // namespace pv
