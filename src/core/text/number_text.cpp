// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

#include "core/text/ascii.h"

namespace pv {
namespace {

constexpr std::size_t kSignificantDigits = 15;  // what the ordinary text of a double shows
constexpr int kMostDecimals = 8;
constexpr std::size_t kLongestInteger = 24;  // in characters, and more than enough

bool is_blank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n'; }
bool is_digit(wchar_t c) { return c >= L'0' && c <= L'9'; }

/// Walks over a text without seeing its blanks; NUL stands for the end.
class Cursor {
 public:
  explicit Cursor(std::wstring_view text) : text_(text) { skip_blanks(); }

  bool at_end() const { return position_ == text_.size(); }
  wchar_t peek() const { return at_end() ? L'\0' : text_[position_]; }

  bool take(wchar_t wanted) {
    if (peek() != wanted) return false;
    step();
    return true;
  }

  void step() {
    if (at_end()) return;
    ++position_;
    skip_blanks();
  }

 private:
  void skip_blanks() {
    while (!at_end() && is_blank(text_[position_])) ++position_;
  }

  std::wstring_view text_;
  std::size_t position_ = 0;
};

/// A decimal number as read: sign, 0.digits, times ten to the exponent.
struct Decimal {
  bool negative = false;
  bool found = false;  ///< there was at least one digit
  std::string digits;  ///< without leading zeros; empty for zero
  long long exponent = 0;
  bool whole_text = false;  ///< nothing followed the number
};

/// Exponents beyond this are all the same: far outside the range of a double, however long the
/// digits are.
constexpr long long kHugeExponent = 1'000'000'000'000;

/// Reads e, sign and digits; leaves the cursor where it was when it is no exponent.
long long take_exponent(Cursor& cursor) {
  Cursor ahead = cursor;
  if (!ahead.take(L'e') && !ahead.take(L'E')) return 0;
  const bool negative = ahead.take(L'-');
  if (!negative) ahead.take(L'+');
  if (!is_digit(ahead.peek())) return 0;
  long long exponent = 0;
  for (; is_digit(ahead.peek()); ahead.step()) {
    exponent = std::min(exponent * 10 + (ahead.peek() - L'0'), kHugeExponent);
  }
  cursor = ahead;
  return negative ? -exponent : exponent;
}

Decimal take_decimal(std::wstring_view text) {
  Cursor cursor(text);
  Decimal number;
  number.negative = cursor.take(L'-');
  if (!number.negative) cursor.take(L'+');
  bool past_point = false;
  for (;; cursor.step()) {
    const wchar_t c = cursor.peek();
    if (c == L'.' && !past_point) {
      past_point = true;
    } else if (is_digit(c)) {
      number.found = true;
      const bool leading_zero = c == L'0' && number.digits.empty();
      if (!leading_zero) number.digits.push_back(static_cast<char>(c));
      if (!past_point && !leading_zero) ++number.exponent;
      if (past_point && leading_zero) --number.exponent;
    } else {
      break;
    }
  }
  if (number.found) number.exponent += take_exponent(cursor);
  number.whole_text = number.found && cursor.at_end();
  return number;
}

/// Rounds to the nearest double; nullopt beyond its range, 0 below it.
std::optional<double> value_of(const Decimal& number) {
  if (number.digits.empty()) return 0.0;
  if (number.exponent > std::numeric_limits<double>::max_exponent10 + 1) return std::nullopt;
  if (number.exponent < std::numeric_limits<double>::min_exponent10 - 20) return 0.0;
  const std::string text = "0." + number.digits + "e" + std::to_string(number.exponent);
  double value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool out_of_range = read.ec == std::errc::result_out_of_range || std::isinf(value);
  if (out_of_range && number.exponent > 0) return std::nullopt;
  if (out_of_range) return 0.0;
  return number.negative ? -value : value;
}

std::wstring with_point(std::wstring_view text, wchar_t decimal = L',') {
  std::wstring copy(text);
  const auto read_as_point = [&copy](wchar_t separator) {
    if (const auto found = copy.find(separator); found != std::wstring::npos) copy[found] = L'.';
  };
  read_as_point(L',');
  if (decimal != L',') read_as_point(decimal);
  return copy;
}

/// "INF", "-INF" or "NAN".
std::wstring text_of_no_number(double value) {
  if (std::isnan(value)) return L"NAN";
  return value < 0 ? L"-INF" : L"INF";
}

template <class Float>
std::wstring general(Float value, int digits, wchar_t decimal) {
  if (!std::isfinite(value)) return text_of_no_number(value);
  if (value == 0) return L"0";
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                 std::chars_format::general, digits);
  std::wstring text =
      widen_ascii({buffer.data(), static_cast<std::size_t>(end.ptr - buffer.data())});
  std::replace(text.begin(), text.end(), L'e', L'E');
  std::replace(text.begin(), text.end(), L'.', decimal);
  return text;
}

/// The 15 significant digits of a finite value, and the power of ten of the first one.
struct Significant {
  std::array<char, kSignificantDigits> digits{};
  int exponent = 0;
};

Significant significant_digits(double magnitude) {
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                 std::chars_format::scientific, kSignificantDigits - 1);
  Significant result;
  result.digits[0] = buffer[0];  // the point follows
  std::copy_n(buffer.data() + 2, kSignificantDigits - 1, result.digits.data() + 1);
  const char* exponent = buffer.data() + 2 + kSignificantDigits;  // behind the e
  if (*exponent == '+') ++exponent;
  std::from_chars(exponent, end.ptr, result.exponent);
  return result;
}

/// Magnitude times ten to `decimals`, rounded as ScaledDigits does it, where that takes no more
/// than a multiplication: the product is small, and so far from a half that neither the rounding to
/// significant digits nor the binary one decides.
std::optional<std::uint32_t> plainly_scaled(double magnitude, int decimals) {
  constexpr std::array<double, kMostDecimals + 1> kPowers{1e0, 1e1, 1e2, 1e3, 1e4,
                                                          1e5, 1e6, 1e7, 1e8};
  constexpr double kMost = 1e9;
  constexpr double kUncertain = 1e-5;  // 15 digits of such a product are off by 5e-6 at most
  const double product = magnitude * kPowers[static_cast<std::size_t>(decimals)];
  if (!(product < kMost)) return std::nullopt;
  const auto whole = static_cast<std::uint32_t>(product);
  const double rest = product - whole;
  if (std::fabs(rest - 0.5) < kUncertain) return std::nullopt;
  return rest < 0.5 ? whole : whole + 1;
}

/// The digits of magnitude times ten to `decimals`, rounded half away from zero, with at least one
/// in front of the decimals and no other leading zeros.
class ScaledDigits {
 public:
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): only digits that were written are read.
  ScaledDigits(double magnitude, int decimals) {
    if (const auto scaled = plainly_scaled(magnitude, decimals)) {
      take(*scaled, static_cast<std::size_t>(decimals) + 1);
    } else {
      round(significant_digits(magnitude), decimals);
    }
  }

  const wchar_t* begin() const { return digits_.data() + first_; }
  const wchar_t* end() const { return digits_.data() + size_; }
  std::size_t count() const { return size_ - first_; }
  bool is_zero() const {
    return std::all_of(begin(), end(), [](wchar_t digit) { return digit == L'0'; });
  }

 private:
  void take(std::uint32_t scaled, std::size_t least) {
    size_ = first_ = kShortDigits;
    for (; scaled > 0 || size_ - first_ < least; scaled /= 10) {
      digits_[--first_] = static_cast<wchar_t>(L'0' + scaled % 10);
    }
  }

  void round(const Significant& number, int decimals) {
    const int kept = number.exponent + 1 + decimals;  // how many of the significant digits stay
    const int leading = std::max(decimals + 1 - kept, 1);  // zeros; the first takes a carry
    const int size = leading + kept;
    size_ = static_cast<std::size_t>(size);
    std::fill_n(digits_.begin(), size_, L'0');
    if (kept >= 0) place(number, static_cast<std::size_t>(leading), static_cast<std::size_t>(kept));
    const std::size_t least = static_cast<std::size_t>(decimals) + 1;
    while (size_ - first_ > least && digits_[first_] == L'0') ++first_;
  }

  void place(const Significant& number, std::size_t leading, std::size_t kept) {
    const std::size_t known = std::min(kept, number.digits.size());
    std::copy_n(number.digits.begin(), known, digits_.begin() + leading);
    if (known == number.digits.size() || number.digits[known] < '5') return;
    std::size_t i = leading + kept - 1;
    for (; digits_[i] == L'9'; --i) digits_[i] = L'0';
    ++digits_[i];
  }

  /// A carry, the digits of the largest double, and its decimals.
  static constexpr std::size_t kMostDigits =
      1 + std::numeric_limits<double>::max_exponent10 + 1 + kMostDecimals;
  static constexpr std::size_t kShortDigits = std::numeric_limits<std::uint32_t>::digits10 + 1;
  std::array<wchar_t, kMostDigits> digits_;  // only from first_ to size_
  std::size_t size_ = 0;
  std::size_t first_ = 0;
};

}  // namespace

std::optional<double> parse_leading_number(std::wstring_view text) {
  return value_of(take_decimal(text));
}

std::optional<double> parse_number(std::wstring_view text) {
  const Decimal number = take_decimal(with_point(text));
  return number.whole_text ? value_of(number) : std::nullopt;
}

std::wstring format_number(double value, wchar_t decimal) {
  return general(value, kSignificantDigits, decimal);
}

std::wstring format_number(float value, wchar_t decimal) { return general(value, 7, decimal); }

std::pmr::wstring format_fixed(double value, int decimals, wchar_t decimal,
                               std::pmr::polymorphic_allocator<wchar_t> memory) {
  std::pmr::wstring text(memory);
  if (!std::isfinite(value)) return text.assign(text_of_no_number(value));
  decimals = std::clamp(decimals, 0, kMostDecimals);
  const ScaledDigits digits(std::fabs(value), decimals);
  const auto behind_point = static_cast<std::size_t>(decimals);
  text.reserve(digits.count() + 2);
  if (value < 0 && !digits.is_zero()) text.push_back(L'-');
  text.append(digits.begin(), digits.count() - behind_point);
  if (decimals > 0) text.append(1, decimal).append(digits.end() - behind_point, behind_point);
  return text;
}

std::wstring lenient_number_text(std::wstring_view text, wchar_t decimal) {
  const std::optional<double> value = parse_leading_number(with_point(text));
  return value ? format_number(*value, decimal) : L"0";
}

double lenient_number(std::wstring_view text, wchar_t decimal) {
  if (const std::optional<std::int32_t> value = parse_integer(text)) return *value;
  const Decimal number = take_decimal(with_point(text, decimal));
  const std::optional<double> value = value_of(number);
  if (!value) return 0.0;
  // A double keeps 15 digits: their text would give the same value again.
  const bool is_normal = std::fabs(*value) >= std::numeric_limits<double>::min();
  if (is_normal && number.digits.size() <= kSignificantDigits) return *value;
  // The largest doubles have no 15-digit text that can be read back.
  return parse_leading_number(format_number(*value, L'.')).value_or(0.0);
}

std::optional<std::int32_t> parse_integer(std::wstring_view text) {
  const bool negative = text.starts_with(L'-');
  if (negative) text.remove_prefix(1);
  if (text.empty() || text.size() > 9) return std::nullopt;
  std::int32_t value = 0;
  for (const wchar_t c : text) {
    if (!is_digit(c)) return std::nullopt;
    value = value * 10 + (c - L'0');
  }
  return negative ? -value : value;
}

std::optional<float> single_of(double value) {
  constexpr float kMax = std::numeric_limits<float>::max();
  // Up to half a step above the largest float the nearest float is the largest one.
  constexpr double kOverflow = 0x1.ffffffp127;
  if (!(std::fabs(value) < kOverflow)) return std::nullopt;
  return static_cast<float>(std::clamp<double>(value, -kMax, kMax));
}

std::optional<double> round_half_even(double value) {
  if (!std::isfinite(value)) return std::nullopt;
  const double magnitude = std::fabs(value);
  constexpr double kLeastLarge = 0x1p31;  // below it a conversion does what floor does, and faster
  double whole =
      magnitude < kLeastLarge ? static_cast<std::int32_t>(magnitude) : std::floor(magnitude);
  const double rest = magnitude - whole;  // exact
  if (rest > 0.5 || (rest == 0.5 && std::fmod(whole, 2.0) != 0)) whole += 1;
  return std::copysign(whole, value) + 0.0;  // + 0.0: no negative zero
}

std::wstring format_padded(long value, int digits) {
  std::wstring text = format_integer(value);
  const std::size_t sign = value < 0 ? 1 : 0;
  const std::size_t wanted = static_cast<std::size_t>(std::max(digits, 0)) + sign;
  if (text.size() < wanted) text.insert(sign, wanted - text.size(), L'0');
  return text;
}

std::wstring format_integer(long value) {
  std::array<wchar_t, kLongestInteger> text;  // NOLINT(*-member-init): read up to the end only
  return {text.data(), write_integer(value, text.data())};
}

wchar_t* write_integer(long value, wchar_t* to) {
  if (value < 0) *to++ = L'-';
  auto rest = static_cast<unsigned long>(value);
  if (value < 0) rest = 0 - rest;
  wchar_t* const first = to;
  for (; rest > 0 || to == first; rest /= 10) *to++ = static_cast<wchar_t>(L'0' + rest % 10);
  std::reverse(first, to);
  return to;
}

}  // namespace pv
