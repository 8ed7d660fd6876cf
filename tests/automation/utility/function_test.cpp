// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Function buttons and the forms behind them.

#include <gtest/gtest.h>

#include <cmath>

#include "tests/automation/items/item_support.h"
#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

struct Functions : testing::Test, Transmitter {
  HostObject form{log, "form"};
  Object functions = Object::create(L"pvItems32.CFunctions");
  Object add(const Value& key, const Value& server_form) {
    return functions.call_object(L"Add", key, server_form, 2.0, L"V2", 5);
  }
};

TEST(NewFunction, BeginsWithItsDefaults) {
  const Object function = Object::create(L"pvItems32.CFunction");
  const std::pair<const wchar_t*, Value> defaults[] = {
      {L"FuncType", 1},  {L"Options", Value()}, {L"Version", L"V1.0"}, {L"Key", L""},
      {L"PictureID", 0}, {L"Index", 0},         {L"Active", false},    {L"Protected", 0}};
  for (const auto& [property, value] : defaults) EXPECT_EQ(function.get(property), value);
  EXPECT_TRUE(function.get(L"ServerForm").is_nothing());
  const double date = function.get(L"VerDateTime").date;
  EXPECT_EQ(date, std::floor(date));
  SYSTEMTIME time;
  GetLocalTime(&time);
  double moment = 0;
  SystemTimeToVariantTime(&time, &moment);
  EXPECT_NEAR(date, std::floor(moment), 1);
}

TEST_F(Functions, AddFillsTheEntryAndCountsIt) {
  const Object entry = functions.call_object(L"Add", L"cal", form, 2.5, L"V2", 5, 2, 3);
  EXPECT_EQ(entry.get(L"Key"), L"cal");
  EXPECT_EQ(entry.get(L"ServerForm"), Value(form));
  EXPECT_EQ(entry.get(L"VerDateTime").date, 2.5);
  EXPECT_EQ(entry.get(L"Version"), L"V2");
  EXPECT_EQ(entry.get(L"PictureID"), 5);
  EXPECT_EQ(entry.get(L"FuncType"), 2);
  EXPECT_EQ(entry.get(L"Protected"), 3);
  add(L"b", form);
  EXPECT_EQ(add(L"c", form).get(L"Index"), 3);
  EXPECT_EQ(functions.get(L"Count"), 3);
  EXPECT_EQ(functions.get(L"Item", L"CAL"), entry);
}

TEST_F(Functions, AMissingTypeIsAButton) {
  EXPECT_EQ(add(L"a", form).get(L"FuncType"), 1);
  Value type(0);
  const Object entry = functions.call_object(L"Add", L"b", form, 0.0, L"", 0, by_ref(type), 0);
  EXPECT_EQ(entry.get(L"FuncType"), 1);
  EXPECT_EQ(type, 1);
}

TEST_F(Functions, EntriesWithoutKeyAreReachedByPosition) {
  const Object entry = add(L"", form);
  const Object other = add(L"", form);
  EXPECT_EQ(functions.get(L"Item", 1), entry);
  EXPECT_EQ(functions.get(L"Item", 2), other);
  EXPECT_EQ(functions.try_get(L"Item", L"").number(), 5);
}

TEST_F(Functions, ErrorsOfTheCollectionReachTheCaller) {
  add(L"a", form);
  EXPECT_EQ(functions.try_call(L"Add", L"A", form, 0.0, L"", 0).number(), 457);
  EXPECT_EQ(functions.get(L"Count"), 1);
  EXPECT_EQ(functions.try_get(L"Item", 2).number(), 9);
  EXPECT_EQ(functions.try_call(L"Remove", L"x").number(), 5);
  functions.call(L"Remove", L"a");
  functions.call(L"Clear");
  EXPECT_EQ(functions.get(L"Count"), 0);
}

TEST_F(Functions, StartTellsTheFormTransmitterAndTitle) {
  server.answer(L"FunctionTitle", L"Calibration");
  Value active;
  const Object entry = add(L"a", form);
  for (bool answer : {true, false}) {
    entry.put(L"Active", false);
    form.on(L"Start", [&](const Arguments&) {
      active = entry.get(L"Active");
      return Value(answer);
    });
    EXPECT_EQ(entry.call(L"Start", txm), answer);
    EXPECT_EQ(active, true);
    EXPECT_EQ(entry.get(L"Active"), true);
    EXPECT_EQ(calls(), (Lines{"call server.FunctionTitle(I2& 1)",
                              "call form.Start(DISPATCH txm, BSTR \"Calibration\")"}));
  }
}

TEST_F(Functions, ErrorsOfTheFormReachTheCaller) {
  server.answer(L"FunctionTitle", L"");
  form.fail(L"Start");
  form.fail(L"CloseMe");
  const Object entry = add(L"a", form);
  EXPECT_EQ(entry.try_call(L"Start", txm).number(), 1234);
  EXPECT_EQ(entry.get(L"Active"), true);
  EXPECT_EQ(entry.try_call(L"Finish").number(), 1234);
}

TEST_F(Functions, FinishLetsTheFormCloseThenUnloadsIt) {
  const Object entry = add(L"a", form);
  entry.put(L"Active", true);
  EXPECT_EQ(entry.call(L"Finish"), true);
  EXPECT_EQ(entry.get(L"Active"), false);
  EXPECT_EQ(calls(), (Lines{"put form.CloseMe = BOOL True", "call form.Unload"}));
}

TEST_F(Functions, AFormThatCannotBeUnloadedIsOnlyTold) {
  form.lacks(L"Unload");
  EXPECT_EQ(add(L"a", form).call(L"Finish"), true);
  EXPECT_EQ(calls(), Lines{"put form.CloseMe = BOOL True"});
}

TEST_F(Functions, WithoutAFormNothingHappens) {
  const Object entry = add(L"a", Value::nothing());
  EXPECT_EQ(entry.call(L"Start", txm), false);
  EXPECT_EQ(entry.get(L"Active"), false);
  EXPECT_EQ(entry.call(L"Finish"), false);
  EXPECT_EQ(calls(), Lines());
}

TEST_F(Functions, KeyAndOptionsTakeValuesAndObjects) {
  const Object entry = add(5, form);
  entry.put(L"Key", 7.5);
  EXPECT_EQ(entry.get(L"Key"), 7.5);
  entry.set(L"Key", txm);
  EXPECT_EQ(entry.get(L"Key"), txm);
  entry.set(L"Options", items);
  EXPECT_EQ(entry.get(L"Options"), items);
  entry.put(L"Options", L"text");
  EXPECT_EQ(entry.get(L"Options"), L"text");
}

TEST_F(Functions, AreEnumeratedInTheirOrder) {
  for (const wchar_t* key : {L"b", L"a"}) add(key, form);
  EXPECT_EQ(texts_of(functions, L"Key"), (Texts{L"b", L"a"}));
}

}  // namespace
}  // namespace pv::test
