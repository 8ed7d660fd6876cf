// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The log of errors that a host fills and shows.

#include <gtest/gtest.h>

#include "tests/automation/utility/utility_support.h"
#include "tests/support/members.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

constexpr DATE kNoon = 45000.5;

class Errors : public testing::Test {
 protected:
  Object add(const Value& number, const Value& description = L"text",
             const Value& tag = Value::missing()) const {
    return errors_.call_object(L"Add", number, description, kNoon, tag);
  }
  std::vector<long> numbers_of(const wchar_t* property) const {
    std::vector<long> numbers;
    for (const Object& error : members_of(errors_)) numbers.push_back(error.get(property).number());
    return numbers;
  }
  using Numbers = std::vector<long>;

  const Object errors_ = Object::create(L"pvItems32.Cerrors");
};

TEST_F(Errors, BeginEmpty) {
  EXPECT_EQ(errors_.get(L"Count"), 0);
  EXPECT_EQ(errors_.get(L"Count").vt, VT_I4);
  EXPECT_TRUE(members_of(errors_).empty());
  EXPECT_EQ(errors_.id_of(L"Item"), DISPID_VALUE);
}

TEST_F(Errors, AddGivesTheNewEntryWithItsFields) {
  add(1);
  const Object error = add(-2147024809, L"bad \u0150\0x"s, L"item 7");
  EXPECT_EQ(error.get(L"Number"), -2147024809);
  EXPECT_EQ(error.get(L"Number").vt, VT_I4);
  EXPECT_EQ(error.get(L"Description"), L"bad \u0150\0x"s);
  EXPECT_EQ(error.get(L"When").vt, VT_DATE);
  EXPECT_EQ(error.get(L"When").date, kNoon);
  EXPECT_EQ(error.get(L"Tag"), L"item 7");
  EXPECT_EQ(error.get(L"Index"), 2);
  EXPECT_EQ(error.get(L"Index").vt, VT_I4);
  EXPECT_EQ(errors_.get_object(L"Item", 2), error);
  EXPECT_EQ(errors_.get(L"Count"), 2);
}

TEST_F(Errors, AddWithoutTagLeavesItEmpty) {
  EXPECT_EQ(add(1).get(L"Tag").vt, VT_EMPTY);
  EXPECT_EQ(errors_.call_object(L"Add", 2, L"x", kNoon).get(L"Tag").vt, VT_EMPTY);
}

TEST_F(Errors, TagsAreAnything) {
  for (const Value& tag : {Value(7), Value(true), Value(1.5), Value::null(), Value()}) {
    EXPECT_EQ(add(1, L"x", tag).get(L"Tag"), tag);
  }
  const Object item = Object::create(L"pvItems32.CItem");
  EXPECT_EQ(add(1, L"x", item).get_object(L"Tag"), item);
  EXPECT_TRUE(add(1, L"x", Value::nothing()).get(L"Tag").is_nothing());
  Value variable(L"changed later");
  const Object error = add(1, L"x", by_ref(variable));
  variable = Value(L"new");
  EXPECT_EQ(error.get(L"Tag"), L"changed later");
}

TEST_F(Errors, TheNumberIsAnyValueThatIsOne) {
  EXPECT_EQ(add(L"12").get(L"Number"), 12);
  EXPECT_EQ(add(2.5).get(L"Number"), 2);
  EXPECT_EQ(add(in_user_locale(L"3.5")).get(L"Number"), 4);
  EXPECT_EQ(add(true).get(L"Number"), -1);
  EXPECT_EQ(add(Value()).get(L"Number"), 0);
  Value variable(static_cast<short>(7));
  EXPECT_EQ(add(by_ref(variable)).get(L"Number"), 7);
}

TEST_F(Errors, WhatIsNoNumberIsRefusedAndNothingAdded) {
  const auto number = [&](const Value& value) {
    return errors_.try_call(L"Add", value, L"x", kNoon).number();
  };
  EXPECT_EQ(number(L"abc"), 13);
  EXPECT_EQ(number(Value::null()), 94);
  EXPECT_EQ(number(1e10), 6);
  EXPECT_EQ(errors_.get(L"Count"), 0);
}

TEST_F(Errors, RemoveNumbersTheRemainingEntriesAnew) {
  add(10);
  add(20);
  add(30);
  errors_.call(L"Remove", 2);
  EXPECT_EQ(numbers_of(L"Number"), (Numbers{10, 30}));
  EXPECT_EQ(numbers_of(L"Index"), (Numbers{1, 2}));
  EXPECT_EQ(add(40).get(L"Index"), 3);
}

TEST_F(Errors, RemovedEntriesKeepTheirIndex) {
  add(10);
  const Object second = add(20);
  errors_.call(L"Remove", 2);
  errors_.call(L"Remove", 1);
  EXPECT_EQ(second.get(L"Index"), 2);
}

TEST_F(Errors, ReIndexNumbersByPosition) {
  for (const int number : {10, 20, 30}) add(number).put(L"Index", 100 - number);
  EXPECT_EQ(numbers_of(L"Index"), (Numbers{90, 80, 70}));
  errors_.call(L"ReIndex");
  EXPECT_EQ(numbers_of(L"Index"), (Numbers{1, 2, 3}));
  EXPECT_EQ(numbers_of(L"Number"), (Numbers{10, 20, 30}));
}

TEST_F(Errors, WhatIsNotThereIsAnError) {
  add(10).put(L"Index", 77);
  const Value indices[] = {0, 2, -1, L"1", L"", Value(), Value::null()};
  const long expected[] = {9, 9, 9, 5, 5, 13, 94};
  for (std::size_t i = 0; i < std::size(indices); ++i) {
    EXPECT_EQ(errors_.try_get(L"Item", indices[i]).number(), expected[i]);
    EXPECT_EQ(errors_.try_call(L"Remove", indices[i]).number(), expected[i]);
  }
  EXPECT_EQ(numbers_of(L"Index"), Numbers{77});  // nothing was removed, nothing numbered
}

TEST_F(Errors, ClearEmptiesTheList) {
  errors_.call(L"Clear");
  add(1);
  const Object kept = add(2);
  errors_.call(L"Clear");
  EXPECT_EQ(errors_.get(L"Count"), 0);
  EXPECT_EQ(kept.get(L"Number"), 2);
  EXPECT_EQ(add(3).get(L"Index"), 1);
}

TEST_F(Errors, EnumerationIsInTheOrderOfAdding) {
  for (const int number : {3, 1, 2}) add(number);
  EXPECT_EQ(numbers_of(L"Number"), (Numbers{3, 1, 2}));
}

TEST_F(Errors, MayBeMany) {
  for (int i = 1; i <= 2000; ++i) add(i);
  for (int i = 0; i < 1000; ++i) errors_.call(L"Remove", 1);
  EXPECT_EQ(errors_.get_object(L"Item", 1000).get(L"Index"), 1000);
  EXPECT_EQ(errors_.get_object(L"Item", 1).get(L"Number"), 1001);
}

// --- One error

TEST(Error, BeginsEmpty) {
  const Object error = Object::create(L"pvItems32.CError");
  EXPECT_EQ(error.get(L"Number"), 0);
  EXPECT_EQ(error.get(L"Description"), L"");
  EXPECT_EQ(error.get(L"When").date, 0);
  EXPECT_EQ(error.get(L"Tag").vt, VT_EMPTY);
  EXPECT_EQ(error.get(L"Index"), 0);
}

TEST(Error, ItsNumberIsTheDefaultMember) {
  const Object error = Object::create(L"pvItems32.CError");
  error.put(L"Number", 70'000);
  EXPECT_EQ(error.id_of(L"Number"), DISPID_VALUE);
  EXPECT_EQ(error.invoke(DISPID_VALUE, DISPATCH_PROPERTYGET).value, 70'000);
}

TEST(Error, KeepsWhatItIsGiven) {
  const Object error = Object::create(L"pvItems32.CError");
  error.put(L"Description", L"a\0b"s);
  error.put(L"When", as_type(VT_DATE, kNoon));
  error.put(L"Tag", 5);
  error.put(L"Index", 100'000);
  EXPECT_EQ(error.get(L"Description"), L"a\0b"s);
  EXPECT_EQ(error.get(L"When").date, kNoon);
  EXPECT_EQ(error.get(L"Tag"), 5);
  EXPECT_EQ(error.get(L"Index"), 100'000);
  error.set(L"Tag", error);
  EXPECT_EQ(error.get_object(L"Tag"), error);
  error.put(L"Tag", Value());  // an object that holds itself would never go
}

}  // namespace
}  // namespace pv::test
