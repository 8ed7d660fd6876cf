// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Number text: the reader agrees with the C library on the longest number, what is written reads
// the same, and the conversions round as they promise. The first eight bytes also stand for a
// double.

#include "core/text/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

#include "core/items/item_record.h"
#include "tests/fuzz/target.h"
#include "tests/unit/items/plain_boolean.h"

namespace pv::fuzz {
namespace {

constexpr std::wstring_view kBlanks = L" \t\r\n";

std::wstring without_blanks(std::wstring text) {
  std::erase_if(text, [](wchar_t c) { return kBlanks.find(c) != std::wstring_view::npos; });
  return text;
}

bool is_digit(wchar_t c) { return c >= L'0' && c <= L'9'; }

std::size_t past_digits(const std::wstring& text, std::size_t at) {
  while (at < text.size() && is_digit(text[at])) ++at;
  return at;
}

/// Length of the longest number that a text without blanks begins with; 0 for none.
std::size_t number_length(const std::wstring& text) {
  const auto is = [&](std::size_t at, std::wstring_view any_of) {
    return at < text.size() && any_of.find(text[at]) != std::wstring_view::npos;
  };
  const std::size_t begin = is(0, L"+-") ? 1 : 0;
  const std::size_t point = past_digits(text, begin);
  const std::size_t end = is(point, L".") ? past_digits(text, point + 1) : point;
  const std::size_t digits = end - begin - (is(point, L".") ? 1 : 0);
  if (digits == 0) return 0;
  if (!is(end, L"eE")) return end;
  const std::size_t exponent = end + (is(end + 1, L"+-") ? 2 : 1);
  const std::size_t exponent_end = past_digits(text, exponent);
  return exponent_end > exponent ? exponent_end : end;
}

/// The C library's value of the number; infinite beyond the range of a double.
double plain_value(const std::wstring& text) {
  const std::wstring all = without_blanks(text);
  const std::wstring number = all.substr(0, number_length(all));
  return std::strtod(std::string(number.begin(), number.end()).c_str(), nullptr);
}

std::wstring with_point(std::wstring text) {
  if (const auto at = text.find(L','); at != std::wstring::npos) text[at] = L'.';
  return text;
}

template <class Int>
void require_integer(const std::wstring& text, double value) {
  const double whole = std::nearbyint(value);  // half to even
  const bool fits = whole >= static_cast<double>(std::numeric_limits<Int>::min()) &&
                    whole <= static_cast<double>(std::numeric_limits<Int>::max());
  require(lenient_integer<Int>(text) == (fits ? static_cast<Int>(whole) : 0),
          "an integer is rounded half to even, or 0 where it does not fit");
}

void require_reads(const std::wstring& text) {
  const double expected = plain_value(text);
  const auto value = parse_leading_number(text);
  require(value.has_value() == std::isfinite(expected), "only a number beyond the range fails");
  require(!value || *value == expected, "the longest number is read, to the nearest double");
  require(parse_leading_number(without_blanks(text)) == value, "blanks do not matter");
  require(parse_leading_number(text + L"|1") == value, "a number ends where it cannot go on");

  const std::wstring normal = lenient_number_text(text, L',');
  // The text of the largest doubles is rounded up beyond their range.
  const bool is_number = parse_leading_number(with_point(normal)).has_value();
  require(lenient_number_text(normal, L',') == (is_number ? normal : L"0"),
          "number text stays as it is");
  require(with_point(normal) == lenient_number_text(text, L'.'), "the separators differ, no more");
  require(lenient_number(normal) == lenient_number(text), "number text has the value of the text");
  require(lenient_number(with_point(text)) == lenient_number(text), "a comma is a point");
  const auto whole = parse_number(text);
  require(!whole || *whole == parse_leading_number(with_point(text)), "a whole number is a number");
  require(parse_number(L"\t" + text + L" ") == whole, "blanks around do not matter");
  require(parse_boolean(normal, plain_boolean) == (lenient_number(normal) != 0),
          "number text is true unless it is 0");

  require_integer<std::uint8_t>(text, lenient_number(text));
  require_integer<std::int16_t>(text, lenient_number(text));
  require_integer<std::int32_t>(text, lenient_number(text));
}

void require_fixed(double value, int decimals) {
  const std::wstring text(format_fixed(value, decimals, L'.'));
  const std::size_t point = text.find(L'.');
  const std::size_t sign = text.starts_with(L'-') ? 1 : 0;
  const std::size_t end = std::min(point, text.size());
  require(end > sign && past_digits(text, sign) == end, "at least one digit before the point");
  require(text[sign] != L'0' || end == sign + 1, "no zeros in front");
  if (decimals == 0) {
    require(point == std::wstring::npos, "no point without decimals");
  } else {
    require(past_digits(text, point + 1) == text.size(), "digits behind the point");
    require(text.size() - point - 1 == static_cast<std::size_t>(decimals), "all decimals");
  }
  const double shown = lenient_number(format_number(value, L'.'));
  if (shown == 0) return;
  const double read = parse_leading_number(text).value_or(shown);
  const double tolerance = 0.5 * std::pow(10, -decimals) + std::fabs(shown) * 1e-15;
  require(std::fabs(read - shown) <= tolerance * (1 + 1e-9), "rounded to the decimals");
  require(read != 0 || sign == 0, "zero has no sign");
}

void require_writes(double value) {
  const std::wstring text = format_number(value, L',');
  if (!std::isfinite(value)) {
    require(!single_of(value) && !round_half_even(value), "what is not finite is no number");
    require(format_fixed(value, 2, L',') == std::wstring_view(text),
            "what is not finite has its general text");
    return;
  }
  const auto read = parse_leading_number(with_point(text));
  require(!read || format_number(*read, L',') == text,
          "a written number is written the same again");
  require(!read || std::fabs(*read - value) <= std::fabs(value) * 1e-14, "to 15 digits");
  for (int decimals = 0; decimals <= 8; ++decimals) require_fixed(value, decimals);
  require(format_fixed(value, -3, L',') == format_fixed(value, 0, L','), "at least no decimals");
  require(format_fixed(value, 12, L',') == format_fixed(value, 8, L','), "at most eight decimals");
  require(*round_half_even(value) == std::nearbyint(value), "rounds half to even");

  const auto single = single_of(value);
  const auto nearest = static_cast<float>(value);
  require(single.has_value() == std::isfinite(nearest), "singles have their range");
  if (!single) return;
  require(*single == nearest, "the nearest single");
  const std::wstring single_text = format_number(*single, L',');
  const auto single_read = single_of(lenient_number(single_text));
  require(!single_read || format_number(*single_read, L',') == single_text,
          "a written single is written the same again");
}

}  // namespace

void numbers(std::string_view bytes) {
  require_reads(wide(bytes));
  double value = 0;
  std::memcpy(&value, bytes.data(), std::min(sizeof value, bytes.size()));
  require_writes(value);
  require_writes(parse_leading_number(wide(bytes)).value_or(0));
}

}  // namespace pv::fuzz
