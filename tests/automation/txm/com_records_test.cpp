// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Command and answer records, and the bounded list of the most recent ones.

#include <gtest/gtest.h>

#include <cmath>

#include "tests/automation/items/item_support.h"
#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

Object make_detail() { return Object::create(L"pvItems32.CComDetail"); }
Object make_history() { return Object::create(L"pvItems32.CComHistory"); }

double now() {
  SYSTEMTIME time;
  GetLocalTime(&time);
  double moment = 0;
  SystemTimeToVariantTime(&time, &moment);
  return moment;
}

TEST(ComDetail, BeginsWithItsDefaults) {
  const double before = now();
  const Object detail = make_detail();
  const double after = now();
  const std::pair<const wchar_t*, Value> defaults[] = {
      {L"Key", L"1"},      {L"Protocol", L"0"},   {L"Connection", 0},   {L"ComSettings", L""},
      {L"DataCount", 0},   {L"ComError", 0},      {L"State", 0},        {L"Repeat", 1},
      {L"TimeOut", 1.0f},  {L"AnswString", L"0"}, {L"AnswLength", 0},   {L"AnswData", L""},
      {L"AnswItemID", 0},  {L"AnswError", 0},     {L"AnswAddress", 0},  {L"CmdLength", 0},
      {L"CmdString", L""}, {L"CmdData", L""},     {L"CmdLetter", L"0"}, {L"CmdItemID", 0},
      {L"CmdAddress", 0},  {L"TxmType", 1},       {L"InBuffer", L""}};
  for (const auto& [property, value] : defaults) {
    EXPECT_EQ(detail.get(property), value) << printable(property);
  }
  const Value stamp = detail.get(L"DateStamp");
  EXPECT_EQ(stamp.vt, VT_DATE);
  EXPECT_GE(stamp.date, before - 1.0 / 86400);
  EXPECT_LE(stamp.date, after + 1.0 / 86400);
}

TEST(ComDetail, KeepsWhatIsSet) {
  const Object detail = make_detail();
  for (const wchar_t* property : {L"Protocol", L"ComSettings", L"AnswString", L"AnswData",
                                  L"CmdString", L"CmdData", L"CmdLetter", L"InBuffer"}) {
    const std::wstring odd = std::wstring(L"\0ő", 2) + property;
    detail.put(property, odd);
    EXPECT_EQ(detail.get(property), odd);
  }
  for (const wchar_t* property :
       {L"Connection", L"DataCount", L"State", L"Repeat", L"AnswLength", L"AnswItemID",
        L"AnswError", L"AnswAddress", L"CmdLength", L"CmdItemID", L"CmdAddress"}) {
    detail.put(property, -32768);
    EXPECT_EQ(detail.get(property), -32768);
    EXPECT_EQ(detail.try_put(property, 32768).number(), DISP_E_OVERFLOW);
  }
  for (const wchar_t* property : {L"ComError", L"TxmType"}) {
    detail.put(property, 70000);
    EXPECT_EQ(detail.get(property), 70000);
  }
  detail.put(L"TimeOut", 0.25f);
  EXPECT_EQ(detail.get(L"TimeOut"), 0.25f);
  detail.put(L"DateStamp", 1.5);
  EXPECT_EQ(detail.get(L"DateStamp").date, 1.5);
}

TEST(ComDetail, TheKeyTakesValuesAndObjects) {
  const Object detail = make_detail();
  const Object other = make_history();
  detail.put(L"Key", 12);
  EXPECT_EQ(detail.get(L"Key"), 12);
  detail.put(L"Key", Value());
  EXPECT_EQ(detail.get(L"Key"), Value());
  detail.set(L"Key", other);
  EXPECT_EQ(detail.get(L"Key"), other);
}

TEST(ComHistory, TheNewestIsFirst) {
  const Object history = make_history();
  EXPECT_EQ(history.get(L"Maximum"), 16);
  const Object first = make_detail(), second = make_detail();
  EXPECT_EQ(history.call(L"Add", first), first);
  EXPECT_EQ(history.call(L"Add", second), second);
  EXPECT_EQ(history.get(L"Item", 1), second);
  EXPECT_EQ(history.get(L"Item", 2), first);
}

TEST(ComHistory, TheSeventeenthTakesThePlaceOfTheOldest) {
  const Object history = make_history();
  for (int i = 1; i <= 17; ++i) {
    const Object detail = make_detail();
    detail.put(L"State", i);
    history.call(L"Add", detail);
    EXPECT_EQ(history.get(L"Count"), std::min(i, 16));
  }
  EXPECT_EQ(history.get_object(L"Item", 1).get(L"State"), 17);
  EXPECT_EQ(history.get_object(L"Item", 16).get(L"State"), 2);
}

// Each new record removes one: the one at the position of the limit.
TEST(ComHistory, ALimitBelowTheCountKeepsTheCount) {
  const Object history = make_history();
  for (int i = 1; i <= 5; ++i) {
    const Object detail = make_detail();
    detail.put(L"State", i);
    history.call(L"Add", detail);
  }
  history.put(L"Maximum", 2);
  EXPECT_EQ(history.get(L"Count"), 5);
  history.call(L"Add", make_detail());
  EXPECT_EQ(history.get(L"Count"), 5);
  const int states[] = {0, 5, 3, 2, 1};
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(history.get_object(L"Item", i + 1).get(L"State"), states[i]);
  }
}

TEST(ComHistory, NoRoomAtAllIsABadPosition) {
  const Object history = make_history();
  for (int maximum : {0, -1}) {
    history.put(L"Maximum", maximum);
    EXPECT_EQ(history.try_call(L"Add", make_detail()).number(), 9);
    EXPECT_EQ(history.get(L"Count"), 0);
  }
}

TEST(ComHistory, ErrorsOfTheCollectionReachTheCaller) {
  const Object history = make_history();
  EXPECT_EQ(history.try_get(L"Item", 1).number(), 9);
  EXPECT_EQ(history.try_get(L"Item", L"1").number(), 5);
  EXPECT_EQ(history.try_call(L"Remove", 1).number(), 9);
  EXPECT_EQ(history.try_call(L"Add", Value::nothing()).number(), 91);
  history.call(L"Add", make_detail());
  history.call(L"Add", make_detail());
  history.call(L"Remove", 1);
  EXPECT_EQ(history.get(L"Count"), 1);
  history.call(L"Clear");
  EXPECT_EQ(history.get(L"Count"), 0);
}

TEST(ComHistory, IsEnumeratedFromTheNewest) {
  const Object history = make_history();
  for (const wchar_t* letter : {L"R", L"W"}) {
    const Object detail = make_detail();
    detail.put(L"CmdLetter", letter);
    history.call(L"Add", detail);
  }
  EXPECT_EQ(texts_of(history, L"CmdLetter"), (Texts{L"W", L"R"}));
}

}  // namespace
}  // namespace pv::test
