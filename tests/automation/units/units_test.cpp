// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "tests/automation/utility/utility_support.h"

namespace pv::test {
namespace {

Object make_unit() { return Object::create(L"pvItems32.CUnit"); }
Object make_units() { return Object::create(L"pvItems32.CUnits"); }

Object three_flows() {
  const Object units = make_units();
  units.call(L"Add", L"m3/h", L"m3/h", 1.0, 0.0);
  units.call(L"Add", L"l/s", L"l/s", 0.2778, 0.0);
  units.call(L"Add", L"l/min", L"l/min", 16.667, 0.5);
  return units;
}

TEST(Unit, BeginsUntitledWithoutSlopeAndOffset) {
  const Object unit = make_unit();
  EXPECT_EQ(unit.get(L"Key"), L"");
  EXPECT_EQ(unit.get(L"Caption"), L"Untitled");
  EXPECT_EQ(unit.get(L"Slope"), 0.0);
  EXPECT_EQ(unit.get(L"Offset"), 0.0);
}

TEST(Unit, KeepsWhatIsPut) {
  const Object unit = make_unit();
  const std::wstring key(L"K\0Ω", 3);
  unit.put(L"Key", key);
  unit.put(L"Caption", L"°C – ф");
  unit.put(L"Slope", 1.0 / 3);
  unit.put(L"Offset", -273.15);
  EXPECT_EQ(unit.get(L"Key"), key);
  EXPECT_EQ(unit.get(L"Caption"), L"°C – ф");
  EXPECT_EQ(unit.get(L"Slope"), 1.0 / 3);
  EXPECT_EQ(unit.get(L"Offset"), -273.15);
}

TEST(Unit, LoadTakesEitherDecimalSeparator) {
  const Object unit = make_unit();
  EXPECT_EQ(unit.call(L"Load", L"l/s|1,5|0.25"), true);
  EXPECT_EQ(unit.get(L"Caption"), L"l/s");
  EXPECT_EQ(unit.get(L"Slope"), 1.5);
  EXPECT_EQ(unit.get(L"Offset"), 0.25);
}

TEST(Unit, LoadReadsTheWaysToWriteOneAlike) {
  const Object unit = make_unit();
  for (const wchar_t* one : {L"1.0", L"1,0", L"1", L"+1", L"1 kg", L"1E0"}) {
    EXPECT_EQ(unit.call(L"Load", std::wstring(L"u|") + one + L"|0"), true);
    EXPECT_EQ(unit.get(L"Slope"), 1.0) << printable(one);
  }
}

TEST(Unit, LoadTakesTextThatIsNoNumberForZero) {
  const Object unit = make_unit();
  EXPECT_EQ(unit.call(L"Load", L"u|abc|"), true);
  EXPECT_EQ(unit.get(L"Slope"), 0.0);
  EXPECT_EQ(unit.get(L"Offset"), 0.0);
}

TEST(Unit, LoadIgnoresWhatFollowsTheThirdField) {
  const Object unit = make_unit();
  EXPECT_EQ(unit.call(L"Load", L"u|2|3|4|5|"), true);
  EXPECT_EQ(unit.get(L"Caption"), L"u");
  EXPECT_EQ(unit.get(L"Slope"), 2.0);
  EXPECT_EQ(unit.get(L"Offset"), 3.0);
}

TEST(Unit, LoadOfOneFieldTakesTheCaptionAndFails) {
  const Object unit = make_unit();
  unit.put(L"Slope", 7.0);
  unit.put(L"Offset", 8.0);
  EXPECT_EQ(unit.call(L"Load", L"x"), false);
  EXPECT_EQ(unit.get(L"Caption"), L"x");
  EXPECT_EQ(unit.get(L"Slope"), 7.0);
  EXPECT_EQ(unit.get(L"Offset"), 8.0);
}

TEST(Unit, LoadOfTwoFieldsTakesBothAndFails) {
  const Object unit = make_unit();
  unit.put(L"Offset", 8.0);
  EXPECT_EQ(unit.call(L"Load", L"x|2,5"), false);
  EXPECT_EQ(unit.get(L"Slope"), 2.5);
  EXPECT_EQ(unit.get(L"Offset"), 8.0);
}

TEST(Unit, LoadKeepsTheKey) {
  const Object unit = make_unit();
  unit.put(L"Key", L"mine");
  unit.call(L"Load", L"x|1|2|");
  EXPECT_EQ(unit.get(L"Key"), L"mine");
}

TEST(Unit, LoadTakesTheCaptionAsItStands) {
  const Object unit = make_unit();
  const std::wstring caption(L" µ\0g ", 5);
  EXPECT_EQ(unit.call(L"Load", caption + L"|1|0"), true);
  EXPECT_EQ(unit.get(L"Caption"), caption);
}

TEST(Unit, SaveAfterLoadingTheDefaultRecord) {
  const Object unit = make_unit();
  EXPECT_EQ(unit.call(L"Load", L"Unit#1|1.0|0.0"), true);
  EXPECT_EQ(unit.call(L"Save"), L"Unit#1|1|0|");
}

TEST(Unit, SaveWritesNumbersInTheUsersLocale) {
  const Object unit = make_unit();
  unit.put(L"Caption", L"m3/h");
  unit.put(L"Slope", 3.6);
  unit.put(L"Offset", -0.00001);
  EXPECT_EQ(unit.call(L"Save"), in_user_locale(L"m3/h|3.6|-1E-05|"));
}

TEST(Unit, LoadReadsBackWhatSaveWrote) {
  const Object unit = make_unit();
  const Object copy = make_unit();
  for (const double number : {0.1, -273.15, 1234567.875, 1e300, 1e-300, 0.0}) {
    unit.put(L"Slope", number);
    unit.put(L"Offset", -number);
    EXPECT_EQ(copy.call(L"Load", unit.call(L"Save")), true);
    EXPECT_EQ(copy.get(L"Slope"), number);
    EXPECT_EQ(copy.get(L"Offset"), -number);
  }
}

TEST(Units, AddAppendsAndReturnsTheUnit) {
  const Object units = make_units();
  const Object added = units.call_object(L"Add", L"flow", L"m3/h", 3.6, 0.5);
  EXPECT_EQ(added.get(L"Key"), L"flow");
  EXPECT_EQ(added.get(L"Caption"), L"m3/h");
  EXPECT_EQ(added.get(L"Slope"), 3.6);
  EXPECT_EQ(added.get(L"Offset"), 0.5);
  EXPECT_EQ(units.get(L"Count"), 1);
  EXPECT_EQ(units.get(L"Item", 1), added);
  EXPECT_EQ(units.get(L"Item", L"FLOW"), added);
}

TEST(Units, AddWithoutKeyCanBeRepeated) {
  const Object units = make_units();
  units.call(L"Add", L"", L"a", 1.0, 0.0);
  units.call(L"Add", L"", L"a", 2.0, 0.0);
  EXPECT_EQ(units.get(L"Count"), 2);
  EXPECT_EQ(units.get_object(L"Item", 2).get(L"Slope"), 2.0);
  EXPECT_TRUE(units.get(L"Item", L"").is_nothing());
}

TEST(Units, AddUnderAUsedKeyIsNothingAndChangesNothing) {
  const Object units = three_flows();
  EXPECT_TRUE(units.call(L"Add", L"L/S", L"other", 9.0, 9.0).is_nothing());
  EXPECT_EQ(units.get(L"Count"), 3);
  EXPECT_EQ(units.get_object(L"Item", L"l/s").get(L"Caption"), L"l/s");
}

TEST(Units, ItemThatDoesNotExistIsNothing) {
  const Object units = three_flows();
  for (const Value& index : {Value(0), Value(4), Value(-1), Value(L"kg"), Value(L"1"),
                             Value::null(), Value(), Value::nothing()}) {
    EXPECT_TRUE(units.get(L"Item", index).is_nothing()) << testing::PrintToString(index);
  }
}

TEST(Units, ItemTakesPositionsOfEveryNumericType) {
  const Object units = three_flows();
  const Value second = units.get(L"Item", 2);
  for (const VARTYPE type : {VT_I1, VT_UI1, VT_I2, VT_UI2, VT_I4, VT_UI4, VT_I8, VT_UI8, VT_INT,
                             VT_UINT, VT_R4, VT_R8, VT_CY, VT_DECIMAL}) {
    EXPECT_EQ(units.get(L"Item", as_type(type, 2)), second) << type;
  }
  Value variable(2.0);
  EXPECT_EQ(units.get(L"Item", by_ref(variable)), second);
  short number = 2;
  EXPECT_EQ(units.get(L"Item", by_ref(number)), second);
}

TEST(Units, ItemIsTheDefaultMember) {
  const Object units = three_flows();
  const Value index(3);
  const VARIANT& passed = index;
  EXPECT_EQ(units.invoke(DISPID_VALUE, DISPATCH_PROPERTYGET, {&passed, 1}).value,
            units.get(L"Item", 3));
}

TEST(Units, RemoveTakesPositionsAndKeys) {
  const Object units = three_flows();
  units.call(L"Remove", 1);
  units.call(L"Remove", L"L/Min");
  EXPECT_EQ(units.call(L"List"), L"l/s|");
}

TEST(Units, RemovePassesOverWhatDoesNotExist) {
  const Object units = three_flows();
  units.call(L"Remove", 4);
  units.call(L"Remove", L"kg");
  EXPECT_EQ(units.get(L"Count"), 3);
}

TEST(Units, ClearRemovesAllAndFreesTheKeys) {
  const Object units = three_flows();
  units.call(L"Clear");
  EXPECT_EQ(units.get(L"Count"), 0);
  EXPECT_FALSE(units.call(L"Add", L"l/s", L"l/s", 1.0, 0.0).is_nothing());
}

TEST(Units, ListEndsEveryCaptionWithTheSeparator) {
  const Object units = three_flows();
  EXPECT_EQ(units.call(L"List"), L"m3/h|l/s|l/min|");
  EXPECT_EQ(units.call(L"List", L""), L"m3/h|l/s|l/min|");
  EXPECT_EQ(units.call(L"List", Value::missing()), L"m3/h|l/s|l/min|");
  EXPECT_EQ(units.call(L"List", L", "), L"m3/h, l/s, l/min, ");
  EXPECT_EQ(units.call(L"List", std::wstring(L"\0", 1)), std::wstring(L"m3/h\0l/s\0l/min\0", 15));
  EXPECT_EQ(make_units().call(L"List"), L"");
}

TEST(Units, ListShowsCaptionsAsTheyAreNow) {
  const Object units = three_flows();
  units.get_object(L"Item", 2).put(L"Caption", L"liter");
  EXPECT_EQ(units.call(L"List"), L"m3/h|liter|l/min|");
  EXPECT_EQ(units.get_object(L"Item", L"l/s").get(L"Caption"), L"liter");
}

}  // namespace
}  // namespace pv::test
