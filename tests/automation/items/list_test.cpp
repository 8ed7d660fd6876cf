// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Display lists and their members: records, collections, renaming, copying.

#include <gtest/gtest.h>

#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

Object make_member() { return Object::create(L"pvItems32.CDListMember"); }

Object make_members(const Texts& keys = {}) {
  const Object members = Object::create(L"pvItems32.CDListMembers");
  for (const std::wstring& key : keys) members.call(L"Add", key, L"Caption " + key, L"Tag " + key);
  return members;
}

Object make_lists(const Texts& keys = {}) {
  const Object lists = Object::create(L"pvItems32.CDLists");
  for (const std::wstring& key : keys) {
    lists.call(L"Add", key, make_members({L"0", L"1"}), L"Caption " + key);
  }
  return lists;
}

// --- One member

TEST(ListMember, StartsEmptyAndKeepsItsTexts) {
  const Object member = make_member();
  for (const wchar_t* property : {L"Key", L"Caption", L"Tag"}) {
    EXPECT_EQ(member.get(property), L"");
    for (const std::wstring& text : {L"On"s, L"\u0151|\0x"s, L""s}) {
      member.put(property, text);
      EXPECT_EQ(member.get(property), text);
    }
  }
}

TEST(ListMember, SavesItsRecord) {
  const Object member = make_member();
  EXPECT_EQ(member.call(L"Save"), L"|||");
  member.put(L"Key", L"1");
  member.put(L"Caption", L"On \u0151");
  member.put(L"Tag", L"o");
  EXPECT_EQ(member.call(L"Save"), L"1|On \u0151|o|");
}

TEST(ListMember, LoadsItsRecord) {
  const Object member = make_member();
  EXPECT_EQ(member.call(L"Load", L"1|On|o|"), true);
  EXPECT_EQ(member.call(L"Save"), L"1|On|o|");
  EXPECT_EQ(member.call(L"Load", L"2|Off|f"), true);
  EXPECT_EQ(member.call(L"Save"), L"2|Off|f|");
  EXPECT_EQ(member.call(L"Load", L"3|a|b|c|d"), true);
  EXPECT_EQ(member.call(L"Save"), L"3|a|b|");
}

TEST(ListMember, LeavesFieldsThatAShortRecordLacks) {
  const Object member = make_member();
  member.call(L"Load", L"1|On|o|");
  EXPECT_EQ(member.call(L"Load", L"2|Off"), false);
  EXPECT_EQ(member.call(L"Save"), L"2|Off|o|");
  EXPECT_EQ(member.call(L"Load", L"3"), false);
  EXPECT_EQ(member.call(L"Save"), L"3|Off|o|");
  EXPECT_EQ(member.call(L"Load", L""), false);
  EXPECT_EQ(member.call(L"Save"), L"|Off|o|");
}

TEST(ListMember, LoadsTheDefaultRecordWithTheTagAsCaption) {
  const Object member = make_member();
  member.call(L"Load", L"Item#1|Tag#1");
  EXPECT_EQ(member.get(L"Key"), L"Item#1");
  EXPECT_EQ(member.get(L"Caption"), L"Tag#1");
  EXPECT_EQ(member.get(L"Tag"), L"");
}

TEST(ListMember, LoadsRecordsOfOtherKinds) {
  const Object member = make_member();
  Value record(L"1|On|o|");
  EXPECT_EQ(member.call(L"Load", by_ref(record)), true);
  for (const Value& none : {Value::null(), Value::nothing()}) {
    EXPECT_EQ(member.call(L"Load", none), false);
    EXPECT_EQ(member.call(L"Save"), L"1|On|o|");
  }
  EXPECT_EQ(member.call(L"Load", 7), false);
  EXPECT_EQ(member.call(L"Save"), L"7|On|o|");
}

TEST(ListMember, CopiesItselfIntoAnother) {
  const Object source = make_member(), target = make_member();
  source.call(L"Load", L"1|On|o|");
  EXPECT_EQ(source.call_object(L"Copy", target), target);
  EXPECT_EQ(target.call(L"Save"), L"1|On|o|");
  EXPECT_EQ(source.call_object(L"Copy", source), source);
  EXPECT_EQ(source.call(L"Save"), L"1|On|o|");
  EXPECT_EQ(source.try_call(L"Copy", Value::nothing()).number(), 91);
}

// --- Members

TEST(ListMembers, StartEmpty) {
  const Object members = make_members();
  EXPECT_EQ(members.get(L"Count"), 0);
  EXPECT_EQ(members.get(L"Changed"), false);
  members.put(L"Changed", true);
  EXPECT_EQ(members.get(L"Changed"), true);
}

TEST(ListMembers, AddGivesTheNewMember) {
  const Object members = make_members();
  const Object member = members.call_object(L"Add", L"1", L"On", L"o");
  EXPECT_EQ(members.get_object(L"Item", L"1"), member);
  EXPECT_EQ(member.call(L"Save"), L"1|On|o|");
}

TEST(ListMembers, AddTakesCaptionAndTagOfAnyKindAsText) {
  const Object members = make_members();
  EXPECT_EQ(members.call_object(L"Add", L"1", 5, true).call(L"Save"), L"1|5|True|");
  EXPECT_EQ(members.call_object(L"Add", L"2", 1.5, Value()).call(L"Save"),
            L"2|1" + user_decimal() + L"5||");
  Value caption(L"by"), tag(7);
  EXPECT_EQ(members.call_object(L"Add", L"3", by_ref(caption), by_ref(tag)).call(L"Save"),
            L"3|by|7|");
  EXPECT_EQ(members.try_call(L"Add", L"4", Value::null(), L"").number(), 94);
  EXPECT_EQ(members.try_call(L"Add", L"4", L"", Value::nothing()).number(), 13);
  EXPECT_EQ(members.get(L"Count"), 3);
}

TEST(ListMembers, AddUnderAKeyInUseRaisesAnError) {
  const Object members = make_members({L"On"});
  const Outcome outcome = members.try_call(L"Add", L"ON", L"", L"");
  EXPECT_EQ(outcome.number(), 457);
  EXPECT_EQ(outcome.source, L"pvItems32.CDListMembers");
  EXPECT_EQ(members.get(L"Count"), 1);
}

TEST(ListMembers, AreFoundByPositionAndKey) {
  const Object members = make_members({L"1", L"0", L"On", L""});
  EXPECT_EQ(members.id_of(L"Item"), DISPID_VALUE);
  EXPECT_EQ(members.get_object(L"Item", 1).get(L"Key"), L"1");
  EXPECT_EQ(members.get_object(L"Item", L"0").get(L"Key"), L"0");
  EXPECT_EQ(members.get_object(L"Item", L"on").get(L"Key"), L"On");
  EXPECT_EQ(members.get_object(L"Item", 4.0).get(L"Caption"), L"Caption ");
  EXPECT_EQ(Object(item_by_variable(members, 2).value).get(L"Key"), L"0");
  for (const Value& index : {Value(0), Value(5), Value(L"2"), Value(L""), Value(), Value::null()}) {
    EXPECT_TRUE(members.get(L"Item", index).is_nothing()) << testing::PrintToString(index);
  }
}

TEST(ListMembers, AreRemovedAndCleared) {
  const Object members = make_members({L"a", L"b", L"c"});
  for (const Value& index : {Value(L"B"), Value(1), Value(9), Value(L"x")}) {
    EXPECT_TRUE(members.try_call(L"Remove", index).worked());
  }
  EXPECT_EQ(texts_of(members), (Texts{L"c"}));
  members.call(L"Clear");
  EXPECT_EQ(members.get(L"Count"), 0);
}

TEST(ListMembers, GetANewKeyInTheirPlace) {
  const Object members = make_members({L"a", L"b", L"c"});
  EXPECT_EQ(members.call(L"ChangeKey", 2, L"new"), true);
  EXPECT_EQ(members.call(L"ChangeKey", 3, 7), true);
  EXPECT_EQ(members.call(L"ChangeKey", 1, L"A"), true);
  EXPECT_EQ(texts_of(members), (Texts{L"A", L"new", L"7"}));
  EXPECT_EQ(texts_of(members, L"Tag"), (Texts{L"Tag a", L"Tag b", L"Tag c"}));
  EXPECT_EQ(members.get_object(L"Item", L"NEW").get(L"Caption"), L"Caption b");
}

TEST(ListMembers, LoseTheMemberThatIsGivenAKeyInUse) {
  const Object members = make_members({L"a", L"b"});
  EXPECT_EQ(members.call(L"ChangeKey", 1, L"B"), false);
  EXPECT_EQ(texts_of(members), (Texts{L"b"}));
}

TEST(ListMembers, StayAsTheyAreWhenAKeyCannotBeChanged) {
  const Object members = make_members({L"a", L"b"});
  for (const int position : {0, 3, -1}) {
    EXPECT_EQ(members.call(L"ChangeKey", position, L"x"), false) << position;
  }
  EXPECT_EQ(members.call(L"ChangeKey", 1, Value::null()), false);
  EXPECT_EQ(texts_of(members), (Texts{L"a", L"b"}));
}

// --- One list

TEST(List, StartsEmpty) {
  const Object list = Object::create(L"pvItems32.CDList");
  EXPECT_EQ(list.get(L"Key"), L"");
  EXPECT_EQ(list.get(L"Caption"), L"");
  EXPECT_EQ(list.get_object(L"ListMembers").get(L"Count"), 0);
}

TEST(List, KeepsItsProperties) {
  const Object list = Object::create(L"pvItems32.CDList");
  const Object members = make_members({L"1"});
  list.put(L"Key", L"k \u0151");
  list.put(L"Caption", L"c");
  list.set(L"ListMembers", members);
  EXPECT_EQ(list.get(L"Key"), L"k \u0151");
  EXPECT_EQ(list.get(L"Caption"), L"c");
  EXPECT_EQ(list.get_object(L"ListMembers"), members);
  EXPECT_EQ(list.try_set(L"ListMembers", make_lists()).result, DISP_E_TYPEMISMATCH);
}

TEST(List, CopiesItselfWithItsMembers) {
  const Object source = make_lists({L"k"}).get_object(L"Item", 1);
  const Object target = Object::create(L"pvItems32.CDList");
  target.set(L"ListMembers", make_members({L"old"}));
  EXPECT_EQ(source.call_object(L"Copy", target), target);
  EXPECT_EQ(target.get(L"Key"), L"k");
  EXPECT_EQ(target.get(L"Caption"), L"Caption k");
  EXPECT_EQ(texts_of(target.get_object(L"ListMembers"), L"Tag"), (Texts{L"Tag 0", L"Tag 1"}));
  target.get_object(L"ListMembers").call(L"Clear");
  EXPECT_EQ(source.get_object(L"ListMembers").get(L"Count"), 2);
}

TEST(List, CopiedToItselfOrAcrossSharedMembersLosesNone) {
  const Object list = make_lists({L"k"}).get_object(L"Item", 1);
  EXPECT_EQ(list.call_object(L"Copy", list), list);
  EXPECT_EQ(list.get_object(L"ListMembers").get(L"Count"), 2);
  const Object sharing = Object::create(L"pvItems32.CDList");
  sharing.set(L"ListMembers", list.get_object(L"ListMembers"));
  list.call(L"Copy", sharing);
  EXPECT_EQ(texts_of(list.get_object(L"ListMembers")), (Texts{L"0", L"1"}));
}

TEST(List, ThatCannotBeCopiedLeavesTheDestinationAsItWas) {
  const Object source = make_lists({L"k"}).get_object(L"Item", 1);
  source.get_object(L"ListMembers").get_object(L"Item", 2).put(L"Key", L"0");  // like the first one
  const Object target = Object::create(L"pvItems32.CDList");
  target.put(L"Caption", L"kept");
  target.set(L"ListMembers", make_members({L"old"}));
  EXPECT_EQ(source.try_call(L"Copy", target).number(), 457);
  EXPECT_EQ(target.get(L"Caption"), L"kept");
  EXPECT_EQ(texts_of(target.get_object(L"ListMembers")), Texts{L"old"});
}

TEST(List, NeedsADestinationForACopy) {
  const Object list = make_lists({L"k"}).get_object(L"Item", 1);
  EXPECT_EQ(list.try_call(L"Copy", Value::nothing()).number(), 91);
}

// --- Lists

TEST(Lists, StartEmpty) {
  const Object lists = make_lists();
  EXPECT_EQ(lists.get(L"Count"), 0);
  EXPECT_EQ(lists.get(L"Changed"), false);
  lists.put(L"Changed", true);
  EXPECT_EQ(lists.get(L"Changed"), true);
}

TEST(Lists, AddGivesTheNewListAndSharesTheMembers) {
  const Object lists = make_lists();
  const Object members = make_members();
  const Object list = lists.call_object(L"Add", L"k", members, L"Caption");
  members.call(L"Add", L"later", L"", L"");
  EXPECT_EQ(lists.get_object(L"Item", L"K"), list);
  EXPECT_EQ(list.get(L"Key"), L"k");
  EXPECT_EQ(list.get(L"Caption"), L"Caption");
  EXPECT_EQ(list.get_object(L"ListMembers"), members);
  EXPECT_EQ(list.get_object(L"ListMembers").get(L"Count"), 1);
}

TEST(Lists, AddWithoutMembersGivesTheListItsOwn) {
  const Object list = make_lists().call_object(L"Add", L"k", Value::nothing(), L"Caption");
  EXPECT_EQ(list.get_object(L"ListMembers").get(L"Count"), 0);
}

TEST(Lists, WithoutKeyAreReachedByPositionOnly) {
  const Object lists = make_lists({L"", L""});
  EXPECT_EQ(lists.get(L"Count"), 2);
  EXPECT_TRUE(lists.get(L"Item", L"").is_nothing());
  EXPECT_TRUE(lists.get(L"Item", L"Caption ").is_nothing());
}

TEST(Lists, AddUnderAKeyInUseRaisesAnError) {
  const Object lists = make_lists({L"k"});
  const Outcome outcome = lists.try_call(L"Add", L"K", make_members(), L"");
  EXPECT_EQ(outcome.number(), 457);
  EXPECT_EQ(outcome.source, L"pvItems32.CDLists");
  EXPECT_EQ(lists.get(L"Count"), 1);
}

TEST(Lists, AddRefusesWhatAreNoMembers) {
  const Object lists = make_lists();
  EXPECT_EQ(lists.try_call(L"Add", L"k", lists, L"").result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(lists.try_call(L"Add", L"k", 5, L"").result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(lists.get(L"Count"), 0);
}

TEST(Lists, AreFoundByPositionAndKey) {
  const Object lists = make_lists({L"OFF_ON", L"1"});
  EXPECT_EQ(lists.id_of(L"Item"), DISPID_VALUE);
  EXPECT_EQ(lists.get_object(L"Item", L"off_on").get(L"Key"), L"OFF_ON");
  EXPECT_EQ(lists.get_object(L"Item", L"1").get(L"Key"), L"1");
  EXPECT_EQ(lists.get_object(L"Item", static_cast<short>(1)).get(L"Key"), L"OFF_ON");
  for (const Value& index : {Value(0), Value(3), Value(L"2"), Value(), Value::null()}) {
    EXPECT_TRUE(lists.get(L"Item", index).is_nothing()) << testing::PrintToString(index);
  }
}

TEST(Lists, AreRemovedAndCleared) {
  const Object lists = make_lists({L"a", L"b", L"c"});
  for (const Value& index : {Value(L"B"), Value(1), Value(9), Value(L"x")}) {
    EXPECT_TRUE(lists.try_call(L"Remove", index).worked());
  }
  EXPECT_EQ(texts_of(lists), (Texts{L"c"}));
  lists.call(L"Clear");
  EXPECT_EQ(lists.get(L"Count"), 0);
}

TEST(Lists, AreRenamedInTheirPlace) {
  const Object lists = make_lists({L"a", L"b", L"c"});
  const Object old = lists.get_object(L"Item", 2);
  EXPECT_EQ(lists.call(L"ChangeTitle", 2, L"new"), true);
  EXPECT_EQ(texts_of(lists), (Texts{L"a", L"new", L"c"}));
  EXPECT_EQ(texts_of(lists, L"Caption"), (Texts{L"Caption a", L"new", L"Caption c"}));
  const Object renamed = lists.get_object(L"Item", L"NEW");
  EXPECT_EQ(texts_of(renamed.get_object(L"ListMembers")), (Texts{L"0", L"1"}));
  EXPECT_FALSE(renamed == old);
  EXPECT_EQ(old.get(L"Caption"), L"Caption b");
}

TEST(Lists, AreRenamedAtEitherEndAndToTheirOwnName) {
  const Object lists = make_lists({L"a", L"b", L"c"});
  EXPECT_EQ(lists.call(L"ChangeTitle", 1, L"first"), true);
  EXPECT_EQ(lists.call(L"ChangeTitle", 2, L"B"), true);
  EXPECT_EQ(lists.call(L"ChangeTitle", 3, L"last"), true);
  EXPECT_EQ(texts_of(lists), (Texts{L"first", L"B", L"last"}));
}

TEST(Lists, LoseTheListThatIsGivenANameInUse) {
  const Object lists = make_lists({L"a", L"b"});
  EXPECT_EQ(lists.call(L"ChangeTitle", 1, L"B"), false);
  EXPECT_EQ(texts_of(lists), (Texts{L"b"}));
}

TEST(Lists, StayAsTheyAreWhenAPositionDoesNotExist) {
  const Object lists = make_lists({L"a"});
  for (const int position : {0, 2, -1}) {
    EXPECT_EQ(lists.call(L"ChangeTitle", position, L"x"), false) << position;
  }
  EXPECT_EQ(texts_of(lists), (Texts{L"a"}));
}

TEST(Lists, WithoutMembersCanBeRenamed) {
  const Object lists = make_lists({L"a"});
  lists.get_object(L"Item", 1).set(L"ListMembers", Value::nothing());
  EXPECT_TRUE(lists.get_object(L"Item", 1).get(L"ListMembers").is_nothing());
  EXPECT_EQ(lists.call(L"ChangeTitle", 1, L"x"), true);
  EXPECT_EQ(texts_of(lists), (Texts{L"x"}));
}

}  // namespace
}  // namespace pv::test
