// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Maintenance of the item database: sorting.

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "tests/automation/items/ordered_items.h"

namespace pv::test {
namespace {

TEST(ItemsSort, OrdersByNumberAndNotByText) {
  const Object items = make_items({L"10", L"9", L"100"});
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"9", L"10", L"100"}));
}

TEST(ItemsSort, AscendsUnlessToldOtherwise) {
  const Object items = make_items({L"2", L"3", L"1"});
  EXPECT_EQ(items.call(L"Sort", true), true);
  EXPECT_EQ(texts_of(items), (Texts{L"1", L"2", L"3"}));
  EXPECT_EQ(items.call(L"Sort", false), true);
  EXPECT_EQ(texts_of(items), (Texts{L"3", L"2", L"1"}));
  EXPECT_EQ(items.call(L"Sort", Value::missing()), true);
  EXPECT_EQ(texts_of(items), (Texts{L"1", L"2", L"3"}));
}

TEST(ItemsSort, TakesKeysFromTheWhole16BitRange) {
  const Object items = make_items({L"0", L"32767", L"-32768", L"-1"});
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"-32768", L"-1", L"0", L"32767"}));
}

TEST(ItemsSort, ReadsTheKeysTolerantlyInEveryLocale) {
  const Object items = make_items({L"12 kg", L"3.5", L"2,5", L"flow", L"40000", L"-2"});
  EXPECT_EQ(items.call(L"Sort"), true);
  // 12, 4 and 2 (halves go to the even number), 0, 0 (no 16-bit integer), -2
  EXPECT_EQ(texts_of(items), (Texts{L"-2", L"flow", L"40000", L"2,5", L"3.5", L"12 kg"}));
}

TEST(ItemsSort, KeepsTheOrderOfEqualKeysInBothDirections) {
  const Object items = make_items({L"b", L"1", L"a", L"01", L"c", L"1.0"});
  EXPECT_EQ(items.call(L"Sort", true), true);
  EXPECT_EQ(texts_of(items), (Texts{L"b", L"a", L"c", L"1", L"01", L"1.0"}));
  EXPECT_EQ(items.call(L"Sort", false), true);
  EXPECT_EQ(texts_of(items), (Texts{L"1", L"01", L"1.0", L"b", L"a", L"c"}));
}

TEST(ItemsSort, MovesTheItemsThemselvesWithTheirKeys) {
  const Object items = make_items({L"2", L"1"});
  const Object two = items.get_object(L"Item", L"2");
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(items.get_object(L"Item", 2), two);
  EXPECT_EQ(items.get_object(L"Item", L"2"), two);
  EXPECT_EQ(ids_of(items), (Ids{2, 1}));
}

TEST(ItemsSort, MovesAnItemUnderTheKeyThatItHasNow) {
  const Object items = make_items({L"1", L"2", L"3"});
  const Object last = items.get_object(L"Item", L"3");
  last.put(L"Key", L"0");
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"0", L"1", L"2"}));
  EXPECT_EQ(items.get_object(L"Item", L"0"), last);
  EXPECT_TRUE(items.get(L"Item", L"3").is_nothing());
  EXPECT_EQ(items.get_object(L"Item", L"2").get(L"ItemID"), 2);
}

TEST(ItemsSort, KeysAnItemThatOthersAreMovedBeforeToo) {
  const Object items = make_items({L"1", L"2", L"3"});
  const Object first = items.get_object(L"Item", L"1");
  first.put(L"Key", L"9");
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"2", L"3", L"9"}));
  EXPECT_EQ(items.get_object(L"Item", L"9"), first);
  EXPECT_TRUE(items.get(L"Item", L"1").is_nothing());
}

TEST(ItemsSort, GivesAKeyToAnItemThatHadNone) {
  const Object items = make_items({L"2", L""});
  const Object unkeyed = items.get_object(L"Item", 2);
  unkeyed.put(L"Key", L"1");
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(items.get_object(L"Item", L"1"), unkeyed);
}

TEST(ItemsSort, LeavesAnItemThatStaysUnderItsFormerKey) {
  const Object items = make_items({L"1", L"2", L"3"});
  const Object last = items.get_object(L"Item", L"3");
  last.put(L"Key", L"30");
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(items.get_object(L"Item", L"3"), last);
}

TEST(ItemsSort, ToAKeyInUseGivesFalseAndLosesNone) {
  for (const wchar_t* key : {L"1", L"a"}) {
    const Object items = make_items({L"1", L"A", L"2", L"3"});
    EXPECT_EQ(items.call(L"Sort"), true);  // A, which counts as 0, comes first
    items.get_object(L"Item", L"3").put(L"Key", key);
    EXPECT_EQ(items.call(L"Sort"), false) << printable(key);
    EXPECT_EQ(ids_of(items), (Ids{2, 1, 3, 4}));
    EXPECT_EQ(items.get_object(L"Item", L"1").get(L"ItemID"), 1);
    EXPECT_EQ(items.get_object(L"Item", L"A").get(L"ItemID"), 2);
    EXPECT_EQ(items.get_object(L"Item", L"3").get(L"ItemID"), 4);
  }
}

TEST(ItemsSort, OfManyItemsWithChangedKeysFindsThemAll) {
  Texts keys;
  for (int i = 1; i <= 200; ++i) keys.push_back(std::to_wstring(i));
  const Object items = make_items(keys);
  for (const Object& item : members_of(items)) {
    item.put(L"Key", std::to_wstring(1000 - item.get(L"ItemID").number()));
  }
  EXPECT_EQ(items.call(L"Sort"), true);
  for (int id = 1; id <= 200; ++id) {
    EXPECT_EQ(items.get_object(L"Item", std::to_wstring(1000 - id)).get(L"ItemID"), id);
    EXPECT_TRUE(items.get(L"Item", std::to_wstring(id)).is_nothing());
  }
}

TEST(ItemsSort, OfNothingAndOfOneItemWorks) {
  EXPECT_EQ(make_items({}).call(L"Sort"), true);
  const Object items = make_items({L"5"});
  EXPECT_EQ(items.call(L"Sort", false), true);
  EXPECT_EQ(texts_of(items), (Texts{L"5"}));
}

TEST(ItemsSort, WithUnkeyedItemsGivesFalseAndLosesNone) {
  for (const Texts& keys : {Texts{L"3", L"", L"1"}, Texts{L"", L"2", L"1"}, Texts{L"2", L"1", L""},
                            Texts{L"", L""}, Texts{L""}}) {
    const Object items = make_items(keys);
    EXPECT_EQ(items.call(L"Sort"), false);
    EXPECT_EQ(items.call(L"Sort", false), false);
    Ids ids = ids_of(items), all(keys.size());
    std::iota(all.begin(), all.end(), 1);
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(ids, all);
    for (const std::wstring& key : keys) {
      if (!key.empty()) {
        EXPECT_FALSE(items.get(L"Item", key).is_nothing());
      }
    }
  }
}

TEST(ItemsSort, SortsAllItemsWhateverTheSelectedVersion) {
  const Object items = make_items({L"10", L"9", L"100"});
  select_confusing_version(items);
  EXPECT_EQ(items.call(L"Sort"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"9", L"10", L"100"}));
}

TEST(ItemsSort, TakesTenThousandItemsInAnyOrder) {
  std::vector<int> numbers(10'000);
  std::iota(numbers.begin(), numbers.end(), -5000);
  const auto texts = [&] {
    Texts texts;
    for (int number : numbers) texts.push_back(std::to_wstring(number));
    return texts;
  };
  const Texts ascending = texts();
  std::reverse(numbers.begin(), numbers.end());
  const Texts descending = texts();
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(7));
  const Object items = Object::create(L"pvItems32.CItems");
  for (const std::wstring& key : texts()) add_item(items, key, 1);
  const DWORD started = GetTickCount();
  EXPECT_EQ(items.call(L"Sort", true), true);
  EXPECT_TRUE(texts_of(items) == ascending);
  EXPECT_EQ(items.call(L"Sort", false), true);
  EXPECT_TRUE(texts_of(items) == descending);
  EXPECT_EQ(items.get_object(L"Item", L"-5000").get(L"Key"), L"-5000");
  EXPECT_LT(GetTickCount() - started, 10'000u);
}

}  // namespace
}  // namespace pv::test
