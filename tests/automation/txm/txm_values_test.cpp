// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Raw values as texts and back: lists, units, and dimensions that other items name.

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

constexpr int kValue = 0, kUnit = 1, kBoth = 2, kBadDisplay = 3;
constexpr int kNone = 17;

std::wstring local(std::wstring number) {
  wchar_t separator[8] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, 8);
  if (const auto point = number.find(L'.'); point != std::wstring::npos) {
    number.replace(point, 1, separator);
  }
  return number;
}

struct Values : testing::Test, Transmitter {
  Values() {
    const Object flow = Object::create(L"pvItems32.CUnits");
    flow.call(L"Add", L"l/s", L"l/s", 1.0, 0.0);
    flow.call(L"Add", L"m3/h", L"m3/h", 0.5, 0.0);
    flow.call(L"Add", L"mix", L"mix", 2.0, 10.0);
    dimensions.call(L"Add", L"Flow", L"Flow", flow);
    const Object mass = Object::create(L"pvItems32.CUnits");
    mass.call(L"Add", L"kg", L"kg", 1.0, 0.0);
    mass.call(L"Add", L"g", L"g", 1000.0, 0.0);
    dimensions.call(L"Add", L"Mass", L"Mass", mass);
    const Object members = Object::create(L"pvItems32.CDListMembers");
    members.call(L"Add", L"0", L"Off", L"20");
    members.call(L"Add", L"1", L"On", L"21");
    members.call(L"Add", L"2", L"Broken", L"none");
    lists.call(L"Add", L"1", members, L"Switch");
  }
  Object flow_item(short id, const Value& value, int dimension = 1, int unit = 2) {
    const Object item = add_item(id, 0, false, value);
    const Object first = variable(item);
    first.put(L"DimensionID", dimension);
    first.put(L"UnitID", unit);
    return item;
  }
  Object list_item(short id, const Value& value) {
    const Object item = add_item(id, 0, false, value);
    variable(item).put(L"ListID", 1);
    return item;
  }
  static Object variable(const Object& item, int index = 1) {
    return item.get_object(L"Variables").get_object(L"Item", index);
  }
  static Object add_variable(const Object& item, const wchar_t* key, const Value& value,
                             int parent = 0) {
    return item.get_object(L"Variables")
        .call_object(L"Add", key, L"", L"", L"", parent, 1, 2, 2, value, 0, 4);
  }
  template <class... A>
  Value shown(const Object& item, const A&... arguments) const {
    return txm.get(L"ItemValue", item, arguments...);
  }
};
using Entered = Values;
using DimensionOfVariable = Values;
using Factors = Values;

// --- Lists ------------------------------------------------------------------------------------

TEST_F(Values, AnEnumeratedValueShowsItsMeaning) {
  const Object item = list_item(7, 1);
  EXPECT_EQ(shown(item), L"On");
  EXPECT_EQ(shown(item, 1, -1, -2, kBoth), L"On");
  EXPECT_EQ(shown(item, 1, -1, -2, kUnit), L"");
  EXPECT_EQ(shown(item, 1, -1, -2, kBadDisplay), L"?");
  EXPECT_EQ(shown(item, 1, -1, -2, -1), L"?");
}

TEST_F(Values, WithoutMeaningTheRawValueIsShown) {
  EXPECT_EQ(shown(list_item(7, 1), 1, -1, -2, kValue, false, false), 1);
  EXPECT_EQ(shown(list_item(8, L"1"), 1, -1, -2, kBoth, false, false), L"1");
}

TEST_F(Values, AnUnknownCodeShowsAsItsNumber) {
  EXPECT_EQ(shown(list_item(7, 9)), 9);
  const Object item = list_item(8, 1);
  variable(item).put(L"ListID", 5);
  EXPECT_EQ(shown(item), 1);
  server.answer(L"Lists", Value::nothing());
  EXPECT_EQ(shown(list_item(10, 1)), 1);
  server.fail(L"Lists");
  EXPECT_EQ(shown(list_item(11, 1)), 1);
}

TEST_F(Values, AListGoesBeforeTheDimension) {
  const Object item = list_item(7, 1);
  variable(item).put(L"DimensionID", 1);
  EXPECT_EQ(shown(item), L"On");
}

// --- No dimension -----------------------------------------------------------------------------

TEST_F(Values, WithoutDimensionTheValueIsShownAsItIs) {
  const Object item = add_item(7, 0, false, L"any, text");
  EXPECT_EQ(shown(item), L"any, text");
  EXPECT_EQ(shown(item, 1, 2, 0, kBoth, true), L"any, text");
  EXPECT_EQ(shown(item, 1, -1, -2, kUnit), L"");
  EXPECT_EQ(shown(item, 1, -1, -2, kBadDisplay), L"?");
  EXPECT_EQ(calls(), Lines());
}

// --- Physical values --------------------------------------------------------------------------

TEST_F(Values, APhysicalValueIsShownInItsUnit) {
  const Object item = flow_item(7, 25.0);
  EXPECT_EQ(shown(item), local(L"12.50"));
  EXPECT_EQ(shown(item, 1, -1, -2, kBoth), local(L"12.50") + L" m3/h");
  EXPECT_EQ(shown(item, 1, -1, -2, kUnit), L"m3/h");
  EXPECT_EQ(shown(item, 1, 1), local(L"25.00"));
  EXPECT_EQ(shown(item, 1, 3, -2, kBoth), local(L"60.00") + L" mix");
}

TEST_F(Values, DecimalsAreTheItemsOwnOrThoseAskedFor) {
  const Object item = flow_item(7, 25.0);
  EXPECT_EQ(shown(item, 1, -1, 1), local(L"12.5"));
  EXPECT_EQ(shown(item, 1, -1, 3), local(L"12.500"));
  EXPECT_EQ(shown(item, 1, 1, 0), L"25");
  EXPECT_EQ(shown(item, 1, -1, -1), local(L"12.5"));
  variable(item).put(L"Decimals", 1);
  EXPECT_EQ(shown(item, 1, -1, -2), local(L"12.5"));
}

TEST_F(Values, ThePeriodReplacesOnlyTheFirstComma) {
  const Object item = flow_item(7, 25.0);
  EXPECT_EQ(shown(item, 1, -1, -2, kBoth, true), L"12.50 m3/h");
  dimensions.get_object(L"Item", 1)
      .get_object(L"Units")
      .get_object(L"Item", 2)
      .put(L"Caption", L"a,b,c");
  const std::wstring unit = local(L".") == L"," ? L" a,b,c" : L" a.b,c";
  EXPECT_EQ(shown(item, 1, -1, -2, kBoth, true), L"12.50" + unit);
  EXPECT_EQ(shown(item, 1, -1, -2, kBoth, false), local(L"12.50") + L" a,b,c");
}

TEST_F(Values, AVariableOutOfRangeMeansTheFirst) {
  const Object item = flow_item(7, 25.0);
  add_variable(item, L"2", 50.0);
  EXPECT_EQ(shown(item, 2), local(L"25.00"));
  for (int index : {0, -1, 3, 32767}) EXPECT_EQ(shown(item, index), local(L"12.50")) << index;
}

TEST_F(Values, ADirtyValueIsUnknown) {
  const Object item = flow_item(7, 25.0);
  item.put(L"Dirty", 1, true);
  EXPECT_EQ(shown(item), L"?");
}

TEST_F(Values, NothingOfAllThisRaises) {
  const Object item = flow_item(7, 25.0);
  server.fail(L"Dimensions");
  EXPECT_EQ(shown(item), L"");
  server.answer(L"Dimensions", Value::nothing());
  EXPECT_EQ(shown(item), L"");
  txm.set(L"Server", Value::nothing());
  EXPECT_EQ(shown(item), L"");
}

TEST_F(Values, WhereThereIsNoVariableTheTextIsEmpty) {
  const Object bare =
      items.call_object(L"Add", L"7", 7, true, 0, false, false, 0.5f, 4, Value::missing());
  for (int display : {kValue, kUnit, kBoth, kBadDisplay}) {
    EXPECT_EQ(shown(bare, 1, -1, -2, display), L"");
    EXPECT_EQ(shown(Object(), 1, -1, -2, display), L"");
  }
}

// --- Entries ----------------------------------------------------------------------------------

TEST_F(Entered, AValueIsTakenToTheBaseUnit) {
  const Object item = flow_item(7, 0.0);
  txm.put(L"ItemValue", item, 12.5);
  EXPECT_EQ(item.get(L"Value", 1).real(), 25.0);
  txm.put(L"ItemValue", item, 1, 1, 12.5);
  EXPECT_EQ(item.get(L"Value", 1).real(), 12.5);
  txm.put(L"ItemValue", item, 1, 3, 30);
  EXPECT_EQ(item.get(L"Value", 1).real(), 10.0);
}

TEST_F(Entered, NumericTextIsReadInBothNotations) {
  const Object item = flow_item(7, 0.0, 1, 1);
  const std::pair<Value, double> entries[] = {{L"1.5", 1.5},      {L"1,5", 1.5}, {L"", 0},
                                              {Value(), 0},       {true, -1},    {false, 0},
                                              {L"2.5 m3/h", 2.5}, {L"text", 0},  {L"-3", -3}};
  for (const auto& [entered, stored] : entries) {
    item.put(L"Value", 1, 99.0);
    txm.put(L"ItemValue", item, entered);
    EXPECT_EQ(item.get(L"Value", 1).real(), stored);
  }
}

TEST_F(Entered, WithoutDimensionTheValueIsStoredUntouched) {
  const Object item = add_item(7);
  for (const Value& entered : {Value(L"1,5"), Value(true), Value(), Value(L"")}) {
    txm.put(L"ItemValue", item, entered);
    EXPECT_EQ(item.get(L"Value", 1), entered);
  }
}

TEST_F(Entered, NothingOfAllThisRaises) {
  const Object item = flow_item(7, 25.0);
  server.fail(L"Dimensions");
  txm.put(L"ItemValue", item, 1);
  EXPECT_EQ(item.get(L"Value", 1).real(), 25.0);
  txm.put(L"ItemValue", Value::nothing(), 1);
}

// --- The dimension of a variable --------------------------------------------------------------

TEST_F(DimensionOfVariable, WithoutParentIsTheVariablesOwn) {
  const Object item = flow_item(7, 0, 2, 1);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 2);
  EXPECT_EQ(calls(), Lines());
}

TEST_F(DimensionOfVariable, AParentLendsTheOneOfItsFirstVariable) {
  const Object item = flow_item(7, 0);
  flow_item(20, 0, 2, 1);
  variable(item).put(L"ParentVariable", 20);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 2);
  EXPECT_EQ(variable(item).get(L"DimensionID"), 2);
  EXPECT_EQ(variable(item).get(L"UnitID"), 1);
}

TEST_F(DimensionOfVariable, ASelectorChoosesByItsValue) {
  const Object item = flow_item(7, 0);
  flow_item(20, 21, -1);
  flow_item(21, 0, 2, 2);
  variable(item).put(L"ParentVariable", 20);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 2);
  EXPECT_EQ(variable(item).get(L"UnitID"), 2);
}

TEST_F(DimensionOfVariable, OnlyMinusOneMakesASelector) {
  const Object item = flow_item(7, 0);
  flow_item(20, 21, -2, 1);
  flow_item(21, 0, 2, 2);
  variable(item).put(L"ParentVariable", 20);
  EXPECT_EQ(txm.get(L"ItemDimID", item), -2);
}

TEST_F(DimensionOfVariable, ASelectorWithAListChoosesByTheTag) {
  const Object item = flow_item(7, 0);
  const Object selector = list_item(30, 1);
  variable(selector).put(L"DimensionID", -1);
  flow_item(21, 0, 2, 2);
  variable(item).put(L"ParentVariable", 30);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 2);
}

TEST_F(DimensionOfVariable, ATagThatIsNoNumberLeavesTheOwnDimension) {
  const Object item = flow_item(7, 0, 1, 3);
  const Object selector = list_item(30, 2);
  variable(selector).put(L"DimensionID", -1);
  variable(item).put(L"ParentVariable", 30);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 1);
  EXPECT_EQ(variable(item).get(L"UnitID"), 3);
}

TEST_F(DimensionOfVariable, ASiblingNamesTheItem) {
  const Object item = flow_item(7, 0);
  add_variable(item, L"2", 21);
  flow_item(21, 0, 2, 2);
  variable(item).put(L"ParentVariable", -2);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 2);
  EXPECT_EQ(variable(item).get(L"UnitID"), 2);
}

TEST_F(DimensionOfVariable, ASiblingBelowOneLeavesTheOwnDimension) {
  const Object item = flow_item(7, 0, 1, 3);
  const Object sibling = add_variable(item, L"2", 0);
  variable(item).put(L"ParentVariable", -2);
  for (const Value& value : {Value(0), Value(-5), Value(L"text"), Value(70000)}) {
    sibling.put(L"Value", value);
    EXPECT_EQ(txm.get(L"ItemDimID", item), 1);
    EXPECT_EQ(variable(item).get(L"UnitID"), 3);
  }
}

TEST_F(DimensionOfVariable, ASiblingThatDoesNotExistLeavesTheOwnDimension) {
  const Object item = flow_item(7, 21, 1, 3);
  flow_item(21, 0, 2, 2);
  for (int sibling : {-2, -5, -32768}) {
    variable(item).put(L"ParentVariable", sibling);
    EXPECT_EQ(txm.get(L"ItemDimID", item), 1);
    EXPECT_EQ(variable(item).get(L"UnitID"), 3);
  }
}

TEST_F(DimensionOfVariable, AReferenceThatLeadsNowhereLeavesTheOwnDimension) {
  const Object item = flow_item(7, 0, 1, 3);
  variable(item).put(L"ParentVariable", 99);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 1);
  EXPECT_EQ(variable(item).get(L"UnitID"), 3);
  flow_item(20, 99, -1);
  variable(item).put(L"ParentVariable", 20);
  EXPECT_EQ(txm.get(L"ItemDimID", item), 1);
  server.fail(L"Items");
  EXPECT_EQ(txm.get(L"ItemDimID", item), 1);
  EXPECT_EQ(txm.get(L"ItemDimID", Value::nothing()), 0);
}

TEST_F(DimensionOfVariable, TheValueIsShownInTheBorrowedUnit) {
  const Object item = flow_item(7, 1.5);
  flow_item(20, 0, 2, 2);
  variable(item).put(L"ParentVariable", 20);
  EXPECT_EQ(shown(item, 1, -1, 0, kBoth), L"1500 g");
}

TEST_F(DimensionOfVariable, SettingItMarksTheItemsAsChanged) {
  const Object item = flow_item(7, 0);
  add_variable(item, L"2", 0);
  items.put(L"Changed", false);
  txm.put(L"ItemDimID", item, 2, kNone);
  EXPECT_EQ(variable(item, 2).get(L"DimensionID"), kNone);
  EXPECT_EQ(variable(item).get(L"DimensionID"), 1);
  EXPECT_EQ(items.get(L"Changed"), true);
  txm.put(L"ItemDimID", item, 9, kNone);
  EXPECT_EQ(variable(item).get(L"DimensionID"), kNone);
}

// --- Slope and offset -------------------------------------------------------------------------

TEST_F(Factors, AreThoseOfTheUnit) {
  const Object item = flow_item(7, 0, 1, 3);
  EXPECT_EQ(txm.call(L"ItemSlope", item), 2.0);
  EXPECT_EQ(txm.call(L"ItemOffset", item), 10.0);
  EXPECT_EQ(txm.call(L"ItemSlope", item, 1, 2), 0.5);
  EXPECT_EQ(txm.call(L"ItemOffset", item, 1, 2), 0.0);
  EXPECT_EQ(txm.call(L"ItemSlope", item, 99).vt, VT_R4);
}

TEST_F(Factors, ChangeNothingWhenTheUnitIsUnknown) {
  const Object item = flow_item(7, 0, 1, 3);
  EXPECT_EQ(txm.call(L"ItemSlope", item, 1, 9), 1.0);
  EXPECT_EQ(txm.call(L"ItemOffset", item, 1, 9), 0.0);
  EXPECT_EQ(txm.call(L"ItemSlope", flow_item(8, 0, 9)), 1.0);
  EXPECT_EQ(txm.call(L"ItemOffset", Value::nothing()), 0.0);
  server.fail(L"Dimensions");
  EXPECT_EQ(txm.call(L"ItemSlope", item), 1.0);
  EXPECT_EQ(txm.call(L"ItemOffset", item), 0.0);
}

TEST_F(Factors, ChangeNothingBeyondTheRangeOfTheirType) {
  const Object item = flow_item(7, 0, 1, 3);
  const Object unit = dimensions.get_object(L"Item", 1).get_object(L"Units").get_object(L"Item", 3);
  unit.put(L"Slope", 1e300);
  unit.put(L"Offset", -1e300);
  EXPECT_EQ(txm.call(L"ItemSlope", item), 1.0);
  EXPECT_EQ(txm.call(L"ItemOffset", item), 0.0);
}

}  // namespace
}  // namespace pv::test
