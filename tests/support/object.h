// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/value.h"

namespace pv::test {

/// What a late-bound call answered.
struct Outcome {
  HRESULT result = S_OK;  // of Invoke itself
  Value value;
  HRESULT code = S_OK;  // the member's own error, when result is DISP_E_EXCEPTION
  std::wstring source, description;
  UINT argument = kNoArgument;  // puArgErr as it came back: an index into the reversed arguments

  static constexpr UINT kNoArgument = 0xCCCCCCCC;

  bool worked() const { return SUCCEEDED(result); }
  /// The number that a script sees in Err.Number: 9 for a bad position and so on; the HRESULT for
  /// an error that is no run-time error, 0 for success.
  long number() const;
};
void PrintTo(const Outcome& outcome, std::ostream* out);

/// Thrown by calls that were expected to work; the test framework shows its text.
struct CallFailed : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A late-bound client of an object: calls go by member name through IDispatch, as a script's do.
///
///   Object file = Object::create(L"pvItems32.CFile");
///   file.put(L"Name", L"settings");
///   EXPECT_EQ(file.get(L"Name"), L"settings");
///   EXPECT_EQ(items.try_get(L"Item", 9).number(), 9);        // expected failures: try_...
///   Value width;                                              // by-reference arguments
///   utility.call(L"GetPictureSize", handle, dc, by_ref(height), by_ref(width));
class Object {
 public:
  Object() = default;
  explicit Object(Ref<IDispatch> object) : object_(std::move(object)) {}
  /// The object in a value; empty for Nothing. Throws for any other value.
  explicit Object(const VARIANT& value);

  /// Creates by ProgID. Throws when that fails.
  static Object create(std::wstring_view prog_id);

  explicit operator bool() const { return static_cast<bool>(object_); }
  operator Value() const { return Value(object_); }
  IDispatch* get() const { return object_.get(); }
  bool operator==(const Object& other) const { return Value(*this) == Value(other); }
  template <class I>
  Ref<I> as() const {
    return query<I>(object_.get());
  }

  template <class... A>
  Value get(std::wstring_view member, const A&... arguments) const {
    return checked(member, try_get(member, arguments...));
  }
  template <class... A>
  Object get_object(std::wstring_view member, const A&... arguments) const {
    return Object(get(member, arguments...));
  }
  /// Puts a value; arguments of the property stand before it.
  template <class... A>
  void put(std::wstring_view member, const A&... arguments_and_value) const {
    checked(member, try_put(member, arguments_and_value...));
  }
  /// Sets an object by reference.
  template <class... A>
  void set(std::wstring_view member, const A&... arguments_and_object) const {
    checked(member, try_set(member, arguments_and_object...));
  }
  template <class... A>
  Value call(std::wstring_view member, const A&... arguments) const {
    return checked(member, try_call(member, arguments...));
  }
  template <class... A>
  Object call_object(std::wstring_view member, const A&... arguments) const {
    return Object(call(member, arguments...));
  }

  template <class... A>
  Outcome try_get(std::wstring_view member, const A&... arguments) const {
    return by_name(member, DISPATCH_PROPERTYGET, {Value(arguments)...});
  }
  template <class... A>
  Outcome try_put(std::wstring_view member, const A&... arguments_and_value) const {
    return by_name(member, DISPATCH_PROPERTYPUT, {Value(arguments_and_value)...});
  }
  template <class... A>
  Outcome try_set(std::wstring_view member, const A&... arguments_and_object) const {
    return by_name(member, DISPATCH_PROPERTYPUTREF, {Value(arguments_and_object)...});
  }
  template <class... A>
  Outcome try_call(std::wstring_view member, const A&... arguments) const {
    return by_name(member, DISPATCH_METHOD, {Value(arguments)...});
  }

  /// DISPID_UNKNOWN when the object does not know the member.
  DISPID id_of(std::wstring_view member) const;

  /// The bare call: arguments in the reversed order of the dispatch interface, ids of the named
  /// ones first.
  Outcome invoke(DISPID id, WORD flags, std::span<const VARIANT> reversed_arguments = {},
                 std::span<const DISPID> named = {}) const;

 private:
  Outcome by_name(std::wstring_view member, WORD flags, std::vector<Value> arguments) const;
  static Value checked(std::wstring_view member, Outcome outcome);

  Ref<IDispatch> object_;
};

/// References that an object counts at this moment.
ULONG references_of(IUnknown* object);

}  // namespace pv::test
