// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Display-list files, and the host's list control that is filled with a list.

#include <gtest/gtest.h>

#include "resources/version.h"
#include "tests/automation/items/item_support.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

class ListsFile : public testing::Test {
 protected:
  static Object make_lists() { return Object::create(L"pvItems32.CDLists"); }
  bool load(std::string_view bytes) const {
    return lists_.call(L"LoadSettingsNew", folder_.write(L"a.lst", bytes)).boolean();
  }
  bool save(const std::wstring& file) const {
    return lists_.call(L"SaveSettingsNew", file).boolean();
  }
  Object members(const Value& list) const {
    return lists_.get_object(L"Item", list).get_object(L"ListMembers");
  }

  const TestFolder folder_;
  const Object lists_ = make_lists();
};

std::string head(int count) {
  return "[Lists]\r\nCount=" + std::to_string(count) +
         "\r\nVersion=1.00.00\r\nDate=" PV_COMMENTS "\r\n";
}

TEST_F(ListsFile, GivesListsAndMembers) {
  lists_.put(L"Changed", true);
  ASSERT_TRUE(
      load("[Lists]\r\nCount=2\r\n\r\n[LIST1]\r\nCaption=OFF_ON\r\nCount=2\r\n"
           "ITEM1=0|Off|f|\r\nITEM2=1|H\xF6he|o|\r\n\r\n[LIST2]\r\nCaption=Empty\r\nCount=0\r\n"));
  EXPECT_EQ(texts_of(lists_), (Texts{L"OFF_ON", L"Empty"}));
  EXPECT_EQ(texts_of(lists_, L"Caption"), (Texts{L"OFF_ON", L"Empty"}));
  EXPECT_EQ(texts_of(members(L"off_on")), (Texts{L"0", L"1"}));
  EXPECT_EQ(texts_of(members(1), L"Caption"), (Texts{L"Off", L"H\u00F6he"}));
  EXPECT_EQ(texts_of(members(1), L"Tag"), (Texts{L"f", L"o"}));
  EXPECT_EQ(members(2).get(L"Count"), 0);
  EXPECT_EQ(lists_.get(L"Changed"), false);
}

TEST_F(ListsFile, OfTheExampleLoadsWhole) {
  ASSERT_EQ(lists_.call(L"LoadSettingsNew", example_file(L"fluxor.lst")), true);
  EXPECT_EQ(lists_.get(L"Count"), 12);
  EXPECT_EQ(members(L"ERROR_TEXT").get(L"Count"), 65);
  EXPECT_EQ(members(7).get_object(L"Item", L"1").get(L"Caption"), L"Odd");
}

TEST_F(ListsFile, AddsToTheListsThatAreThere) {
  lists_.call(L"Add", L"old", Value::nothing(), L"old");
  ASSERT_TRUE(load("[Lists]\nCount=1\n[LIST1]\nCaption=new\nCount=0\n"));
  EXPECT_EQ(texts_of(lists_), (Texts{L"old", L"new"}));
}

TEST_F(ListsFile, SkipsAListWhoseCaptionIsTakenAndGoesOn) {
  ASSERT_TRUE(
      load("[Lists]\nCount=3\n[LIST1]\nCaption=a\nCount=1\nITEM1=1|first|\n"
           "[LIST2]\nCaption=A\nCount=1\nITEM1=1|second|\n"
           "[LIST3]\nCaption=b\nCount=1\nITEM1=1|third|\n"));
  EXPECT_EQ(texts_of(lists_), (Texts{L"a", L"b"}));
  EXPECT_EQ(texts_of(members(L"a"), L"Caption"), (Texts{L"first"}));
  EXPECT_EQ(texts_of(members(L"b"), L"Caption"), (Texts{L"third"}));
}

TEST_F(ListsFile, SkipsMembersWhoseKeyIsTaken) {
  ASSERT_TRUE(
      load("[Lists]\nCount=1\n[LIST1]\nCaption=a\nCount=3\nITEM1=k|1st|\nITEM2=K|2nd|\n"
           "ITEM3=l|3rd|\n"));
  EXPECT_EQ(texts_of(members(1), L"Caption"), (Texts{L"1st", L"3rd"}));
}

TEST_F(ListsFile, GivesDefaultsForMissingLines) {
  ASSERT_TRUE(load("[Lists]\nCount=2\n"));
  EXPECT_EQ(texts_of(lists_), (Texts{L"Untitled1", L"Untitled2"}));
  const Object member = members(2).get_object(L"Item", L"Item#1");
  EXPECT_EQ(members(2).get(L"Count"), 1);
  EXPECT_EQ(member.get(L"Caption"), L"Tag#1");
  EXPECT_EQ(member.get(L"Tag"), L"");
}

TEST_F(ListsFile, TakesListsWithEmptyCaptions) {
  ASSERT_TRUE(load("[Lists]\nCount=2\n[LIST1]\nCaption=\nCount=0\n[LIST2]\nCaption=\nCount=0\n"));
  EXPECT_EQ(texts_of(lists_), (Texts{L"", L""}));
}

TEST_F(ListsFile, ThatIsNoneIsFalseAndChangesNothing) {
  lists_.call(L"Add", L"old", Value::nothing(), L"old");
  lists_.put(L"Changed", true);
  for (const char* bytes :
       {"", "[Lists]\nCount=0\n", "[Lists]\nCount=-1\n", "[LISTS]\nCount=1\n"}) {
    EXPECT_FALSE(load(bytes)) << bytes;
  }
  EXPECT_EQ(lists_.call(L"LoadSettingsNew", folder_.file(L"missing.lst")), false);
  EXPECT_EQ(lists_.call(L"LoadSettingsNew", L""), false);
  EXPECT_EQ(texts_of(lists_), (Texts{L"old"}));
  EXPECT_EQ(lists_.get(L"Changed"), true);
}

// --- Saving

TEST_F(ListsFile, IsSavedInItsExactForm) {
  const Object list = lists_.call_object(L"Add", L"key", Value::nothing(), L"H\u00F6he");
  list.get_object(L"ListMembers").call(L"Add", L"0", L"Off", L"f");
  list.get_object(L"ListMembers").call(L"Add", L"", L"", L"");
  lists_.call(L"Add", L"", Value::nothing(), L"Empty");
  lists_.put(L"Changed", true);
  ASSERT_TRUE(save(folder_.file(L"a.lst")));
  EXPECT_EQ(bytes_of(folder_.file(L"a.lst")),
            head(2) +
                "\r\n[LIST1]\r\nCaption=H\xF6he\r\nCount=2\r\nITEM1=0|Off|f|\r\nITEM2=|||\r\n"
                "\r\n[LIST2]\r\nCaption=Empty\r\nCount=0\r\n");
  EXPECT_EQ(lists_.get(L"Changed"), false);
}

TEST_F(ListsFile, ComesBackAsSaved) {
  ASSERT_EQ(lists_.call(L"LoadSettingsNew", example_file(L"fluxor.lst")), true);
  ASSERT_TRUE(save(folder_.file(L"a.lst")));
  const std::string example = bytes_of(example_file(L"fluxor.lst"));
  EXPECT_EQ(bytes_of(folder_.file(L"a.lst")),
            head(12) + example.substr(example.find("\r\n[LIST1]")));
}

TEST_F(ListsFile, HoldsAListWithoutMembersAsEmpty) {
  lists_.call_object(L"Add", L"k", Value::nothing(), L"c").set(L"ListMembers", Value::nothing());
  ASSERT_TRUE(save(folder_.file(L"a.lst")));
  EXPECT_EQ(bytes_of(folder_.file(L"a.lst")), head(1) + "\r\n[LIST1]\r\nCaption=c\r\nCount=0\r\n");
}

TEST_F(ListsFile, ThatCannotBeSavedStaysWhole) {
  lists_.put(L"Changed", true);
  const std::wstring file = folder_.write(L"a.lst", "old content");
  {
    const LockedFile lock(file);
    EXPECT_FALSE(save(file));
  }
  EXPECT_FALSE(save(folder_.file(L"missing\\a.lst")));
  EXPECT_EQ(bytes_of(file), "old content");
  EXPECT_EQ(folder_.names(), (Texts{L"a.lst"}));
  EXPECT_EQ(lists_.get(L"Changed"), true);
}

// --- Filling a control

class ListControl : public testing::Test {
 protected:
  ListControl() {
    const Object list = lists_.call_object(L"Add", L"k", Value::nothing(), L"c");
    for (const wchar_t* caption : {L"Off", L"On \u0151", L""}) {
      list.get_object(L"ListMembers").call(L"Add", L"", caption, L"tag");
    }
    lists_.call(L"Add", L"empty", Value::nothing(), L"empty");
  }
  void expect_all_added(FakeObject& control) const {
    for (const wchar_t* caption : {L"Off", L"On \u0151", L""}) {
      control.expect_call(L"AddItem", {caption});
    }
  }

  const Object lists_ = Object::create(L"pvItems32.CDLists");
};

TEST_F(ListControl, IsClearedAndFilledWithTheCaptionsInOrder) {
  for (const auto kind : {FakeObject::Kind::kCompiled, FakeObject::Kind::kScript}) {
    FakeObject control(kind);
    control.expect_call(L"Clear");
    expect_all_added(control);
    EXPECT_EQ(lists_.call(L"FillList", 1, control), true);
    control.verify();
    EXPECT_EQ(control.references(), 0u);
  }
}

TEST_F(ListControl, IsLeftClearedByAnEmptyList) {
  FakeObject control;
  control.expect_call(L"Clear");
  EXPECT_EQ(lists_.call(L"FillList", 2, control), true);
}

TEST_F(ListControl, WithoutClearIsAFailure) {
  FakeObject control;
  expect_all_added(control);
  EXPECT_EQ(lists_.call(L"FillList", 1, control), false);
}

TEST_F(ListControl, WithoutAddItemIsAFailure) {
  FakeObject control;
  control.expect_call(L"Clear");
  EXPECT_EQ(lists_.call(L"FillList", 1, control), false);
}

TEST_F(ListControl, ThatFailsIsAFailureAndTheRestIsStillDone) {
  FakeObject control;
  control.expect_call(L"Clear").raises(E_FAIL);
  control.expect_call(L"AddItem", {L"Off"}).raises(E_ABORT);
  control.expect_call(L"AddItem", {L"On \u0151"});
  control.expect_call(L"AddItem", {L""});
  const Outcome outcome = lists_.try_call(L"FillList", 1, control);
  EXPECT_EQ(outcome.value, false);
  EXPECT_TRUE(outcome.worked());
}

TEST_F(ListControl, IsClearedForAListThatDoesNotExist) {
  for (const int index : {0, 3, -1}) {
    FakeObject control;
    control.expect_call(L"Clear");
    EXPECT_EQ(lists_.call(L"FillList", index, control), false) << index;
  }
}

TEST_F(ListControl, ThatIsNothingIsAFailure) {
  EXPECT_EQ(lists_.call(L"FillList", 1, Value::nothing()), false);
  EXPECT_EQ(lists_.try_call(L"FillList", 1, 5).result, DISP_E_TYPEMISMATCH);
}

TEST_F(ListControl, MayChangeTheListWhileItIsFilled) {
  FakeObject control;
  const Object members = lists_.get_object(L"Item", 1).get_object(L"ListMembers");
  control.expect_call(L"Clear");
  control.expect_call(L"AddItem", {L"Off"}).does([&] { members.call(L"Clear"); });
  control.expect_call(L"AddItem", {L"On \u0151"}).does([&] { lists_.call(L"Clear"); });
  control.expect_call(L"AddItem", {L""});
  EXPECT_EQ(lists_.call(L"FillList", 1, control), true);
  EXPECT_EQ(lists_.get(L"Count"), 0);
}

TEST_F(ListControl, MayTakeTheListAwayWhenItIsCleared) {
  FakeObject control;
  control.expect_call(L"Clear").does([&] { lists_.call(L"Clear"); });
  EXPECT_EQ(lists_.call(L"FillList", 1, control), false);
}

TEST_F(ListControl, MayFillAnotherOneMeanwhile) {
  FakeObject control, other;
  control.expect_call(L"Clear").does([&] {
    other.expect_call(L"Clear");
    EXPECT_EQ(lists_.call(L"FillList", 2, other), true);
  });
  expect_all_added(control);
  EXPECT_EQ(lists_.call(L"FillList", 1, control), true);
}

TEST_F(ListControl, MayDropTheLastReferenceToTheLists) {
  FakeObject control;
  Object only = Object::create(L"pvItems32.CDLists");
  only.call_object(L"Add", L"k", Value::nothing(), L"c")
      .get_object(L"ListMembers")
      .call(L"Add", L"", L"member", L"");
  IDispatch* bare = only.get();
  control.expect_call(L"Clear").does([&] { only = Object(); });
  control.expect_call(L"AddItem", {L"member"});
  const DISPID id = only.id_of(L"FillList");
  Value second(control), first(1), result;
  VARIANT reversed[] = {second, first};
  DISPPARAMS parameters{reversed, nullptr, 2, 0};
  EXPECT_EQ(bare->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                         nullptr, nullptr),
            S_OK);
  EXPECT_EQ(result, true);
}

}  // namespace
}  // namespace pv::test
