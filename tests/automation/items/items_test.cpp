// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The item database: adding, finding, removing, enumerating, events.

#include <gtest/gtest.h>
#include <ocidl.h>

#include "pvItems32.h"
#include "tests/automation/items/item_support.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

Object make_items(const Texts& keys = {}) {
  const Object items = Object::create(L"pvItems32.CItems");
  int id = 0;
  for (const std::wstring& key : keys) add_item(items, key, ++id);
  return items;
}

TEST(Items, StartEmpty) {
  const Object items = make_items();
  EXPECT_EQ(items.get(L"AllItemCount"), 0);
  EXPECT_EQ(items.get(L"AllItemCount").vt, VT_I4);
  EXPECT_EQ(items.get(L"Count"), 0);
  EXPECT_EQ(items.get(L"Count").vt, VT_I4);
  EXPECT_EQ(items.get(L"Changed"), false);
  EXPECT_EQ(items.get(L"Version"), L"");
  EXPECT_EQ(items.get_object(L"Versions").get(L"Count"), 0);
  EXPECT_EQ(items.get_object(L"Versions"), items.get_object(L"Versions"));
  EXPECT_TRUE(members_of(items).empty());
}

TEST(Items, VersionsCannotBeReplaced) {
  const Object items = make_items();
  EXPECT_FALSE(items.try_set(L"Versions", Object::create(L"pvItems32.CVersions")).worked());
  EXPECT_FALSE(items.try_put(L"AllItemCount", 5).worked());
}

// --- Add

TEST(ItemsAdd, GivesTheNewItemWithAllItsFields) {
  const Object items = make_items();
  const Object variables = Object::create(L"pvItems32.CVariables");
  add_variable(variables, L"v");
  const Object item =
      items.call_object(L"Add", L"k", 59, false, 26, true, true, 1.25f, 8, variables);
  EXPECT_EQ(items.get_object(L"Item", L"k"), item);
  EXPECT_EQ(item.get(L"Key"), L"k");
  EXPECT_EQ(item.get(L"ItemID"), 59);
  EXPECT_EQ(item.get(L"ByMeaning"), false);
  EXPECT_EQ(item.get(L"Access"), 26);
  EXPECT_EQ(item.get(L"Historian"), true);
  EXPECT_EQ(item.get(L"Restore"), true);
  EXPECT_EQ(item.get(L"SmartWait"), 1.25f);
  EXPECT_EQ(item.get(L"Length"), 8);
  EXPECT_EQ(item.get(L"Caption"), L"Caption v");
}

TEST(ItemsAdd, SharesTheVariablesAndDoesNotCopyThem) {
  const Object items = make_items();
  const Object variables = Object::create(L"pvItems32.CVariables");
  const auto add = [&](const wchar_t* key) {
    return items.call_object(L"Add", key, 1, true, 1, false, false, 0.5f, 4, variables);
  };
  const Object one = add(L"1"), two = add(L"2");
  add_variable(variables, L"later");
  EXPECT_EQ(one.get_object(L"Variables"), variables);
  EXPECT_EQ(two.get(L"Caption"), L"Caption later");
}

TEST(ItemsAdd, WithoutVariablesGivesTheItemItsOwn) {
  const Object items = make_items();
  const Object omitted = items.call_object(L"Add", L"1", 1, true, 1, false, false, 0.5f, 4);
  const Object nothing =
      items.call_object(L"Add", L"2", 2, true, 1, false, false, 0.5f, 4, Value::nothing());
  EXPECT_EQ(omitted.get_object(L"Variables").get(L"Count"), 0);
  EXPECT_FALSE(omitted.get_object(L"Variables") == nothing.get_object(L"Variables"));
}

TEST(ItemsAdd, WithoutKeyAddsAnItemReachedByPositionOnly) {
  const Object items = make_items({L"", L""});
  EXPECT_EQ(items.get(L"AllItemCount"), 2);
  EXPECT_EQ(items.get_object(L"Item", 2).get(L"ItemID"), 2);
  EXPECT_TRUE(items.get(L"Item", L"").is_nothing());
  EXPECT_TRUE(items.get(L"Item", L"2").is_nothing());
}

TEST(ItemsAdd, UnderAKeyInUseGivesNothingAndLeavesTheCollectionAsItWas) {
  const Object items = make_items({L"Flow", L"b"});
  items.put(L"Changed", false);
  EXPECT_FALSE(add_item(items, L"FLOW", 9));
  EXPECT_EQ(texts_of(items), (Texts{L"Flow", L"b"}));
  EXPECT_EQ(items.get_object(L"Item", L"flow").get(L"ItemID"), 1);
  EXPECT_EQ(items.get(L"Changed"), true);
}

TEST(ItemsAdd, MarksTheCollectionAsChanged) {
  const Object items = make_items({L"1"});
  EXPECT_EQ(items.get(L"Changed"), true);
  items.put(L"Changed", false);
  EXPECT_EQ(items.get(L"Changed"), false);
}

TEST(ItemsAdd, RefusesArgumentsThatDoNotFit) {
  const Object items = make_items();
  const auto add = [&](const Value& id, const Value& variables) {
    return items.try_call(L"Add", L"k", id, true, 1, false, false, 0.5f, 4, variables);
  };
  EXPECT_EQ(add(40'000, Value::missing()).result, DISP_E_OVERFLOW);
  EXPECT_EQ(add(1, make_items()).result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(items.get(L"AllItemCount"), 0);
  EXPECT_EQ(items.get(L"Changed"), false);
}

TEST(ItemsAdd, KeyIsNotTheNumberOfTheItem) {
  const Object items = make_items();
  add_item(items, L"flow", 59);
  EXPECT_TRUE(items.get(L"Item", L"59").is_nothing());
}

// --- Item

TEST(ItemsItem, IsTheDefaultMember) { EXPECT_EQ(make_items().id_of(L"Item"), DISPID_VALUE); }

TEST(ItemsItem, FindsByPositionAndByKey) {
  const Object items = make_items({L"b", L"a", L"1"});
  EXPECT_EQ(items.get_object(L"Item", 1).get(L"Key"), L"b");
  EXPECT_EQ(items.get_object(L"Item", L"A").get(L"Key"), L"a");
  EXPECT_EQ(items.get_object(L"Item", L"1").get(L"Key"), L"1");
}

TEST(ItemsItem, TakesPositionsOfAnyNumericTypeAndByReference) {
  const Object items = make_items({L"a", L"b"});
  for (const Value& position : {Value(static_cast<short>(2)), Value(2), Value(2.0f), Value(2.0)}) {
    EXPECT_EQ(items.get_object(L"Item", position).get(L"Key"), L"b");
    EXPECT_EQ(Object(item_by_variable(items, position).value).get(L"Key"), L"b");
  }
  EXPECT_EQ(Object(item_by_variable(items, L"B").value).get(L"Key"), L"b");
}

TEST(ItemsItem, ThatIsNotThereIsNothing) {
  const Object items = make_items({L"a"});
  const Value indices[] = {
      0,           2, -1, 1e300, true, L"", L"b", L"2", Value(), Value::null(), Value::nothing(),
      make_items()};
  for (const Value& index : indices) {
    const Outcome outcome = items.try_get(L"Item", index);
    EXPECT_TRUE(outcome.worked() && outcome.value.is_nothing())
        << testing::PrintToString(index) << ": " << testing::PrintToString(outcome);
  }
}

TEST(ItemsItem, KeepsUnicodeAndEmbeddedNulInKeys) {
  const Object items = make_items({L"\u0150sz", L"a\0b"s, L"a"});
  EXPECT_EQ(items.get_object(L"Item", L"\u0151SZ").get(L"ItemID"), 1);
  EXPECT_EQ(items.get_object(L"Item", L"A\0B"s).get(L"ItemID"), 2);
  EXPECT_EQ(items.get_object(L"Item", L"a").get(L"ItemID"), 3);
}

// --- Remove, Clear, enumeration

TEST(ItemsRemove, TakesPositionsAndKeys) {
  const Object items = make_items({L"a", L"b", L"c"});
  items.call(L"Remove", 1);
  items.call(L"Remove", L"C");
  EXPECT_EQ(texts_of(items), (Texts{L"b"}));
}

TEST(ItemsRemove, PassesOverWhatIsNotThere) {
  const Object items = make_items({L"a"});
  for (const Value& index : {Value(0), Value(2), Value(L"b"), Value(), Value::null()}) {
    EXPECT_TRUE(items.try_call(L"Remove", index).worked()) << testing::PrintToString(index);
  }
  EXPECT_EQ(items.get(L"AllItemCount"), 1);
}

TEST(ItemsRemove, IgnoresTheSelectedVersion) {
  const Object items = make_items({L"1", L"2"});
  const Object versions = items.get_object(L"Versions");
  versions.call_object(L"Add", L"V", 2).get_object(L"VerItems").call(L"Add", L"1", L"2");
  items.put(L"Version", L"V");
  items.call(L"Remove", L"1");
  EXPECT_EQ(texts_of(items), (Texts{L"2"}));
}

TEST(ItemsClear, EmptiesTheCollectionAndKeepsTheVersions) {
  const Object items = make_items({L"a", L"b"});
  items.get_object(L"Versions").call(L"Add", L"V", 2);
  const Object kept = items.get_object(L"Item", 1);
  items.call(L"Clear");
  EXPECT_EQ(items.get(L"AllItemCount"), 0);
  EXPECT_EQ(items.get_object(L"Versions").get(L"Count"), 1);
  EXPECT_EQ(kept.get(L"Key"), L"a");
  EXPECT_TRUE(add_item(items, L"a", 1));
}

TEST(ItemsEnumeration, GoesOverTheWholeCollection) {
  const Object items = make_items({L"b", L"", L"a"});
  const Object versions = items.get_object(L"Versions");
  versions.call(L"Add", L"V", 1);
  items.put(L"Version", L"V");
  EXPECT_EQ(items.get(L"Count"), 1);
  EXPECT_EQ(texts_of(items), (Texts{L"b", L"", L"a"}));
}

TEST(ItemsEnumeration, IsNotDisturbedByChanges) {
  const Object items = make_items({L"a", L"b"});
  const Value held = items.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET).value;
  const auto enumerator = query<IEnumVARIANT>(held.punkVal);
  items.call(L"Clear");
  add_item(items, L"c", 3);
  Value first;
  ASSERT_EQ(enumerator->Next(1, &first, nullptr), S_OK);
  EXPECT_EQ(Object(first).get(L"Key"), L"a");
  EXPECT_EQ(texts_of(items), (Texts{L"c"}));
}

TEST(ItemsEnumeration, OutlivesTheCollection) {
  Value held;
  {
    const Object items = make_items({L"a"});
    held = items.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET).value;
  }
  Value first;
  ASSERT_EQ(query<IEnumVARIANT>(held.punkVal)->Next(1, &first, nullptr), S_OK);
  EXPECT_EQ(Object(first).get(L"Key"), L"a");
}

// --- Events

Ref<IConnectionPoint> events_of(const Object& items) {
  Ref<IConnectionPoint> point;
  items.as<IConnectionPointContainer>()->FindConnectionPoint(DIID___CItems, point.put());
  return point;
}

TEST(ItemsEvents, ListenersConnectAndDisconnect) {
  const Object items = make_items();
  const FakeObject listener;
  const auto point = events_of(items);
  ASSERT_TRUE(point);
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(listener.get(), &cookie), S_OK);
  EXPECT_NE(cookie, 0u);
  EXPECT_EQ(listener.references(), 1u);
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
  EXPECT_EQ(listener.references(), 0u);
  EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
}

TEST(ItemsEvents, NoneAreRaised) {
  const Object items = make_items();
  FakeObject listener;  // fails the test for any call
  DWORD cookie = 0;
  ASSERT_EQ(events_of(items)->Advise(listener.get(), &cookie), S_OK);
  add_item(items, L"1", 1);
  items.call(L"LoadSettingsNew", example_file(L"fluxor.itm"));
  items.put(L"Version", L"2.30");
  items.call(L"Clear");
}

TEST(ItemsEvents, ListenersAreReleasedWithTheItems) {
  const FakeObject listener;
  {
    const Object items = make_items();
    DWORD cookie = 0;
    ASSERT_EQ(events_of(items)->Advise(listener.get(), &cookie), S_OK);
    EXPECT_EQ(listener.references(), 1u);
  }
  EXPECT_EQ(listener.references(), 0u);
}

TEST(ItemsEvents, HaveOneConnectionPointThatKnowsItsOwner) {
  const Object items = make_items();
  const auto container = items.as<IConnectionPointContainer>();
  Ref<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
  Ref<IConnectionPoint> point;
  ASSERT_EQ(points->Next(1, point.put(), nullptr), S_OK);
  IID iid{};
  EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
  EXPECT_TRUE(iid == DIID___CItems);
  Ref<IConnectionPointContainer> owner;
  EXPECT_EQ(point->GetConnectionPointContainer(owner.put()), S_OK);
  EXPECT_TRUE(owner == container);
  EXPECT_EQ(points->Next(1, point.put(), nullptr), S_FALSE);
  Ref<IConnectionPoint> other;
  EXPECT_EQ(container->FindConnectionPoint(DIID___CLanguages, other.put()), CONNECT_E_NOCONNECTION);
  EXPECT_FALSE(other);
}

TEST(ItemsEvents, AreNamedByTheClassInformation) {
  GUID source{};
  ASSERT_EQ(
      make_items().as<IProvideClassInfo2>()->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source),
      S_OK);
  EXPECT_TRUE(source == DIID___CItems);
}

TEST(ItemsEvents, WhatIsNoAutomationObjectCannotListen) {
  const Object items = make_items();
  DWORD cookie = 7;
  const Value held = make_items({L"a"}).invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET).value;
  EXPECT_EQ(events_of(items)->Advise(held.punkVal, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0u);
  EXPECT_EQ(events_of(items)->Advise(nullptr, &cookie), E_POINTER);
}

}  // namespace
}  // namespace pv::test
