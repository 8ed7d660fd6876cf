// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/dispatch/dispatch_table.h"
#include "com/dispatch/vtable_call.h"
#include "com/variant.h"

namespace pv {

/// Where the value of a by-value parameter can be taken from as it is: the source, or what it
/// refers to, when that has the parameter's type; the plain default of one that is left out. Null
/// for all other arguments, which are to be bound.
const void* plain_argument(const VARIANT* source, const Parameter& parameter);

/// One argument of a late-bound call on its way into a typed parameter and back. The member gets
/// either the caller's own value, where that has the parameter's type, or one that is made for the
/// call; only the latter is owned here.
class Argument {
 public:
  Argument() = default;
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  ~Argument() = default;

  /// Brings the source, null for an omitted argument, to the parameter's type. The source must
  /// outlive this object.
  HRESULT bind(const VARIANT* source, const Parameter& parameter);

  /// An empty value of the parameter's type, which the member fills.
  void bind_result(const Parameter& parameter);

  void push_to(CallWords& words) const;
  static std::size_t words_of(const Parameter& parameter);

  /// After the call: a value that the member changed goes back to the variable that it came from.
  HRESULT write_back();

  /// The result; the caller owns it.
  VARIANT take() { return made_.detach(); }

 private:
  HRESULT bind_default();
  HRESULT bind_by_reference(const VARIANT& source);
  HRESULT bind_by_value(const VARIANT& value);
  HRESULT make(const VARIANT& value);
  HRESULT make_object(const VARIANT& value);
  bool changed() const;

  /// What the parameter points to, or holds, when it gets the value that was made for the call.
  void* made_value() { return is_variant() ? static_cast<void*>(&made_) : &made_.lVal; }
  bool is_variant() const { return parameter_.type() == VT_VARIANT; }

  Parameter parameter_;
  Variant made_;                     // of the parameter's type
  const void* passed_ = nullptr;     // the value that the member gets, or may change
  const VARIANT* origin_ = nullptr;  // the variable that a changed value goes back to, if any
  Variant before_;                   // what it held before the call
};

}  // namespace pv
