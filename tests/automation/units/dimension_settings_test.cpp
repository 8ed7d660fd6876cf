// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The table of dimensions in its settings file.

#include <gtest/gtest.h>

#include "pvItems32.h"
#include "tests/automation/units/dimension_support.h"

namespace pv::test {
namespace {

constexpr const char* kTwoDimensions =
    "[Dimensions]\r\nCount=2\r\nVersion=1.00.00\r\nDate=x\r\n"
    "\r\n[DIM1]\r\nCaption=Flow\r\nCount=2\r\nUNIT1=m3/h|3.6|0|\r\nUNIT2=l/s|1,5|0.25\r\n"
    "\r\n[DIM2]\r\nCaption=Mass\r\nCount=1\r\nUNIT1=kg|1|0|\r\n";

Object loaded(std::string_view text) {
  const OwnFile file(L"dims.ini", text);
  const Object dimensions = make_dimensions();
  EXPECT_EQ(dimensions.call(L"LoadSettingsNew", file), true);
  return dimensions;
}

Object units_of(const Object& dimensions, const Value& index) {
  return dimensions.get_object(L"Item", index).get_object(L"Units");
}

TEST(LoadDimensions, FillsTheTable) {
  const Object dimensions = loaded(kTwoDimensions);
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|Mass|");
  EXPECT_EQ(dimensions.get_object(L"Item", L"mass").get(L"Key"), L"Mass");
  EXPECT_EQ(units_of(dimensions, 1).call(L"List"), L"m3/h|l/s|");
  const Object liter = units_of(dimensions, L"Flow").get_object(L"Item", L"l/s");
  EXPECT_EQ(liter.get(L"Key"), L"l/s");
  EXPECT_EQ(liter.get(L"Slope"), 1.5);
  EXPECT_EQ(liter.get(L"Offset"), 0.25);
}

TEST(LoadDimensions, ReplacesTheTableAndClearsChanged) {
  const OwnFile file(L"dims.ini", kTwoDimensions);
  const Object dimensions = make_dimensions();
  add_dimension(dimensions, L"Old", {{L"u", 1, 0}});
  dimensions.put(L"Changed", true);
  EXPECT_EQ(dimensions.call(L"LoadSettingsNew", file), true);
  EXPECT_EQ(dimensions.call(L"List"), L"Flow|Mass|");
  EXPECT_EQ(dimensions.get(L"Changed"), false);
}

void expect_load_changes_nothing(const Value& file) {
  const Object dimensions = make_dimensions();
  add_dimension(dimensions, L"Old", {{L"u", 1, 0}});
  dimensions.put(L"Changed", true);
  EXPECT_EQ(dimensions.call(L"LoadSettingsNew", file), false);
  EXPECT_EQ(dimensions.call(L"List"), L"Old|");
  EXPECT_EQ(dimensions.get(L"Changed"), true);
}

TEST(LoadDimensions, OfAMissingFileChangesNothing) {
  expect_load_changes_nothing(OwnFile());
  expect_load_changes_nothing(L"");
  expect_load_changes_nothing(L"Z:\\no such folder\\x.ini");
  expect_load_changes_nothing(scratch_folder());
}

TEST(LoadDimensions, OfAFileWithoutDimensionsChangesNothing) {
  for (const char* text : {"", "[DIM1]\r\nCaption=a\r\n", "[Dimensions]\r\nCount=0\r\n",
                           "[Dimensions]\r\nCount=-1\r\n", "[Dimensions]\r\nCount=abc\r\n",
                           "[Dimensions]\r\nCount=40000\r\n", "Count=5\r\n[Dimensions]\r\n"}) {
    expect_load_changes_nothing(OwnFile(L"dims.ini", text));
  }
}

TEST(LoadDimensions, MissingCaptionsAreNumbered) {
  EXPECT_EQ(loaded("[Dimensions]\r\nCount=3\r\n").call(L"List"), L"Untitled1|Untitled2|Untitled3|");
}

TEST(LoadDimensions, MissingUnitsAreTheDefaultUnit) {
  const Object dimensions = loaded("[Dimensions]\r\nCount=1\r\n[DIM1]\r\nCaption=a\r\n");
  EXPECT_EQ(units_of(dimensions, 1).get(L"Count"), 1);
  const Object unit = units_of(dimensions, 1).get_object(L"Item", 1);
  EXPECT_EQ(unit.get(L"Caption"), L"Unit#1");
  EXPECT_EQ(unit.get(L"Slope"), 1.0);
  EXPECT_EQ(unit.get(L"Offset"), 0.0);
}

TEST(LoadDimensions, KeySearchRunsOnPastTheSectionsEnd) {
  const Object dimensions = loaded(
      "[Dimensions]\r\nCount=3\r\n[DIM1]\r\n[DIM2]\r\nCaption=b\r\n[DIM3]\r\nCaption=c\r\n"
      "Count=2\r\nUNIT1=x|1|0|\r\nUNIT2=y|1|0|\r\n");
  EXPECT_EQ(dimensions.call(L"List"), L"b|c|") << "the second dimension under caption b is dropped";
  EXPECT_EQ(units_of(dimensions, L"b").call(L"List"), L"x|y|");
  EXPECT_EQ(units_of(dimensions, L"c").call(L"List"), L"x|y|");
}

TEST(LoadDimensions, DuplicateCaptionsAreDropped) {
  const Object dimensions = loaded(
      "[Dimensions]\r\nCount=3\r\n[DIM1]\r\nCaption=a\r\nCount=2\r\nUNIT1=u|1|0|\r\n"
      "UNIT2=U|2|0|\r\n[DIM2]\r\nCaption=A\r\nCount=1\r\nUNIT1=v|1|0|\r\n"
      "[DIM3]\r\nCaption=b\r\nCount=1\r\nUNIT1=w|1|0|\r\n");
  EXPECT_EQ(dimensions.call(L"List"), L"a|b|");
  EXPECT_EQ(units_of(dimensions, 1).call(L"List"), L"u|");
  EXPECT_EQ(units_of(dimensions, 1).get_object(L"Item", 1).get(L"Slope"), 1.0);
}

TEST(LoadDimensions, TakesLineFeedsAloneAndAMissingLastLineEnd) {
  const Object dimensions =
      loaded("[Dimensions]\nCount=1\n[DIM1]\nCaption=a\nCount=1\nUNIT1=u|2|3");
  EXPECT_EQ(units_of(dimensions, 1).get_object(L"Item", L"u").get(L"Offset"), 3.0);
}

TEST(LoadDimensions, TakesLinesOfAnyLengthAndBytesThatAreNoText) {
  const std::string long_name(100'000, 'x');
  const std::string no_text("\x01\xFF\0 \x81[=]\r\n", 10);
  const Object dimensions = loaded(no_text + "[Dimensions]\r\nCount=1\r\n[DIM1]\r\n" + no_text +
                                   "Caption=" + long_name + "\r\n");
  EXPECT_EQ(dimensions.call(L"List").text().size(), 100'001u);
}

TEST(LoadDimensions, ReadsTextInTheSystemsCodePage) {
  const Object dimensions = loaded(
      "[Dimensions]\r\nCount=1\r\n[DIM1]\r\nCaption=" + in_code_page(L"Température") + "\r\n");
  EXPECT_EQ(dimensions.call(L"List"), L"Température|");
}

// Every dimension takes the thousand units at the end of the file.
TEST(LoadDimensions, TakesTablesOfAnySize) {
  std::string text = "[Dimensions]\r\nCount=32767\r\n";
  for (int n = 1; n <= 32767; ++n) {
    text += "[DIM" + std::to_string(n) + "]\r\nCaption=" + std::to_string(n) + "\r\n";
  }
  text += "Count=32767\r\n";
  for (int m = 1; m <= 1000; ++m) {
    text += "UNIT" + std::to_string(m) + "=u" + std::to_string(m) + "|2|0\r\n";
  }
  const Object dimensions = loaded(text);
  EXPECT_EQ(dimensions.get(L"Count"), 32767);
  EXPECT_EQ(dimensions.call(L"ToUnit", 4, 32767, L"u1000", -1, smValueAndUnit), L"8 u1000");
  EXPECT_EQ(units_of(dimensions, 1).get(L"Count"), 1001);  // the default unit is the last
}

// Units are read from the file when they are asked for, but the file may be gone by then.
TEST(LoadDimensions, HandsOutTheSameUnitsEveryTime) {
  const Object dimensions = loaded(kTwoDimensions);
  const Object dimension = dimensions.get_object(L"Item", 1);
  EXPECT_EQ(dimension.get_object(L"Units"), dimension.get_object(L"Units"));
  units_of(dimensions, 1).call(L"Remove", 1);
  EXPECT_EQ(units_of(dimensions, 1).call(L"List"), L"l/s|");
}

TEST(LoadDimensions, UnitsOfTheHostTakeThePlaceOfThoseOfTheFile) {
  const Object dimensions = loaded(kTwoDimensions);
  const Object dimension = dimensions.get_object(L"Item", 1);
  dimension.set(L"Units", Object::create(L"pvItems32.CUnits"));
  EXPECT_EQ(units_of(dimensions, 1).get(L"Count"), 0);
  dimension.set(L"Units", Value::nothing());
  EXPECT_TRUE(dimension.get(L"Units").is_nothing());
}

TEST(LoadDimensions, UnitsOfTheFileAreCopiedAndRenamed) {
  const Object dimensions = loaded(kTwoDimensions);
  EXPECT_EQ(dimensions.call(L"ChangeTitle", 1, L"Volume"), true);
  EXPECT_EQ(units_of(dimensions, L"Volume").call(L"List"), L"m3/h|l/s|");
}

std::string library_version() {
  const Object utility = Object::create(L"pvItems32.CUtility");
  const std::wstring record = utility.get(L"pvItem32Version").text();
  const auto dll = record.find(L'|');
  const auto version = record.find(L'|', dll + 1);
  // The revision has four digits there and two here.
  std::wstring text = record.substr(dll + 1, version - dll - 1);
  text.erase(text.rfind(L'.') + 1, 2);
  const std::wstring comments = record.substr(version + 1, record.size() - version - 2);
  return in_code_page(L"Version=" + text + L"\r\nDate=" + comments + L"\r\n");
}

TEST(SaveDimensions, WritesEverySectionInOrder) {
  const Object dimensions = make_dimensions();
  add_dimension(dimensions, L"Flow", {{L"m3/h", 3.6, 0}, {L"l/s", 1, -0.5}});
  add_dimension(dimensions, L"None", {});
  const OwnFile file;
  EXPECT_EQ(dimensions.call(L"SaveSettingsNew", file), true);
  EXPECT_EQ(file.bytes(), "[Dimensions]\r\nCount=2\r\n" + library_version() +
                              "\r\n[DIM1]\r\nCaption=Flow\r\nCount=2\r\nUNIT1=m3/h|" +
                              in_code_page(in_user_locale(L"3.6|0|\r\nUNIT2=l/s|1|-0.5|\r\n")) +
                              "\r\n[DIM2]\r\nCaption=None\r\nCount=0\r\n");
}

TEST(SaveDimensions, WritesAnEmptyTable) {
  const OwnFile file;
  EXPECT_EQ(make_dimensions().call(L"SaveSettingsNew", file), true);
  EXPECT_EQ(file.bytes(), "[Dimensions]\r\nCount=0\r\n" + library_version());
}

TEST(SaveDimensions, AppendsToAFileThatIsThere) {
  const OwnFile file(L"all.ini", "[Items]\r\nCount=0\r\n");
  EXPECT_EQ(make_dimensions().call(L"SaveSettingsNew", file), true);
  EXPECT_EQ(file.bytes(),
            "[Items]\r\nCount=0\r\n\r\n[Dimensions]\r\nCount=0\r\n" + library_version());
}

TEST(SaveDimensions, LeavesChangedAsItIs) {
  const OwnFile file;
  const Object dimensions = make_dimensions();
  dimensions.put(L"Changed", true);
  EXPECT_EQ(dimensions.call(L"SaveSettingsNew", file), true);
  EXPECT_EQ(dimensions.get(L"Changed"), true);
}

TEST(SaveDimensions, FailsWhereNoFileCanBe) {
  const Object dimensions = flow_and_temperature();
  EXPECT_EQ(dimensions.call(L"SaveSettingsNew", L""), false);
  EXPECT_EQ(dimensions.call(L"SaveSettingsNew", L"Z:\\no such folder\\x.ini"), false);
  EXPECT_EQ(dimensions.call(L"SaveSettingsNew", scratch_folder()), false);
}

TEST(SaveDimensions, FailsOnAFileThatOthersHoldBack) {
  const OwnFile file(L"locked.ini", "kept");
  const HANDLE lock = CreateFileW(file.path().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(flow_and_temperature().call(L"SaveSettingsNew", file), false);
  CloseHandle(lock);
  EXPECT_EQ(file.bytes(), "kept");
}

// Whatever the user has set: what was written is read.
TEST(SaveDimensions, IsReadBackWithAnUnusualDecimalSeparator) {
  for (const wchar_t* separator : {L"'", L"*", L","}) {
    const UserDecimal set(separator);
    const Object dimensions = make_dimensions();
    add_dimension(dimensions, L"Flow", {{L"m3/h", 3.6, -0.25}});
    const OwnFile file;
    EXPECT_EQ(dimensions.call(L"SaveSettingsNew", file), true);
    const std::string line = in_code_page(in_user_locale(L"UNIT1=m3/h|3.6|-0.25|"));
    EXPECT_NE(file.bytes().find(line), std::string::npos) << file.bytes();
    const Object unit = units_of(loaded(file.bytes()), 1).get_object(L"Item", 1);
    EXPECT_EQ(unit.get(L"Slope"), 3.6);
    EXPECT_EQ(unit.get(L"Offset"), -0.25);
    EXPECT_EQ(unit.call(L"Load", unit.call(L"Save")), true);
    EXPECT_EQ(unit.get(L"Slope"), 3.6);
    EXPECT_EQ(unit.get(L"Offset"), -0.25);
  }
}

TEST(SaveDimensions, IsReadBackAsItWas) {
  const Object dimensions = flow_and_temperature();
  const OwnFile file;
  EXPECT_EQ(dimensions.call(L"SaveSettingsNew", file), true);
  const Object copy = loaded(file.bytes());
  EXPECT_EQ(copy.call(L"List"), dimensions.call(L"List"));
  for (const int dimension : {1, 2}) {
    EXPECT_EQ(units_of(copy, dimension).call(L"List"),
              units_of(dimensions, dimension).call(L"List"));
    for (const int unit : {1, 2}) {
      EXPECT_EQ(units_of(copy, dimension).get_object(L"Item", unit).call(L"Save"),
                units_of(dimensions, dimension).get_object(L"Item", unit).call(L"Save"));
    }
  }
}

}  // namespace
}  // namespace pv::test
