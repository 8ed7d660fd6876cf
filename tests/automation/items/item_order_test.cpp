// Maintenance of the item database: sorting, and changing an item's number or key.

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

/// Items under keys, with the item numbers 1, 2, ... in that order.
Object make_items(const Texts& keys) {
  const Object items = Object::create(L"pvItems32.CItems");
  int id = 0;
  for (const std::wstring& key : keys) add_item(items, key, ++id, 1);
  return items;
}

std::vector<long> ids_of(const Object& items) {
  std::vector<long> ids;
  for (const Object& item : members_of(items)) ids.push_back(item.get(L"ItemID").number());
  return ids;
}
using Ids = std::vector<long>;

// A version whose table maps everything elsewhere: maintenance does not look at it.
void select_confusing_version(const Object& items) {
  const Object version = items.get_object(L"Versions").call_object(L"Add", L"V", 1);
  version.get_object(L"VerItems").call(L"Add", L"10", L"9");
  items.put(L"Version", L"V");
}

// --- Sort

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

// --- ChangeID

TEST(ItemsChangeId, GivesTheItemAtAPositionAnotherNumberAndKey) {
  const Object items = make_items({L"1", L"2", L"3"});
  EXPECT_EQ(items.call(L"ChangeID", 2, 59), true);
  EXPECT_EQ(texts_of(items), (Texts{L"1", L"59", L"3"}));
  const Object changed = items.get_object(L"Item", L"59");
  EXPECT_EQ(changed, items.get_object(L"Item", 2));
  EXPECT_EQ(changed.get(L"ItemID"), 59);
  EXPECT_EQ(changed.get(L"Key"), L"59");
  EXPECT_TRUE(items.get(L"Item", L"2").is_nothing());
}

TEST(ItemsChangeId, ReplacesTheItemByACopy) {
  const Object items = make_items({L"1", L"2"});
  const Object former = items.get_object(L"Item", L"1");
  former.put(L"Access", 26);
  former.put(L"Historian", true);
  former.get_object(L"Variables").get_object(L"Item", 1).put(L"Value", 1.5);
  EXPECT_EQ(items.call(L"ChangeID", 1, -7), true);
  const Object copy = items.get_object(L"Item", L"-7");
  EXPECT_FALSE(copy == former);
  EXPECT_EQ(copy.get(L"Access"), 26);
  EXPECT_EQ(copy.get(L"Historian"), true);
  EXPECT_EQ(copy.get(L"Caption"), L"Caption 1");
  EXPECT_EQ(copy.get(L"Value"), 1.5);
  former.put(L"Caption", 1, L"of the former");
  EXPECT_EQ(copy.get(L"Caption"), L"Caption 1");
  EXPECT_EQ(former.get(L"Key"), L"1");
  EXPECT_EQ(former.get(L"ItemID"), 1);
}

TEST(ItemsChangeId, KeepsThePositionFromTheFirstToTheLast) {
  const Object items = make_items({L"1", L"2", L"3"});
  EXPECT_EQ(items.call(L"ChangeID", 1, 11), true);
  EXPECT_EQ(items.call(L"ChangeID", 3, 33), true);
  EXPECT_EQ(texts_of(items), (Texts{L"11", L"2", L"33"}));
  const Object single = make_items({L"1"});
  EXPECT_EQ(single.call(L"ChangeID", 1, 32767), true);
  EXPECT_EQ(texts_of(single), (Texts{L"32767"}));
}

TEST(ItemsChangeId, TheKeyIsTheNumbersTextWhateverItWasBefore) {
  const Object items = make_items({L"flow", L""});
  EXPECT_EQ(items.call(L"ChangeID", 1, 1), true);
  EXPECT_EQ(items.call(L"ChangeID", 2, 2), true);
  EXPECT_EQ(texts_of(items), (Texts{L"1", L"2"}));
  EXPECT_EQ(items.call(L"ChangeID", 2, 2), true);
  EXPECT_EQ(ids_of(items), (Ids{1, 2}));
}

TEST(ItemsChangeId, ABadPositionGivesFalseAndChangesNothing) {
  const Object items = make_items({L"1", L"2"});
  for (const int position : {0, -1, 3, 32767, -32768}) {
    EXPECT_EQ(items.call(L"ChangeID", position, 59), false) << position;
  }
  EXPECT_EQ(texts_of(items), (Texts{L"1", L"2"}));
  EXPECT_EQ(make_items({}).call(L"ChangeID", 1, 5), false);
}

TEST(ItemsChangeId, AKeyInUseGivesFalseAndChangesNothing) {
  const Object items = make_items({L"1", L"flow", L"2"});
  const Object first = items.get_object(L"Item", 1);
  EXPECT_EQ(items.call(L"ChangeID", 1, 2), false);
  EXPECT_EQ(texts_of(items), (Texts{L"1", L"flow", L"2"}));
  EXPECT_EQ(ids_of(items), (Ids{1, 2, 3}));
  EXPECT_EQ(items.get_object(L"Item", L"1"), first);
}

TEST(ItemsChangeId, RefusesNumbersBeyond16Bits) {
  const Object items = make_items({L"1"});
  EXPECT_EQ(items.try_call(L"ChangeID", 1, 40'000).result, DISP_E_OVERFLOW);
  EXPECT_EQ(items.try_call(L"ChangeID", 40'000, 1).result, DISP_E_OVERFLOW);
  EXPECT_EQ(texts_of(items), (Texts{L"1"}));
}

TEST(ItemsChangeId, CountsPositionsInTheCollectionWhateverTheVersion) {
  const Object items = make_items({L"10", L"9"});
  select_confusing_version(items);
  EXPECT_EQ(items.call(L"ChangeID", 1, 11), true);
  EXPECT_EQ(texts_of(items), (Texts{L"11", L"9"}));
}

// --- ChangeKey

TEST(ItemsChangeKey, RenamedByKeyTheItemComesLast) {
  const Object items = make_items({L"A7", L"b", L"c"});
  EXPECT_EQ(items.call(L"ChangeKey", L"a7", L"new"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"b", L"c", L"new"}));
  EXPECT_TRUE(items.get(L"Item", L"A7").is_nothing());
  EXPECT_EQ(items.get_object(L"Item", L"NEW").get(L"ItemID"), 1);
}

TEST(ItemsChangeKey, RenamedByPositionTheItemStaysThere) {
  for (const Value& position : {Value(2), Value(static_cast<short>(2)), Value(2.0)}) {
    const Object items = make_items({L"a", L"b", L"c"});
    EXPECT_EQ(items.call(L"ChangeKey", position, L"new"), true);
    EXPECT_EQ(texts_of(items), (Texts{L"a", L"new", L"c"}));
  }
}

TEST(ItemsChangeKey, TheLastAndTheOnlyPositionWork) {
  const Object items = make_items({L"a", L"b"});
  EXPECT_EQ(items.call(L"ChangeKey", 2, L"new"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"a", L"new"}));
  const Object single = make_items({L"a"});
  EXPECT_EQ(single.call(L"ChangeKey", 1, L"new"), true);
  EXPECT_EQ(texts_of(single), (Texts{L"new"}));
}

// Found by its key, but put back as if the key were a position.
TEST(ItemsChangeKey, ANumericKeyTextNamesTheNewPosition) {
  const Object items = make_items({L"7", L"b", L"c", L"d", L"e", L"f", L"g", L"h"});
  EXPECT_EQ(items.call(L"ChangeKey", L"7", L"new"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"b", L"c", L"d", L"e", L"f", L"g", L"new", L"h"}));
  const Object third = make_items({L"a", L"b", L"1", L"d"});
  EXPECT_EQ(third.call(L"ChangeKey", L"1", L"new"), true);
  EXPECT_EQ(texts_of(third), (Texts{L"new", L"a", L"b", L"d"}));
}

TEST(ItemsChangeKey, APositionPastTheRemainingItemsIsTheEnd) {
  for (const wchar_t* key : {L"4", L"120", L"40000", L"99999999999999999999"}) {
    const Object items = make_items({L"a", key, L"c", L"d"});
    EXPECT_EQ(items.call(L"ChangeKey", key, L"new"), true) << printable(key);
    EXPECT_EQ(texts_of(items), (Texts{L"a", L"c", L"d", L"new"})) << printable(key);
  }
}

TEST(ItemsChangeKey, ANumericKeyTextThatIsNoPositionGivesFalseAndChangesNothing) {
  for (const wchar_t* key : {L"0", L"-5"}) {
    const Object items = make_items({L"a", key, L"c"});
    EXPECT_EQ(items.call(L"ChangeKey", key, L"new"), false) << printable(key);
    EXPECT_EQ(texts_of(items), (Texts{L"a", key, L"c"}));
  }
}

TEST(ItemsChangeKey, ReplacesTheItemByACopyWithTheSameNumber) {
  const Object items = make_items({L"a"});
  const Object former = items.get_object(L"Item", L"a");
  former.put(L"SmartWait", 2.5f);
  EXPECT_EQ(items.call(L"ChangeKey", L"a", L"b"), true);
  const Object copy = items.get_object(L"Item", L"b");
  EXPECT_FALSE(copy == former);
  EXPECT_EQ(copy.get(L"Key"), L"b");
  EXPECT_EQ(copy.get(L"ItemID"), 1);
  EXPECT_EQ(copy.get(L"SmartWait"), 2.5f);
  EXPECT_EQ(copy.get(L"Caption"), L"Caption 1");
  EXPECT_EQ(former.get(L"Key"), L"a");
}

TEST(ItemsChangeKey, TheNewKeyIsTheTextOfAnyValue) {
  const Object items = make_items({L"a", L"b"});
  EXPECT_EQ(items.call(L"ChangeKey", 1, 59), true);
  EXPECT_EQ(items.call(L"ChangeKey", 2, 1.5), true);
  EXPECT_EQ(texts_of(items), (Texts{L"59", in_user_locale(L"1.5")}));
  EXPECT_EQ(items.get_object(L"Item", L"59").get(L"ItemID"), 1);
}

TEST(ItemsChangeKey, TakesVariablesOfScripts) {
  const Object items = make_items({L"a", L"b"});
  Value old_key(L"a"), new_key(59);
  EXPECT_EQ(items.call(L"ChangeKey", by_ref(old_key), by_ref(new_key)), true);
  EXPECT_EQ(texts_of(items), (Texts{L"b", L"59"}));
}

TEST(ItemsChangeKey, KeepsUnicodeAndEmbeddedNul) {
  using namespace std::string_literals;
  const Object items = make_items({L"a\0b"s, L"a"});
  EXPECT_EQ(items.call(L"ChangeKey", L"a\0b"s, L"\u0150\0sz"s), true);
  EXPECT_EQ(texts_of(items), (Texts{L"a", L"\u0150\0sz"s}));
  EXPECT_EQ(items.get_object(L"Item", L"\u0151\0SZ"s).get(L"ItemID"), 1);
}

TEST(ItemsChangeKey, TheSameKeyInOtherLettersWorks) {
  const Object items = make_items({L"a", L"b"});
  EXPECT_EQ(items.call(L"ChangeKey", L"a", L"A"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"b", L"A"}));
}

TEST(ItemsChangeKey, UnkeyedItemsAreReachedByPosition) {
  const Object items = make_items({L"a", L""});
  EXPECT_EQ(items.call(L"ChangeKey", 2, L"new"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"a", L"new"}));
}

TEST(ItemsChangeKey, WhatIsNotThereGivesFalse) {
  const Object items = make_items({L"a", L"b"});
  const Value indices[] = {
      0, 3, -1, 1e300, L"", L"c", L"1", true, Value(), Value::null(), Value::nothing(), items};
  for (const Value& index : indices) {
    EXPECT_EQ(items.call(L"ChangeKey", index, L"new"), false) << testing::PrintToString(index);
  }
  EXPECT_EQ(texts_of(items), (Texts{L"a", L"b"}));
}

TEST(ItemsChangeKey, AKeyInUseGivesFalseAndChangesNothing) {
  const Object items = make_items({L"a", L"b", L"3"});
  const Object first = items.get_object(L"Item", 1);
  for (const Value& index : {Value(1), Value(L"a")}) {
    EXPECT_EQ(items.call(L"ChangeKey", index, L"B"), false);
    EXPECT_EQ(items.call(L"ChangeKey", index, 3), false);
  }
  EXPECT_EQ(texts_of(items), (Texts{L"a", L"b", L"3"}));
  EXPECT_EQ(items.get_object(L"Item", 1), first);
  EXPECT_EQ(items.get_object(L"Item", L"a"), first);
}

TEST(ItemsChangeKey, WhatHasNoTextIsNoKey) {
  const Object items = make_items({L"a"});
  for (const Value& key : {Value::null(), Value::nothing()}) {
    EXPECT_EQ(items.call(L"ChangeKey", L"a", key), false) << testing::PrintToString(key);
  }
  EXPECT_EQ(texts_of(items), (Texts{L"a"}));
}

TEST(ItemsChangeKey, LooksUpTheCollectionWhateverTheVersion) {
  const Object items = make_items({L"10", L"9"});
  select_confusing_version(items);
  EXPECT_EQ(items.call(L"ChangeKey", L"10", L"new"), true);
  EXPECT_EQ(texts_of(items), (Texts{L"9", L"new"}));
}

}  // namespace
}  // namespace pv::test
