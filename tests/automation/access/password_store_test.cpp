// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The password store without its dialog: collection, settings text, encoding and events.

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"
#include "tests/support/members.h"
#include "tests/support/user_locale.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

constexpr int kEntry = 1020;  // the field of the dialog that a password is typed into

class PasswordStore : public testing::Test {
 protected:
  PasswordStore() { listener_.numbers({L"OnPasswordSet", L"OnPasswordReset"}); }

  Object add(const wchar_t* reference, const wchar_t* current = L"") const {
    return store_.call_object(L"Add", reference, current);
  }
  Object password(int index) const { return store_.get_object(L"Item", index); }
  std::wstring encoded(std::wstring_view text) const {
    return store_.call(L"Encode64", text).text();
  }
  std::vector<long> indexes() const {
    std::vector<long> indexes;
    for (const Object& each : members_of(store_)) indexes.push_back(each.get(L"Index").number());
    return indexes;
  }
  using Indexes = std::vector<long>;
  Texts references() const { return texts_of(store_, L"Reference"); }
  Texts entered() const { return texts_of(store_, L"Current"); }
  Lines events() { return log_.taken(); }

  const Object store_ = Object::create(L"pvItems32.CPasswords");
  CallLog log_;
  HostObject listener_{log_, "host"};
  Connection connection_{store_, listener_, __uuidof(__CPasswords)};
};

std::string set_event(int index) {
  return "call host.OnPasswordSet(I2 " + std::to_string(index) + ")";
}
std::string reset_event(int index) {
  return "call host.OnPasswordReset(I2 " + std::to_string(index) + ")";
}

// --- One password

TEST(Password, BeginsEmptyAndOpen) {
  const Object password = Object::create(L"pvItems32.CPassword");
  EXPECT_EQ(password.get(L"Index"), 0);
  EXPECT_EQ(password.get(L"Index").vt, VT_I2);
  EXPECT_EQ(password.get(L"Reference"), L"");
  EXPECT_EQ(password.get(L"Current"), L"");
  EXPECT_EQ(password.call(L"Status"), true);
}

TEST(Password, IsOpenWhileTheTextsAreExactlyEqual) {
  const Object password = Object::create(L"pvItems32.CPassword");
  const struct {
    std::wstring reference, current;
    bool open;
  } rows[] = {{L"Secret", L"Secret", true},
              {L"Secret", L"secret", false},
              {L"Secret", L"Secret ", false},
              {L"Secret", L"", false},
              {L"", L"x", false},
              {L"a\0b"s, L"a\0b"s, true},
              {L"a\0b"s, L"a\0c"s, false},
              {L"a", L"a\0"s, false},
              {L"\u00E9", L"e\u0301", false},
              {L"\u8A9E", L"\u8A9E", true}};
  for (const auto& row : rows) {
    password.put(L"Reference", row.reference);
    password.put(L"Current", row.current);
    EXPECT_EQ(password.call(L"Status"), row.open) << printable(row.reference);
    EXPECT_EQ(password.get(L"Reference"), row.reference);
    EXPECT_EQ(password.get(L"Current"), row.current);
  }
}

TEST(Password, CurrentIsTheDefaultMember) {
  const Object password = Object::create(L"pvItems32.CPassword");
  EXPECT_EQ(password.id_of(L"Current"), DISPID_VALUE);
  password.put(L"Current", L"x");
  EXPECT_EQ(password.invoke(DISPID_VALUE, DISPATCH_PROPERTYGET).value, L"x");
}

TEST(Password, IndexIsAnyShortNumber) {
  const Object password = Object::create(L"pvItems32.CPassword");
  password.put(L"Index", -32768);
  EXPECT_EQ(password.get(L"Index"), -32768);
  EXPECT_EQ(password.try_put(L"Index", 32768).result, DISP_E_OVERFLOW);
}

// --- The collection

TEST_F(PasswordStore, BeginsEmpty) {
  EXPECT_EQ(store_.get(L"Count"), 0);
  EXPECT_EQ(store_.get(L"Count").vt, VT_I4);
  EXPECT_EQ(store_.id_of(L"Item"), DISPID_VALUE);
  EXPECT_TRUE(members_of(store_).empty());
}

TEST_F(PasswordStore, AddGivesTheNewPasswordWithItsIndex) {
  add(L"one");
  const Object second = add(L"two", L"2");
  EXPECT_EQ(second, password(2));
  EXPECT_EQ(second.get(L"Reference"), L"two");
  EXPECT_EQ(second.get(L"Current"), L"2");
  EXPECT_EQ(indexes(), (Indexes{1, 2}));
  EXPECT_EQ(store_.get(L"Count"), 2);
  EXPECT_EQ(events(), Lines{});
}

TEST_F(PasswordStore, RemoveDoesNotNumberTheOthers) {
  add(L"one");
  add(L"two");
  add(L"three");
  store_.call(L"Remove", 1);
  EXPECT_EQ(references(), (Texts{L"two", L"three"}));
  EXPECT_EQ(indexes(), (Indexes{2, 3}));
  EXPECT_EQ(add(L"four").get(L"Index"), 3);  // the count before, plus one
  store_.call(L"ReIndex");
  EXPECT_EQ(indexes(), (Indexes{1, 2, 3}));
}

TEST_F(PasswordStore, ReIndexAndClearOfNothingDoNothing) {
  store_.call(L"ReIndex");
  store_.call(L"Clear");
  add(L"one");
  store_.call(L"Clear");
  EXPECT_EQ(store_.get(L"Count"), 0);
}

TEST_F(PasswordStore, WhatIsNotThereIsAnError) {
  add(L"one");
  const Value indices[] = {0, 2, -1, L"1", L"one", Value(), Value::null()};
  const long expected[] = {9, 9, 9, 5, 5, 13, 94};
  for (std::size_t i = 0; i < std::size(indices); ++i) {
    EXPECT_EQ(store_.try_get(L"Item", indices[i]).number(), expected[i]);
    EXPECT_EQ(store_.try_call(L"Remove", indices[i]).number(), expected[i]);
  }
  EXPECT_EQ(store_.get(L"Count"), 1);
}

TEST_F(PasswordStore, IndexesEndWith16Bits) {
  std::wstring many = L"32767|";
  for (int i = 0; i < 32767; ++i) many += L"||";
  EXPECT_EQ(store_.call(L"Load", many), 32767);
  EXPECT_EQ(store_.try_call(L"Add", L"one", L"more").number(), 6);
  EXPECT_EQ(store_.get(L"Count"), 32767);
}

// --- Status

TEST_F(PasswordStore, StatusOfAnOpenPasswordAsksNobody) {
  add(L"one", L"one");
  add(L"two", L"two");
  EXPECT_EQ(store_.call(L"Status"), true);
  EXPECT_EQ(store_.call(L"Status", 2), true);
  EXPECT_EQ(events(), Lines{});
}

TEST_F(PasswordStore, StatusOfAnUnknownPasswordIsAnError) {
  EXPECT_EQ(store_.try_call(L"Status").number(), 9);
  add(L"one");
  for (const int index : {0, 2, -1}) {
    EXPECT_EQ(store_.try_call(L"Status", index).number(), 9) << index;
  }
}

TEST_F(PasswordStore, StatusOfAClosedPasswordAsksForItOnce) {
  add(L"one", L"one");
  add(L"two", L"old");
  {
    const DialogResponder cancels(DialogResponder::kSecond);
    EXPECT_EQ(store_.call(L"Status", 2), false);
    EXPECT_EQ(cancels.shown().size(), 1u);
  }
  EXPECT_EQ(entered(), (Texts{L"one", L"old"}));
  EXPECT_EQ(events(), Lines{});
  const DialogResponder enters(DialogResponder::kFirst, {{kEntry, L"two"}});
  EXPECT_EQ(store_.call(L"Status", 2), true);
  EXPECT_EQ(enters.shown().size(), 1u);
  EXPECT_EQ(events(), Lines{set_event(2)});
}

// An empty entry closes the password and ends with OK: it is not open all the same.
TEST_F(PasswordStore, StatusIsThatAfterTheDialog) {
  add(L"one", L"old");
  const DialogResponder closes(DialogResponder::kFirst, {{kEntry, L""}});
  EXPECT_EQ(store_.call(L"Status", 1), false);
  EXPECT_EQ(entered(), Texts{L""});
  EXPECT_EQ(events(), Lines{reset_event(1)});
}

// --- Edit and events

TEST_F(PasswordStore, EditOfAnUnknownIndexShowsNothing) {
  add(L"one");
  for (const Value& index : {Value(0), Value(2), Value(-1), Value(L"1"), Value(L""), Value(),
                             Value::null(), Value::nothing(), Value(1e300)}) {
    EXPECT_EQ(store_.call(L"Edit", index), false) << testing::PrintToString(index);
  }
  EXPECT_EQ(events(), Lines{});
}

TEST_F(PasswordStore, EventsCarryTheIndexThatWasGivenToEdit) {
  add(L"zero");
  add(L"one");
  store_.call(L"Remove", 1);
  ASSERT_EQ(indexes(), Indexes{2});
  Value variable(1.0);
  for (const Value& index : {Value(1), Value(static_cast<short>(1)), Value(by_ref(variable))}) {
    {
      const DialogResponder enters(DialogResponder::kFirst, {{kEntry, L"one"}});
      EXPECT_EQ(store_.call(L"Edit", index), true);
    }
    const DialogResponder closes(DialogResponder::kFirst, {{kEntry, L""}});
    EXPECT_EQ(store_.call(L"Edit", index), true);
    EXPECT_EQ(events(), (Lines{set_event(1), reset_event(1)}));
  }
}

TEST_F(PasswordStore, RaiseMembersRaiseTheEventsForAnyIndex) {
  for (const int index : {1, 0, -32768, 32767}) {
    EXPECT_EQ(store_.call(L"RaiseOnPasswordSet", index), Value());
    EXPECT_EQ(store_.call(L"RaiseOnPasswordReset", index), Value());
    EXPECT_EQ(events(), (Lines{set_event(index), reset_event(index)}));
  }
  EXPECT_EQ(store_.try_call(L"RaiseOnPasswordSet", 32768).result, DISP_E_OVERFLOW);
}

TEST_F(PasswordStore, EveryListenerHearsInOrderUntilItGoes) {
  HostObject other(log_, "other");
  other.numbers({L"OnPasswordSet", L"OnPasswordReset"});
  Connection second(store_, other, __uuidof(__CPasswords));
  listener_.fail(L"OnPasswordSet");  // what a listener answers does not matter
  store_.call(L"RaiseOnPasswordSet", 3);
  EXPECT_EQ(events(), (Lines{set_event(3), "call other.OnPasswordSet(I2 3)"}));
  connection_.disconnect();
  store_.call(L"RaiseOnPasswordReset", 4);
  EXPECT_EQ(events(), (Lines{"call other.OnPasswordReset(I2 4)"}));
}

TEST_F(PasswordStore, ListenersMayChangeTheStore) {
  listener_.on(L"OnPasswordReset", [&](const Arguments&) {
    store_.call(L"Clear");
    return Value();
  });
  EXPECT_EQ(store_.call(L"Load", L"2|" + encoded(L"a") + L"||" + encoded(L"b") + L"||"), 2);
  EXPECT_EQ(events(), (Lines{reset_event(1), reset_event(1)}));
  EXPECT_EQ(store_.get(L"Count"), 0);
}

// --- Save and Load

TEST_F(PasswordStore, SavedEmptyIsTheNumberZero) {
  EXPECT_EQ(store_.call(L"Save"), L"0|");
  add(L"x");
  EXPECT_EQ(store_.call(L"Load", L"0|"), 0);
  EXPECT_EQ(store_.call(L"Load", L"0|").vt, VT_I2);
  EXPECT_EQ(store_.get(L"Count"), 0);
  EXPECT_EQ(events(), Lines{});
}

TEST_F(PasswordStore, SavedIsTheNumberAndTheCodesOfAllTexts) {
  add(L"");
  EXPECT_EQ(store_.call(L"Save"), L"1|||");
  add(L"\x01\x02\x03", L"\x01");
  EXPECT_EQ(store_.call(L"Save"), L"2|||BIwA|BA**|");
}

TEST_F(PasswordStore, ComesBackAsItWasSaved) {
  add(L"one", L"one");
  add(L"Tw|o", L"");
  add(L"", L"");
  add(L"\u00E9\r\n ", L"wrong");
  const std::wstring saved = store_.call(L"Save").text();
  const Object other = Object::create(L"pvItems32.CPasswords");
  const Connection connection(other, listener_, __uuidof(__CPasswords));
  EXPECT_EQ(other.call(L"Load", saved), 4);
  EXPECT_EQ(texts_of(other, L"Reference"), references());
  EXPECT_EQ(texts_of(other, L"Current"), entered());
  EXPECT_EQ(events(), (Lines{set_event(1), reset_event(2), set_event(3), reset_event(4)}));
  EXPECT_EQ(other.call(L"Save"), saved);
}

TEST_F(PasswordStore, LoadReplacesWhatWasThere) {
  add(L"old");
  add(L"older");
  EXPECT_EQ(store_.call(L"Load", L"1|" + encoded(L"new") + L"||"), 1);
  EXPECT_EQ(references(), Texts{L"new"});
  EXPECT_EQ(indexes(), Indexes{1});
}

TEST_F(PasswordStore, LoadHasAddedEachPasswordWhenItTellsOfIt) {
  std::vector<long> counts;
  const auto count = [&](const Arguments&) {
    counts.push_back(store_.get(L"Count").number());
    return Value();
  };
  listener_.on(L"OnPasswordSet", count);
  listener_.on(L"OnPasswordReset", count);
  store_.call(L"Load", L"3|||BA**||||");
  EXPECT_EQ(counts, (std::vector<long>{1, 2, 3}));
}

TEST_F(PasswordStore, LoadPassesOverWhatFollows) {
  EXPECT_EQ(store_.call(L"Load", L"1|BA**|BA**|rest|of|it"), 1);
  EXPECT_EQ(references(), Texts{L"\x01"});
}

TEST_F(PasswordStore, LoadOfWhatIsNoNumberChangesNothing) {
  add(L"kept");
  for (const wchar_t* text : {L"", L"|", L"abc", L"x|BA**|BA**|", L"1x|||", L"||||"}) {
    EXPECT_EQ(store_.try_call(L"Load", text).number(), 13) << printable(text);
  }
  EXPECT_EQ(references(), Texts{L"kept"});
  EXPECT_EQ(events(), Lines{});
}

TEST_F(PasswordStore, LoadOfTooFewElementsKeepsWhatWasReadSoFar) {
  const struct {
    const wchar_t* text;
    Texts read;
  } rows[] = {{L"1", {}},
              {L"1|", {}},
              {L"2|BA**|BA**", {L"\x01"}},
              {L"2|BA**|BA**|", {L"\x01"}},
              {L"3|BA**|BA**|BA**|", {L"\x01", L"\x01"}},
              {L"2000000000|BA**||BA**||", {L"\x01", L"\x01"}},
              {L"1E300|BA**||", {L"\x01"}}};
  for (const auto& row : rows) {
    add(L"old");
    EXPECT_EQ(store_.try_call(L"Load", row.text).number(), 9) << printable(row.text);
    EXPECT_EQ(references(), row.read) << printable(row.text);
    EXPECT_EQ(events().size(), row.read.size());
    store_.call(L"Clear");
  }
}

TEST_F(PasswordStore, LoadTakesTheNumberAsThePlatformReadsIt) {
  EXPECT_EQ(store_.call(L"Load", L" 1 |BA**||"), 1);
  EXPECT_EQ(store_.get(L"Count"), 1);
  EXPECT_EQ(store_.call(L"Load", L"-2|BA**||"), -2);
  EXPECT_EQ(store_.get(L"Count"), 0);
  // Half a password more: three elements are asked for, which are one and a half.
  EXPECT_EQ(store_.call(L"Load", in_user_locale(L"1.5") + L"|BA**||BA**||"), 2);
  EXPECT_EQ(store_.get(L"Count"), 2);
}

TEST_F(PasswordStore, LoadGivesANumberOf16Bits) {
  EXPECT_EQ(store_.try_call(L"Load", L"-40000|").number(), 6);
  EXPECT_EQ(store_.get(L"Count"), 0);
}

}  // namespace
}  // namespace pv::test
