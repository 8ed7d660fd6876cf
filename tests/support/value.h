// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "com/variant.h"

namespace pv::test {

/// A value as a client passes it to a late-bound call or gets it back. C++ values convert to it:
/// int and long to VT_I4, short to VT_I2, bool to VT_BOOL, text to VT_BSTR, objects to VT_DISPATCH.
///
/// Comparison is by kind and content: whole numbers of any width are equal when their number is,
/// but a number never equals a text or a Boolean, and a true Boolean is -1 and nothing else.
class Value : public Variant {
 public:
  Value() = default;
  Value(const VARIANT& other) : Variant(other) {}
  Value(Variant&& other) : Variant(std::move(other)) {}
  Value(bool value) : Variant(value) {}
  Value(short value) : Variant(value) {}
  Value(int value) : Variant(static_cast<long>(value)) {}
  Value(long value) : Variant(value) {}
  Value(float value) : Variant(value) {}
  Value(double value) : Variant(value) {}
  Value(const wchar_t* text) : Variant(std::wstring_view(text)) {}
  Value(std::wstring_view text) : Variant(text) {}
  Value(const std::wstring& text) : Variant(std::wstring_view(text)) {}
  Value(IDispatch* object) : Variant(object) {}
  Value(const Ref<IDispatch>& object) : Variant(object.get()) {}

  /// An omitted optional argument, and the other values that scripts have words for.
  static Value missing() { return Variant::missing(); }
  static Value null();
  static Value nothing() { return Value(static_cast<IDispatch*>(nullptr)); }

  bool is_text() const { return vt == VT_BSTR; }
  bool is_whole_number() const;
  bool is_object() const { return vt == VT_DISPATCH || vt == VT_UNKNOWN; }
  bool is_nothing() const { return is_object() && !punkVal; }

  std::wstring text() const { return to_text(*this); }
  long number() const { return to_long(*this); }
  double real() const { return to_double(*this); }
  bool boolean() const { return to_bool(*this); }

  friend bool operator==(const Value& left, const Value& right);
};

/// How test reports show a value and text: readable, quoted, with the variant type.
void PrintTo(const Value& value, std::ostream* out);
std::string printable(std::wstring_view text);

/// A variable of a script, passed by reference (VT_BYREF | VT_VARIANT).
VARIANT by_ref(VARIANT& variable);

/// Variables of compiled clients, passed by reference with their type. The variable outlives the
/// call. VARIANT_BOOL is a short to the compiler and has its own name.
VARIANT by_ref(short& variable);
VARIANT by_ref(long& variable);
VARIANT by_ref(double& variable);
VARIANT by_ref(float& variable);
VARIANT by_ref(BSTR& variable);
VARIANT by_ref(IDispatch*& variable);
VARIANT by_ref_boolean(VARIANT_BOOL& variable);
VARIANT by_ref_of(VARTYPE type, void* variable);

}  // namespace pv::test
