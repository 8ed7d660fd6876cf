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
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  ~Bstr() { SysFreeString(text_); }
  operator BSTR() const { return text_; }
  [[nodiscard]] BSTR detach() { return std::exchange(text_, nullptr); }

 private:
  BSTR text_;
};

inline std::wstring_view view_of(BSTR text) {
  return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
}

/// An automation value that owns what it holds.
class Variant : public VARIANT {
 public:
  Variant() noexcept { VariantInit(this); }
  Variant(const VARIANT& other);
  Variant(const Variant& other) : Variant(static_cast<const VARIANT&>(other)) {}
  Variant(Variant&& other) noexcept;
  explicit Variant(bool value);
  explicit Variant(short value);
  explicit Variant(long value);
  explicit Variant(float value);
  explicit Variant(double value);
  explicit Variant(std::wstring_view text);
  explicit Variant(const wchar_t* text) : Variant(std::wstring_view(text)) {}  // else it is a bool
  explicit Variant(IDispatch* object);
  ~Variant() { VariantClear(this); }

  Variant& operator=(Variant other) noexcept;

  /// Gives the content away and leaves the value empty.
  [[nodiscard]] VARIANT detach() noexcept;

  /// The value of an omitted optional argument.
  static Variant missing();
};

bool is_missing(const VARIANT& value);
bool is_empty_text(const VARIANT& value);

/// A copy in which a reference is replaced by what it refers to.
Variant dereferenced(const VARIANT& value);

/// Conversions of the platform, in the user's locale. Errors: kTypeMismatch, kOverflow,
/// kInvalidNull.
Variant converted(const VARIANT& value, VARTYPE type);
std::wstring text_of(const VARIANT& value);
bool boolean_of(const VARIANT& value);
double double_of(const VARIANT& value);
short short_of(const VARIANT& value);
long long_of(const VARIANT& value);

/// The object in a value; errors: kObjectNotSet for Nothing, kTypeMismatch for anything else.
Ref<IDispatch> object_of(const VARIANT& value);

}  // namespace pv
