// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/support/dispatch_object.h"

namespace pv::test {

/// A variable of the host. Its default member, Value, is what a script reads and changes that
/// cannot take a reference.
class Reference final : public DispatchObject {
 public:
  explicit Reference(Value value) : value_(std::move(value)) {}

  Value& value() { return value_; }

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 private:
  DISPID id_of(std::wstring_view member) override;

  Value value_;
};

/// An argument on its way from the source of an event to a script. Engines see references to values
/// only, so a typed one leads to a variable of the host meanwhile.
class PassedArgument {
 public:
  PassedArgument(const VARIANT& given, bool as_reference);

  VARIANT variant() const;
  /// Takes the script's changes to the source of the event.
  void hand_back() const;

 private:
  const VARIANT& given_;
  const bool as_reference_;
  Ref<Reference> variable_;  // of a by-reference argument
};

}  // namespace pv::test
