// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/dispatch_object.h"
#include "tests/support/object.h"

namespace pv::test {

/// An argument that a fake object expects: a value, or anything.
class Expected {
 public:
  template <class T>
  requires std::convertible_to<T, Value> Expected(T&& value) : value_(std::forward<T>(value)) {}

  static Expected anything() { return Expected(); }
  /// The argument comes by reference: typed for compiled objects, as VT_BYREF | VT_VARIANT for
  /// script objects.
  static Expected reference_to(Value value);

  /// Tells what is wrong with an argument; empty for a match.
  std::string mismatch(const VARIANT& given, bool for_script) const;

 private:
  Expected() = default;

  std::optional<Value> value_;
  bool by_reference_ = false;
};

/// What a fake object does when an expected call comes.
class Answer {
 public:
  Answer& returns(Value value);
  /// Changes the by-reference argument at a position, counted from 0.
  Answer& sets(std::size_t position, Value value);
  Answer& raises(HRESULT code, std::wstring source = L"Host", std::wstring description = L"failed");
  /// Answers a bare error code, without a description.
  Answer& fails(HRESULT code);
  /// Runs foreign code inside the call, as hosts do.
  Answer& does(std::function<void()> action);

 private:
  friend class FakeDispatch;
  struct Change {
    std::size_t position;
    Value value;
  };
  Value result_;
  std::vector<Change> changes_;
  std::optional<RaisedError> error_;
  HRESULT code_ = S_OK;
  std::function<void()> action_;
};

class FakeDispatch;

/// An object of the host, as the library sees one. Every call is declared beforehand, in order,
/// with its arguments and its answer; any other call fails the test, and so does an expected one
/// that never comes (at the latest in the destructor).
///
///   FakeObject list;
///   list.expect_call(L"Clear");
///   list.expect_call(L"AddItem", {L"On"}).raises(E_FAIL);
///   list.expect_get(L"Left").returns(120);
///   list.expect_call(L"Read", {Expected::reference_to(L"")}).sets(0, L"text");
///   EXPECT_EQ(lists.call(L"FillList", 1, list), true);
class FakeObject {
 public:
  using Kind = ObjectKind;

  explicit FakeObject(Kind kind = Kind::kCompiled);
  FakeObject(const FakeObject&) = delete;
  FakeObject& operator=(const FakeObject&) = delete;
  ~FakeObject();

  Answer& expect_call(std::wstring method, std::vector<Expected> arguments = {});
  Answer& expect_get(std::wstring property, std::vector<Expected> arguments = {});
  Answer& expect_put(std::wstring property, std::vector<Expected> arguments_and_value);
  Answer& expect_set(std::wstring property, std::vector<Expected> arguments_and_object);

  /// The object has this member, though no call of it is expected.
  void knows(std::wstring member);

  /// Fails the test for expected calls that did not come; forgets them.
  void verify();

  /// References held by others.
  ULONG references() const;

  IDispatch* get() const;
  operator Value() const { return Value(get()); }

 private:
  Ref<FakeDispatch> dispatch_;
};

}  // namespace pv::test
