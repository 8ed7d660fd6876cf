// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Texts out of numbers, and the rounding that they need.

#include "core/text/number_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace pv {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(GeneralText, ShowsUpToFifteenDigits) {
  EXPECT_EQ(format_number(0.1, L'.'), L"0.1");
  EXPECT_EQ(format_number(1.0 / 3, L'.'), L"0.333333333333333");
  EXPECT_EQ(format_number(-2.5, L','), L"-2,5");
  EXPECT_EQ(format_number(3.6, L','), L"3,6");
  EXPECT_EQ(format_number(100.0, L'.'), L"100");
  EXPECT_EQ(format_number(123456789012345.0, L'.'), L"123456789012345");
  EXPECT_EQ(format_number(1234567890123456.0, L'.'), L"1.23456789012346E+15");
}

TEST(GeneralText, TurnsToExponentsForVeryLargeAndSmallNumbers) {
  EXPECT_EQ(format_number(1e14, L'.'), L"100000000000000");
  EXPECT_EQ(format_number(1e15, L'.'), L"1E+15");
  EXPECT_EQ(format_number(0.0001, L'.'), L"0.0001");
  EXPECT_EQ(format_number(0.00001, L'.'), L"1E-05");
  EXPECT_EQ(format_number(-1.5e-7, L','), L"-1,5E-07");
  EXPECT_EQ(format_number(1e300, L'.'), L"1E+300");
  EXPECT_EQ(format_number(DBL_MAX, L'.'), L"1.79769313486232E+308");
}

TEST(GeneralText, GivesZeroNoSign) {
  EXPECT_EQ(format_number(0.0, L'.'), L"0");
  EXPECT_EQ(format_number(-0.0, L'.'), L"0");
  EXPECT_EQ(format_number(-0.0F, L'.'), L"0");
}

TEST(GeneralText, ShowsSevenDigitsInSinglePrecision) {
  EXPECT_EQ(format_number(0.5F, L','), L"0,5");
  EXPECT_EQ(format_number(0.1F, L'.'), L"0.1");
  EXPECT_EQ(format_number(1234567.0F, L'.'), L"1234567");
  EXPECT_EQ(format_number(12345678.0F, L'.'), L"1.234568E+07");
  EXPECT_EQ(format_number(0.00001F, L'.'), L"1E-05");
  EXPECT_EQ(format_number(FLT_MAX, L'.'), L"3.402823E+38");
}

TEST(GeneralText, NamesValuesThatAreNotFinite) {
  EXPECT_EQ(format_number(kInfinity, L'.'), L"INF");
  EXPECT_EQ(format_number(-kInfinity, L'.'), L"-INF");
  EXPECT_EQ(format_number(kNan, L'.'), L"NAN");
  EXPECT_EQ(format_number(-kNan, L'.'), L"NAN");
}

TEST(FixedText, ShowsExactlyTheDecimalsAskedFor) {
  EXPECT_EQ(format_fixed(36, 2, L'.'), L"36.00");
  EXPECT_EQ(format_fixed(36, 2, L','), L"36,00");
  EXPECT_EQ(format_fixed(36, 0, L'.'), L"36");
  EXPECT_EQ(format_fixed(0, 3, L'.'), L"0.000");
  EXPECT_EQ(format_fixed(0.25, 1, L'.'), L"0.3");
  EXPECT_EQ(format_fixed(12.5, 3, L'.'), L"12.500");
  EXPECT_EQ(format_fixed(0.001, 3, L'.'), L"0.001");
  EXPECT_EQ(format_fixed(1.0 / 3, 8, L'.'), L"0.33333333");
}

TEST(FixedText, RoundsHalfAwayFromZero) {
  EXPECT_EQ(format_fixed(0.5, 0, L'.'), L"1");
  EXPECT_EQ(format_fixed(1.5, 0, L'.'), L"2");
  EXPECT_EQ(format_fixed(2.5, 0, L'.'), L"3");
  EXPECT_EQ(format_fixed(-2.5, 0, L'.'), L"-3");
  EXPECT_EQ(format_fixed(-0.6, 0, L'.'), L"-1");
  EXPECT_EQ(format_fixed(0.99, 0, L'.'), L"1");
  EXPECT_EQ(format_fixed(0.49, 0, L'.'), L"0");
  EXPECT_EQ(format_fixed(0.125, 2, L'.'), L"0.13");
}

TEST(FixedText, RoundsTheDecimalDigitsNotTheBinaryOnes) {
  EXPECT_EQ(format_fixed(1.005, 2, L'.'), L"1.01");
  EXPECT_EQ(format_fixed(2.675, 2, L'.'), L"2.68");
  EXPECT_EQ(format_fixed(-1.115, 2, L'.'), L"-1.12");
  EXPECT_EQ(format_fixed(0.1 + 0.2, 8, L'.'), L"0.30000000");
}

TEST(FixedText, CarriesThroughAllDigits) {
  EXPECT_EQ(format_fixed(9.995, 2, L'.'), L"10.00");
  EXPECT_EQ(format_fixed(999.5, 0, L'.'), L"1000");
  EXPECT_EQ(format_fixed(0.0999, 2, L'.'), L"0.10");
  EXPECT_EQ(format_fixed(99999999999999.95, 1, L'.'), L"100000000000000.0");
}

TEST(FixedText, NeverShowsANegativeZero) {
  EXPECT_EQ(format_fixed(-0.0, 2, L'.'), L"0.00");
  EXPECT_EQ(format_fixed(-0.004, 2, L'.'), L"0.00");
  EXPECT_EQ(format_fixed(-0.4, 0, L'.'), L"0");
  EXPECT_EQ(format_fixed(-1e-300, 8, L'.'), L"0.00000000");
  EXPECT_EQ(format_fixed(-0.005, 2, L'.'), L"-0.01");
}

TEST(FixedText, WritesOutBigValuesFromFifteenDigits) {
  EXPECT_EQ(format_fixed(1e20, 0, L'.'), L"100000000000000000000");
  EXPECT_EQ(format_fixed(-1e20, 1, L','), L"-100000000000000000000,0");
  EXPECT_EQ(format_fixed(123456789012345678.0, 0, L'.'), L"123456789012346000");
  const std::wstring huge = L"1" + std::wstring(300, L'0') + L".00000000";
  EXPECT_EQ(format_fixed(1e300, 8, L'.'), huge.c_str());
}

TEST(FixedText, TakesDecimalsIntoZeroToEight) {
  EXPECT_EQ(format_fixed(1.25, 12, L'.'), L"1.25000000");
  EXPECT_EQ(format_fixed(1.25, -3, L'.'), L"1");
}

TEST(FixedText, FallsBackToTheGeneralTextWhenNotFinite) {
  EXPECT_EQ(format_fixed(kInfinity, 2, L'.'), L"INF");
  EXPECT_EQ(format_fixed(kNan, 0, L'.'), L"NAN");
}

TEST(FixedText, AgreesWithTheExactDecimalsOfShortNumbers) {
  std::mt19937 random(2);
  for (int i = 0; i < 20'000; ++i) {
    const long cents = std::uniform_int_distribution<long>(-100'000'000, 100'000'000)(random);
    const long size = std::abs(cents);
    const std::wstring expected =
        (cents < 0 ? L"-" : L"") + format_integer(size / 100) + L"." + format_padded(size % 100, 2);
    ASSERT_EQ(format_fixed(static_cast<double>(cents) / 100, 2, L'.'), expected.c_str());
  }
}

/// The C library's 15 digits of a value, rounded half up by hand.
std::wstring rounded_by_hand(double value, int decimals) {
  char text[40];
  std::snprintf(text, sizeof text, "%.14e", std::fabs(value));
  std::string digits = std::string(1, text[0]) + std::string(text + 2, 14);
  const int exponent = std::atoi(text + 17);
  if (exponent < 0) digits.insert(0, static_cast<std::size_t>(-exponent), '0');
  const auto whole = static_cast<std::size_t>(std::max(exponent, 0) + 1);
  const std::size_t kept = whole + static_cast<std::size_t>(decimals);
  digits.resize(std::max(digits.size(), kept + 1), '0');
  const bool up = digits[kept] >= '5';
  digits = "0" + digits.substr(0, kept);
  for (std::size_t i = digits.size(); up && ++digits[--i] > '9';) digits[i] = '0';
  const std::size_t first = digits[0] == '0' ? 1 : 0;
  const bool is_zero = digits.find_first_not_of('0') == std::string::npos;
  std::string shown = (value < 0 && !is_zero ? "-" : "") + digits.substr(first, whole + 1 - first);
  if (decimals > 0) shown += "." + digits.substr(whole + 1);
  return std::wstring(shown.begin(), shown.end());
}

TEST(FixedText, RoundsTheFifteenDigitsOfAnyValue) {
  std::mt19937_64 random(3);
  for (int i = 0; i < 100'000; ++i) {
    const int decimals = std::uniform_int_distribution<int>(0, 8)(random);
    const double magnitude = std::pow(10, std::uniform_real_distribution<double>(-12, 18)(random));
    const double value = (i % 2 == 0 ? 1 : -1) * magnitude;
    ASSERT_EQ(format_fixed(value, decimals, L'.'), rounded_by_hand(value, decimals).c_str())
        << value << " with " << decimals;
  }
}

TEST(FixedText, RoundsTheFifteenDigitsRightAroundEveryHalf) {
  std::mt19937_64 random(4);
  for (int i = 0; i < 100'000; ++i) {
    const int decimals = std::uniform_int_distribution<int>(0, 8)(random);
    const double most = std::pow(10, std::uniform_int_distribution<int>(1, 12)(random));
    const double whole = std::floor(std::uniform_real_distribution<double>(0, most)(random));
    double value = (whole + 0.5) / std::pow(10, decimals);
    const int steps = std::uniform_int_distribution<int>(-40, 40)(random);
    for (int k = 0; k < std::abs(steps); ++k) value = std::nextafter(value, steps < 0 ? 0 : 1e300);
    ASSERT_EQ(format_fixed(value, decimals, L'.'), rounded_by_hand(value, decimals).c_str())
        << value << " with " << decimals;
  }
}

TEST(RoundHalfEven, TakesTiesToTheEvenNumber) {
  EXPECT_EQ(round_half_even(0.5), 0);
  EXPECT_EQ(round_half_even(1.5), 2);
  EXPECT_EQ(round_half_even(2.5), 2);
  EXPECT_EQ(round_half_even(3.5), 4);
  EXPECT_EQ(round_half_even(-0.5), 0);
  EXPECT_EQ(round_half_even(-1.5), -2);
  EXPECT_EQ(round_half_even(-2.5), -2);
}

TEST(RoundHalfEven, TakesOthersToTheNearestNumber) {
  EXPECT_EQ(round_half_even(2.4999999), 2);
  EXPECT_EQ(round_half_even(2.5000001), 3);
  EXPECT_EQ(round_half_even(-2.7), -3);
  EXPECT_EQ(round_half_even(0.49999999999999994), 0);
  EXPECT_EQ(round_half_even(-0.49999999999999994), 0);
  EXPECT_EQ(round_half_even(4503599627370497.5), 4503599627370498);
  EXPECT_EQ(round_half_even(1e300), 1e300);
}

TEST(RoundHalfEven, GivesZeroNoSign) {
  EXPECT_FALSE(std::signbit(*round_half_even(-0.3)));
  EXPECT_FALSE(std::signbit(*round_half_even(-0.0)));
}

TEST(RoundHalfEven, FailsForValuesThatAreNotFinite) {
  EXPECT_EQ(round_half_even(kInfinity), std::nullopt);
  EXPECT_EQ(round_half_even(-kInfinity), std::nullopt);
  EXPECT_EQ(round_half_even(kNan), std::nullopt);
}

TEST(ZeroPadded, FillsUpToTheDigitsAskedFor) {
  EXPECT_EQ(format_padded(5, 2), L"05");
  EXPECT_EQ(format_padded(7, 4), L"0007");
  EXPECT_EQ(format_padded(0, 2), L"00");
  EXPECT_EQ(format_padded(123, 2), L"123");
  EXPECT_EQ(format_padded(-7, 2), L"-07");
  EXPECT_EQ(format_padded(7, 0), L"7");
  EXPECT_EQ(format_padded(7, -1), L"7");
}

TEST(IntegerText, WritesTheWholeRange) {
  EXPECT_EQ(format_integer(0), L"0");
  EXPECT_EQ(format_integer(-32768), L"-32768");
  EXPECT_EQ(format_integer(2147483647), L"2147483647");
  EXPECT_EQ(format_integer(-2147483647L - 1), L"-2147483648");
}

}  // namespace
}  // namespace pv
