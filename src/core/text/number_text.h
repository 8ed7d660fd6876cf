// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Reading and writing numbers as text, independently of the platform's locale.
//
// Every lenient conversion of the library is made here: the reader knows only '.' (callers
// that accept ',' use lenient_number or lenient_number_text), the writers take the decimal
// separator that the user's locale asks for.
#pragma once

#include <cstdint>
#include <limits>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace pv {

/// The longest number at the start of `text`; 0 if there is none, nullopt if it is beyond the range
/// of a double. Blanks (space, tab, CR, LF) are ignored anywhere, the decimal separator is '.', an
/// exponent (e or E) counts only when digits follow it. There is no hexadecimal form.
std::optional<double> parse_leading_number(std::wstring_view text);

/// The value of a text that is one number and nothing else (blanks aside); its first ',' counts as
/// '.'. nullopt for any other text, the empty one included, and beyond the range of a double.
std::optional<double> parse_number(std::wstring_view text);

/// The ordinary text of a number: up to 15 significant digits, 1E+15 and 1E-05 from there on. Zero
/// has no sign.
std::wstring format_number(double value, wchar_t decimal);

/// The ordinary text of a single-precision number: up to 7 significant digits, 1E+07 and 1E-05 from
/// there on.
std::wstring format_number(float value, wchar_t decimal);

/// `value` with exactly `decimals` decimals (taken into 0..8) and at least one integer digit, all
/// digits written out. Rounds half away from zero on the 15 significant digits that format_number
/// shows, so 1.005 becomes 1.01. A result of zero has no sign. Values that are not finite get their
/// general text. `memory` holds the text.
std::pmr::wstring format_fixed(double value, int decimals, wchar_t decimal,
                               std::pmr::polymorphic_allocator<wchar_t> memory = {});

/// Number text: the first ',' read as '.', the leading number written in its ordinary form; "0" on
/// any failure.
std::wstring lenient_number_text(std::wstring_view text, wchar_t decimal);

/// The value of the number text (15 significant digits); 0 on any failure. The first `decimal`, of
/// a user's locale that has another one, counts as '.', too.
double lenient_number(std::wstring_view text, wchar_t decimal = L',');

/// `value` in single precision; nullopt when it is beyond the range of a float (or not finite).
std::optional<float> single_of(double value);

/// `value` rounded to the nearest whole number, ties to the even one; nullopt for values that are
/// not finite.
std::optional<double> round_half_even(double value);

/// `value` rounded half to even; 0 when it does not fit into `Int`.
template <class Int>
Int lenient_integer(double value) {
  const std::optional<double> whole = round_half_even(value);
  // max + 1 is a power of two and therefore exact, also where max itself is not.
  constexpr Int kHalf = std::numeric_limits<Int>::max() / 2 + 1;
  const auto above = static_cast<double>(kHalf) * 2.0;
  const auto least = static_cast<double>(std::numeric_limits<Int>::min());
  if (!whole || *whole < least || *whole >= above) return 0;
  return static_cast<Int>(*whole);
}

/// The value of a text of one to nine digits, with or without a minus sign, and nothing else.
std::optional<std::int32_t> parse_integer(std::wstring_view text);

/// The number at the start of `text` as an integer: the rule of the tolerant integer conversions.
template <class Int>
Int lenient_integer(std::wstring_view text) {
  // Nearly all texts that are asked for an integer hold one.
  if (const std::optional<std::int32_t> value = parse_integer(text)) {
    return std::in_range<Int>(*value) ? static_cast<Int>(*value) : Int{0};
  }
  return lenient_integer<Int>(lenient_number(text));
}

/// Decimal digits of `value`, filled with zeros in front to at least `digits` digits; the sign is
/// not counted.
std::wstring format_padded(long value, int digits);

/// Decimal digits of `value`.
std::wstring format_integer(long value);

/// The same written from `to` on, where there is space for them; gives their end.
wchar_t* write_integer(long value, wchar_t* to);

}  // namespace pv
