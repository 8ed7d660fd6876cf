// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// One item: its own properties, those of its variables, and copying.

#include <gtest/gtest.h>

#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

Object make_item(int variables = 0) {
  const Object item = Object::create(L"pvItems32.CItem");
  for (int i = 1; i <= variables; ++i) {
    add_variable(item.get_object(L"Variables"), std::to_wstring(i));
  }
  return item;
}

Object variable_of(const Object& item, int position) {
  return item.get_object(L"Variables").get_object(L"Item", position);
}

// --- Its own properties

TEST(Item, StartsWithItsDefaults) {
  const Object item = make_item();
  EXPECT_EQ(item.get(L"Key"), L"");
  EXPECT_EQ(item.get(L"ItemID"), 0);
  EXPECT_EQ(item.get(L"ByMeaning"), true);
  EXPECT_EQ(item.get(L"Access"), 1);
  EXPECT_EQ(item.get(L"Historian"), false);
  EXPECT_EQ(item.get(L"Restore"), false);
  EXPECT_EQ(item.get(L"SmartWait"), 0.5f);
  EXPECT_EQ(item.get(L"SmartWait").vt, VT_R4);
  EXPECT_EQ(item.get(L"Length"), 4);
  EXPECT_EQ(item.get_object(L"Variables").get(L"Count"), 0);
}

TEST(Item, KeepsItsProperties) {
  const Object item = make_item();
  item.put(L"Key", L"\u0151|\0k"s);
  item.put(L"ItemID", -32768);
  item.put(L"ByMeaning", false);
  item.put(L"Access", 192);
  item.put(L"Historian", true);
  item.put(L"Restore", true);
  item.put(L"SmartWait", 2.25f);
  item.put(L"Length", 32767);
  EXPECT_EQ(item.get(L"Key"), L"\u0151|\0k"s);
  EXPECT_EQ(item.get(L"ItemID"), -32768);
  EXPECT_EQ(item.get(L"ByMeaning"), false);
  EXPECT_EQ(item.get(L"Access"), 192);
  EXPECT_EQ(item.get(L"Historian"), true);
  EXPECT_EQ(item.get(L"Restore"), true);
  EXPECT_EQ(item.get(L"SmartWait"), 2.25f);
  EXPECT_EQ(item.get(L"Length"), 32767);
}

TEST(Item, RefusesNumbersBeyondSixteenBits) {
  const Object item = make_item();
  for (const wchar_t* property : {L"ItemID", L"Access", L"Length"}) {
    const Value before = item.get(property);
    EXPECT_EQ(item.try_put(property, 32768).result, DISP_E_OVERFLOW) << printable(property);
    EXPECT_EQ(item.try_put(property, L"text").result, DISP_E_TYPEMISMATCH) << printable(property);
    EXPECT_EQ(item.get(property), before) << printable(property);
  }
}

TEST(Item, LengthIsOneValueWhateverTheIndex) {
  const Object item = make_item(1);
  item.put(L"Length", 5, 12);
  for (const int index : {5, 1, 0, -1, 32767}) EXPECT_EQ(item.get(L"Length", index), 12) << index;
  EXPECT_EQ(item.get(L"Length"), 12);
}

TEST(Item, LengthNeedsNoVariable) {
  const Object item = make_item();
  item.put(L"Length", 3, 8);
  EXPECT_EQ(item.get(L"Length", 2), 8);
}

TEST(Item, CreatesItsVariablesOnceOnFirstUse) {
  const Object item = make_item();
  const Object variables = item.get_object(L"Variables");
  EXPECT_EQ(item.get_object(L"Variables"), variables);
}

TEST(Item, TakesVariablesByReferenceAndSharesThem) {
  const Object item = make_item();
  const Object variables = Object::create(L"pvItems32.CVariables");
  item.set(L"Variables", variables);
  add_variable(variables, L"later");
  EXPECT_EQ(item.get_object(L"Variables"), variables);
  EXPECT_EQ(item.get(L"Caption"), L"Caption later");
}

TEST(Item, VariablesSetToNothingAreCreatedAnew) {
  const Object item = make_item(2);
  const Object old = item.get_object(L"Variables");
  item.set(L"Variables", Value::nothing());
  EXPECT_EQ(item.get_object(L"Variables").get(L"Count"), 0);
  EXPECT_EQ(old.get(L"Count"), 2);
}

TEST(Item, RefusesOtherObjectsAsVariables) {
  const Object item = make_item(1);
  EXPECT_EQ(item.try_set(L"Variables", make_item()).result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(item.try_set(L"Variables", 5).result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(item.get_object(L"Variables").get(L"Count"), 1);
}

// --- Properties of its variables

struct Forwarded {
  const wchar_t* property;
  const wchar_t* of_variable;
  Value one, two;
};

std::vector<Forwarded> forwarded() {
  return {
      {L"Dimension", L"DimensionID", 11, 20},   {L"Unit", L"UnitID", 3, 4},
      {L"Caption", L"Caption", L"one", L"two"}, {L"Description", L"Description", L"1st", L"2nd"},
      {L"Symbol", L"Symbol", L"PUMP", L"TANK"}, {L"Decimals", L"Decimals", 0, 8},
      {L"Value", L"Value", 1.5, L"text"},       {L"Dirty", L"Dirty", true, false},
      {L"DataType", L"DataType", 4, 19}};
}

TEST(Item, ReadsThePropertiesOfItsVariables) {
  const Object item = make_item(2);
  for (const auto& [property, of_variable, one, two] : forwarded()) {
    variable_of(item, 1).put(of_variable, one);
    variable_of(item, 2).put(of_variable, two);
    EXPECT_EQ(item.get(property), one) << printable(property);
    EXPECT_EQ(item.get(property, 1), one) << printable(property);
    EXPECT_EQ(item.get(property, 2), two) << printable(property);
  }
}

TEST(Item, SetsThePropertiesOfItsVariables) {
  const Object item = make_item(2);
  for (const auto& [property, of_variable, one, two] : forwarded()) {
    item.put(property, 2, two);
    item.put(property, one);
    EXPECT_EQ(variable_of(item, 1).get(of_variable), one) << printable(property);
    EXPECT_EQ(variable_of(item, 2).get(of_variable), two) << printable(property);
  }
}

TEST(Item, TakesAnIndexOutOfRangeForTheFirstVariable) {
  const Object item = make_item(2);
  for (const auto& [property, of_variable, one, two] : forwarded()) {
    variable_of(item, 2).put(of_variable, two);
    for (const int index : {0, 3, -1, 32767, -32768}) {
      item.put(property, index, one);
      EXPECT_EQ(item.get(property, index), one) << printable(property) << index;
    }
    EXPECT_EQ(variable_of(item, 1).get(of_variable), one) << printable(property);
    EXPECT_EQ(variable_of(item, 2).get(of_variable), two) << printable(property);
  }
}

TEST(Item, WithoutVariablesHasNoPropertiesOfThem) {
  const Object item = make_item();
  for (const auto& [property, of_variable, one, two] : forwarded()) {
    EXPECT_EQ(item.try_get(property).number(), 9) << printable(property);
    EXPECT_EQ(item.try_get(property, 2).number(), 9) << printable(property);
    EXPECT_EQ(item.try_put(property, one).number(), 9) << printable(property);
  }
}

TEST(Item, ChecksAVariableIndex) {
  const Object item = make_item(3);
  for (const int index : {1, 2, 3}) EXPECT_EQ(item.call(L"CheckVarIndex", index), index);
  for (const int index : {0, 4, -1, -32768, 32767})
    EXPECT_EQ(item.call(L"CheckVarIndex", index), 1);
  EXPECT_EQ(make_item().call(L"CheckVarIndex", 1), 1);
  EXPECT_EQ(make_item().call(L"CheckVarIndex", 2), 1);
}

TEST(Item, TakesItsIndexFromAScriptVariable) {
  const Object item = make_item(2);
  Value index(2);
  EXPECT_EQ(item.get(L"Caption", by_ref(index)), L"Caption 2");
  Value text(L"new");
  item.put(L"Caption", by_ref(index), by_ref(text));
  EXPECT_EQ(item.get(L"Caption", 2), L"new");
}

TEST(Item, RefusesAnIndexThatIsNoSixteenBitNumber) {
  const Object item = make_item(1);
  EXPECT_EQ(item.try_get(L"Caption", 40'000).result, DISP_E_OVERFLOW);
  EXPECT_EQ(item.try_get(L"Caption", L"text").result, DISP_E_TYPEMISMATCH);
}

// --- Copying

TEST(ItemCopy, GivesTheDestinationAllFields) {
  const Object source = make_item(), target = make_item(1);
  source.put(L"Key", L"k");
  source.put(L"ItemID", 59);
  source.put(L"ByMeaning", false);
  source.put(L"Access", 26);
  source.put(L"Historian", true);
  source.put(L"Restore", true);
  source.put(L"SmartWait", 1.25f);
  source.put(L"Length", 8);
  EXPECT_EQ(source.call_object(L"Copy", target), target);
  EXPECT_EQ(target.get(L"Key"), L"k");
  EXPECT_EQ(target.get(L"ItemID"), 59);
  EXPECT_EQ(target.get(L"ByMeaning"), false);
  EXPECT_EQ(target.get(L"Access"), 26);
  EXPECT_EQ(target.get(L"Historian"), true);
  EXPECT_EQ(target.get(L"Restore"), true);
  EXPECT_EQ(target.get(L"SmartWait"), 1.25f);
  EXPECT_EQ(target.get(L"Length"), 8);
  EXPECT_EQ(target.get_object(L"Variables").get(L"Count"), 0);
}

TEST(ItemCopy, MakesNewVariables) {
  const Object source = make_item(), target = make_item(3);
  const Object variables = source.get_object(L"Variables");
  const Object original = variables.call_object(L"Add", L"v", L"Caption", L"Description", L"PUMP",
                                                -1, 11, 4, 3, 2.5, L"UNITS", 4);
  variables.call(L"Add", L"", L"no key", L"", L"", 0, 1, 1, 2, L"0", 0, 19);
  original.put(L"Tolerance", 0.25);
  original.put(L"EnableTolerance", false);
  original.put(L"Dirty", true);
  source.call(L"Copy", target);

  ASSERT_EQ(target.get_object(L"Variables").get(L"Count"), 2);
  const Object copy = target.get_object(L"Variables").get_object(L"Item", L"v");
  EXPECT_FALSE(copy == original);
  for (const wchar_t* property :
       {L"Key", L"Caption", L"Description", L"Symbol", L"ParentVariable", L"DimensionID", L"UnitID",
        L"Decimals", L"Value", L"ListID", L"DataType"}) {
    EXPECT_EQ(copy.get(property), original.get(property)) << printable(property);
  }
  EXPECT_EQ(copy.get(L"Tolerance"), 0.0);
  EXPECT_EQ(copy.get(L"EnableTolerance"), true);
  EXPECT_EQ(copy.get(L"Dirty"), false);
  EXPECT_EQ(target.get(L"Caption", 2), L"no key");
  EXPECT_EQ(target.get(L"DataType", 2), 19);
}

TEST(ItemCopy, IsIndependentOfItsSource) {
  const Object source = make_item(1), target = make_item();
  source.call(L"Copy", target);
  target.put(L"Caption", L"changed");
  EXPECT_EQ(source.get(L"Caption"), L"Caption 1");
}

TEST(ItemCopy, ToItselfChangesNothing) {
  const Object item = make_item(2);
  const Object first = variable_of(item, 1);
  item.put(L"ItemID", 7);
  EXPECT_EQ(item.call_object(L"Copy", item), item);
  EXPECT_EQ(item.get_object(L"Variables").get(L"Count"), 2);
  EXPECT_EQ(variable_of(item, 1), first);
  EXPECT_EQ(item.get(L"ItemID"), 7);
}

TEST(ItemCopy, BetweenItemsThatShareTheirVariablesLosesNone) {
  const Object source = make_item(2), target = make_item();
  target.set(L"Variables", source.get_object(L"Variables"));
  source.call(L"Copy", target);
  EXPECT_EQ(texts_of(source.get_object(L"Variables")), (Texts{L"1", L"2"}));
}

TEST(ItemCopy, ThatFailsLeavesTheDestinationAsItWas) {
  const Object source = make_item(2), target = make_item(1);
  variable_of(source, 2).put(L"Key", L"1");  // the copies would have the same key
  target.put(L"Key", L"kept");
  EXPECT_EQ(source.try_call(L"Copy", target).number(), 457);
  EXPECT_EQ(target.get(L"Key"), L"kept");
  EXPECT_EQ(texts_of(target.get_object(L"Variables")), Texts{L"1"});
}

TEST(ItemCopy, NeedsADestination) {
  const Object item = make_item(1);
  const Outcome outcome = item.try_call(L"Copy", Value::nothing());
  EXPECT_EQ(outcome.number(), 91);
  EXPECT_EQ(outcome.source, L"pvItems32.CItem");
  EXPECT_EQ(item.try_call(L"Copy", Object::create(L"pvItems32.CVersion")).result,
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(item.get_object(L"Variables").get(L"Count"), 1);
}

TEST(ItemCopy, WorksThroughAScriptVariable) {
  const Object source = make_item(1), target = make_item();
  Value held(target);
  EXPECT_EQ(source.call_object(L"Copy", by_ref(held)), target);
  EXPECT_EQ(target.get(L"Caption"), L"Caption 1");
}

// --- Classes of data types

TEST(ItemDataType, HasAClass) {
  constexpr int kUnknown = -1, kNumeric = 1, kString = 2, kRecord = 3, kSpecial = 4;
  const struct {
    int type, expected;
  } classes[] = {{1, kNumeric},   {2, kNumeric},  {3, kNumeric}, {4, kNumeric},  {5, kString},
                 {6, kRecord},    {7, kString},   {8, kString},  {9, kRecord},   {10, kString},
                 {11, kString},   {12, kString},  {13, kRecord}, {14, kRecord},  {15, kString},
                 {16, kString},   {17, kRecord},  {18, kString}, {19, kUnknown}, {20, kString},
                 {21, kString},   {-1, kSpecial}, {0, kUnknown}, {22, kUnknown}, {-2, kUnknown},
                 {4096, kUnknown}};
  const Object utility = Object::create(L"pvItems32.CUtility");
  const Object item = make_item(2);
  for (const auto& [type, expected] : classes) {
    item.put(L"DataType", 2, type);
    EXPECT_EQ(utility.call(L"GetDataType", item, 2), expected) << type;
  }
  EXPECT_EQ(utility.call(L"GetDataType", item), kNumeric);
  EXPECT_EQ(utility.call(L"GetDataType", item, 9), kNumeric);
}

}  // namespace
}  // namespace pv::test
