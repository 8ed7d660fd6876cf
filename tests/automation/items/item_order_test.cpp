// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Maintenance of the item database: changing an item's number or key.

#include <gtest/gtest.h>

#include "tests/automation/items/ordered_items.h"

namespace pv::test {
namespace {

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
