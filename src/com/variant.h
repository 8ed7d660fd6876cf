// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

#include "com/automation.h"
#include "com/ref.h"

namespace pv {

/// Owns a BSTR; embedded NULs are kept.
class Bstr {
 public:
  explicit Bstr(std::wstring_view text);
  /// Takes over a text that the platform or another object gave away.
  static Bstr attach(BSTR text) { return Bstr(text, Attached()); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  Bstr(Bstr&& other) noexcept : text_(other.detach()) {}
  Bstr& operator=(Bstr&&) = delete;
  ~Bstr() { SysFreeString(text_); }
  operator BSTR() const { return text_; }
  [[nodiscard]] BSTR detach() { return std::exchange(text_, nullptr); }

 private:
  struct Attached {};
  Bstr(BSTR text, Attached) : text_(text) {}

  BSTR text_;
};

inline std::wstring_view view_of(BSTR text) {
  return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
}

/// Whether a value of this type is all in the VARIANT itself, so that it may be copied and
/// forgotten as it is.
inline bool is_self_contained(VARTYPE type) {
  return type <= VT_DATE || type == VT_BOOL || type == VT_ERROR;
}

/// An automation value that owns what it holds.
// NOLINTNEXTLINE(cppcoreguidelines-special-member-functions): one assignment, by value.
class Variant : public VARIANT {
 public:
  Variant() noexcept : VARIANT() {}  // all zero: an empty value, and Nothing once it is an object
  Variant(const VARIANT& other) : VARIANT() { copy(other); }
  // NOLINTNEXTLINE(bugprone-copy-constructor-init): a copied base would share what the other owns.
  Variant(const Variant& other) : VARIANT() { copy(other); }
  Variant(Variant&& other) noexcept : VARIANT(other.detach()) {}
  explicit Variant(bool value) : VARIANT() {
    vt = VT_BOOL;
    boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  }
  explicit Variant(short value) : VARIANT() {
    vt = VT_I2;
    iVal = value;
  }
  explicit Variant(long value) : VARIANT() {
    vt = VT_I4;
    lVal = value;
  }
  explicit Variant(float value) : VARIANT() {
    vt = VT_R4;
    fltVal = value;
  }
  explicit Variant(double value) : VARIANT() {
    vt = VT_R8;
    dblVal = value;
  }
  explicit Variant(std::wstring_view text);
  explicit Variant(const wchar_t* text) : Variant(std::wstring_view(text)) {}  // else it is a bool
  explicit Variant(Bstr text) noexcept : VARIANT() {
    vt = VT_BSTR;
    bstrVal = text.detach();
  }
  explicit Variant(IDispatch* object);
  ~Variant() {
    if (!is_self_contained(vt)) VariantClear(this);
  }

  Variant& operator=(Variant other) noexcept {
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
    return *this;
  }

  /// Gives the content away and leaves the value empty.
  [[nodiscard]] VARIANT detach() noexcept {
    const VARIANT content = *this;
    vt = VT_EMPTY;
    return content;
  }

  /// The value of an omitted optional argument.
  static Variant missing();

 private:
  void copy(const VARIANT& other);
};

bool is_missing(const VARIANT& value);
bool is_empty_text(const VARIANT& value);

/// The value that references to values lead to, possibly through more than one level: script
/// variables arrive so. It may still be a reference: to a typed variable, or of a chain without
/// end.
inline const VARIANT& innermost(const VARIANT& value) {
  constexpr int kMostLevels = 16;
  const VARIANT* inner = &value;
  for (int level = 0; inner->vt == (VT_BYREF | VT_VARIANT) && level < kMostLevels; ++level) {
    inner = inner->pvarVal;
  }
  return *inner;
}

/// A copy in which a reference is replaced by what it refers to.
Variant dereferenced(const VARIANT& value);

/// Bytes of a value of the type, as parameters and variables have it.
inline std::size_t size_of(VARTYPE type) {
  if (type & (VT_ARRAY | VT_BYREF)) return sizeof(void*);
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_R8:
    case VT_DATE:
    case VT_CY:
    case VT_I8:
    case VT_UI8:
      return 8;
    case VT_DECIMAL:
      return sizeof(DECIMAL);
    case VT_VARIANT:
      return sizeof(VARIANT);
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    default:
      return 4;
  }
}

/// Hands a value over to the variable of its type that a typed reference points to.
void hand_over(Variant typed, const VARIANT& reference);

/// Stores a value, converted, into the variable that a typed reference points to.
HRESULT store_typed(const VARIANT& reference, const VARIANT& value);

/// Conversions of the platform, in the user's locale. Errors: kTypeMismatch, kOverflow,
/// kInvalidNull.
Variant to_type(const VARIANT& value, VARTYPE type);
std::wstring to_text(const VARIANT& value);
bool to_bool(const VARIANT& value);
double to_double(const VARIANT& value);
short to_short(const VARIANT& value);
long to_long(const VARIANT& value);

/// Whether a value stands for no object: Nothing, or what script languages have in its place.
bool is_nothing(const VARIANT& value);

/// The object in a value; errors: kObjectNotSet for Nothing and Null, kTypeMismatch for anything
/// else.
Ref<IDispatch> to_object(const VARIANT& value);

}  // namespace pv
