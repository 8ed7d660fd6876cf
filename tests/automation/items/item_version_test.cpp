// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// How the selected software version changes what the item database shows.

#include <gtest/gtest.h>

#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

class ItemVersion : public testing::Test {
 protected:
  ItemVersion() {
    add_item(items_, L"1", 1);
    add_item(items_, L"2", 2);
    add_item(items_, L"3", 3);
    add_item(items_, L"old3", 103);
    add_item(items_, L"named", 5);
  }

  Object add_version(const wchar_t* name, int item_count) const {
    return items_.get_object(L"Versions").call_object(L"Add", name, item_count);
  }
  static void map(const Object& version, const wchar_t* key, const wchar_t* index_key) {
    version.get_object(L"VerItems").call(L"Add", key, index_key);
  }
  /// The key of the item that an index finds; "-" for none.
  std::wstring found(const Value& index) const {
    const Value item = items_.get(L"Item", index);
    return item.is_nothing() ? L"-" : Object(item).get(L"Key").text();
  }

  const Object items_ = Object::create(L"pvItems32.CItems");
};

// --- Count

TEST_F(ItemVersion, CountIsZeroWithoutVersionsHoweverManyItemsThereAre) {
  EXPECT_EQ(items_.get(L"Count"), 0);
  EXPECT_EQ(items_.get(L"AllItemCount"), 5);
  items_.put(L"Version", L"any");
  EXPECT_EQ(items_.get(L"Count"), 0);
}

TEST_F(ItemVersion, CountIsThatOfTheSelectedVersion) {
  add_version(L"V1", 54);
  add_version(L"V2", 61);
  items_.put(L"Version", L"V2");
  EXPECT_EQ(items_.get(L"Count"), 61);
  items_.put(L"Version", L"v1");
  EXPECT_EQ(items_.get(L"Count"), 54);
}

TEST_F(ItemVersion, CountIsThatOfTheFirstVersionWhenNoneIsSelected) {
  add_version(L"V1", 54);
  add_version(L"V2", 61);
  EXPECT_EQ(items_.get(L"Count"), 54);
  EXPECT_EQ(items_.get(L"AllItemCount"), 5);
}

TEST_F(ItemVersion, CountFallsBackToTheFirstVersionForAnUnknownOne) {
  add_version(L"V1", 54);
  add_version(L"V2", 61);
  items_.put(L"Version", L"V3");
  EXPECT_EQ(items_.get(L"Count"), 54);
}

TEST_F(ItemVersion, CountFollowsTheItemCountOfTheVersion) {
  const Object version = add_version(L"V1", 54);
  version.put(L"ItemCount", -3);
  EXPECT_EQ(items_.get(L"Count"), -3);
  items_.get_object(L"Versions").call(L"Clear");
  EXPECT_EQ(items_.get(L"Count"), 0);
}

TEST_F(ItemVersion, NamedAsNumberIsANameAndNoPosition) {
  add_version(L"V1", 54);
  add_version(L"1", 61);
  items_.put(L"Version", L"1");
  EXPECT_EQ(items_.get(L"Count"), 61);
  items_.put(L"Version", L"2");
  EXPECT_EQ(items_.get(L"Count"), 54);
}

// --- Item

TEST_F(ItemVersion, EmptyMeansTheCollectionItself) {
  map(add_version(L"V", 5), L"3", L"old3");
  EXPECT_EQ(found(L"3"), L"3");
  EXPECT_EQ(found(3), L"3");
  EXPECT_EQ(found(4), L"old3");
}

TEST_F(ItemVersion, MapsAKeyToTheItemThatStandsForIt) {
  const Object version = add_version(L"V", 5);
  map(version, L"1", L"1");
  map(version, L"3", L"old3");
  items_.put(L"Version", L"v");
  EXPECT_EQ(found(L"1"), L"1");
  EXPECT_EQ(found(L"3"), L"old3");
}

TEST_F(ItemVersion, MapsAPositionThroughTheIDOfTheItemThere) {
  const Object version = add_version(L"V", 5);
  map(version, L"3", L"old3");
  map(version, L"5", L"1");
  items_.put(L"Version", L"V");
  EXPECT_EQ(found(3), L"old3");
  EXPECT_EQ(found(3.0), L"old3");
  EXPECT_EQ(found(5), L"1");  // the fifth item has the ID 5, whatever its key
}

TEST_F(ItemVersion, MapsNegativeIDsByTheirText) {
  add_item(items_, L"negative", -7);
  map(add_version(L"V", 5), L"-7", L"2");
  items_.put(L"Version", L"V");
  EXPECT_EQ(found(6), L"2");
}

TEST_F(ItemVersion, WithoutIndexKeyTakesTheLookupKeyItself) {
  const Object version = add_version(L"V", 5);
  map(version, L"2", L"");
  map(version, L"5", L"");
  items_.put(L"Version", L"V");
  EXPECT_EQ(found(L"2"), L"2");
  EXPECT_EQ(found(2), L"2");
  EXPECT_EQ(found(5), L"-");  // there is no item under the key "5"
}

TEST_F(ItemVersion, HidesItemsWithoutEntry) {
  map(add_version(L"V", 5), L"1", L"1");
  items_.put(L"Version", L"V");
  EXPECT_EQ(found(L"2"), L"-");
  EXPECT_EQ(found(2), L"-");
  EXPECT_EQ(found(L"named"), L"-");
}

TEST_F(ItemVersion, FindsNothingWhereTheMappedItemIsMissing) {
  map(add_version(L"V", 5), L"1", L"gone");
  items_.put(L"Version", L"V");
  EXPECT_EQ(found(L"1"), L"-");
}

TEST_F(ItemVersion, FindsNothingAtPositionsThatDoNotExist) {
  map(add_version(L"V", 5), L"1", L"1");
  items_.put(L"Version", L"V");
  for (const Value& index : {Value(0), Value(6), Value(-1), Value(), Value::null()}) {
    EXPECT_EQ(found(index), L"-") << testing::PrintToString(index);
  }
}

TEST_F(ItemVersion, UnknownOneHasNoItems) {
  map(add_version(L"V", 5), L"1", L"1");
  items_.put(L"Version", L"W");
  EXPECT_EQ(found(L"1"), L"-");
  EXPECT_EQ(found(1), L"-");
}

TEST_F(ItemVersion, TakesTheKeyFromAScriptVariable) {
  map(add_version(L"V", 5), L"3", L"old3");
  items_.put(L"Version", L"V");
  EXPECT_EQ(Object(item_by_variable(items_, L"3").value).get(L"Key"), L"old3");
  EXPECT_EQ(Object(item_by_variable(items_, 3).value).get(L"Key"), L"old3");
}

TEST_F(ItemVersion, OfTheExampleShowsWhatItsSoftwareHas) {
  const Object items = Object::create(L"pvItems32.CItems");
  ASSERT_EQ(items.call(L"LoadSettingsNew", example_file(L"fluxor.itm")), true);
  ASSERT_EQ(items.get_object(L"Versions").call(L"LoadSettingsNew", example_file(L"fluxor.ver")),
            true);
  EXPECT_EQ(items.get(L"AllItemCount"), 66);
  const struct {
    const wchar_t* version;
    int count, damping, time_out;
  } expected[] = {{L"1.10", 54, 160, 161}, {L"2.00", 61, 32, 161}, {L"2.30", 64, 32, 104}};
  for (const auto& [version, count, damping, time_out] : expected) {
    items.put(L"Version", version);
    EXPECT_EQ(items.get(L"Count"), count) << printable(version);
    EXPECT_EQ(items.get_object(L"Item", L"32").get(L"ItemID"), damping) << printable(version);
    EXPECT_EQ(items.get_object(L"Item", L"104").get(L"ItemID"), time_out) << printable(version);
    int found = 0;
    for (int position = 1; position <= 66; ++position) {
      found += items.get(L"Item", position).is_nothing() ? 0 : 1;
    }
    EXPECT_EQ(found, count) << printable(version);
  }
}

}  // namespace
}  // namespace pv::test
