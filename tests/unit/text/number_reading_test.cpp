// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Numbers out of texts.

#include "core/text/number_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cwchar>
#include <limits>
#include <random>
#include <string>

namespace pv {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(LeadingNumber, ReadsTheLongestNumberAtTheStart) {
  EXPECT_EQ(parse_leading_number(L"12 kg"), 12);
  EXPECT_EQ(parse_leading_number(L"12.5.7"), 12.5);
  EXPECT_EQ(parse_leading_number(L"-3-4"), -3);
  EXPECT_EQ(parse_leading_number(L"+7+"), 7);
  EXPECT_EQ(parse_leading_number(L".5"), 0.5);
  EXPECT_EQ(parse_leading_number(L"5."), 5);
  EXPECT_EQ(parse_leading_number(L"-.25x"), -0.25);
  EXPECT_EQ(parse_leading_number(L"007"), 7);
  EXPECT_EQ(parse_leading_number(L"0.1"), 0.1);
}

TEST(LeadingNumber, IsZeroWithoutOne) {
  for (const wchar_t* text : {L"", L" ", L"abc", L"-", L"+", L".", L"-.", L"--1", L"e5", L".e5",
                              L"&H10", L"inf", L"nan", L"x1", L"True", L",5"}) {
    EXPECT_EQ(parse_leading_number(text), 0) << std::string(text, text + std::wcslen(text));
  }
}

TEST(LeadingNumber, KnowsNoComma) { EXPECT_EQ(parse_leading_number(L"1,5"), 1); }

TEST(LeadingNumber, KnowsNoHexadecimalForm) {
  EXPECT_EQ(parse_leading_number(L"0x1F"), 0);
  EXPECT_EQ(parse_leading_number(L"1F"), 1);
}

TEST(LeadingNumber, IgnoresBlanksAnywhere) {
  EXPECT_EQ(parse_leading_number(L"  1 2\t3\r\n. 5 e 1 x"), 1235);
  EXPECT_EQ(parse_leading_number(L" - 4"), -4);
  EXPECT_EQ(parse_leading_number(L"1 e - 2"), 0.01);
}

TEST(LeadingNumber, StopsAtOtherWhiteSpace) {
  EXPECT_EQ(parse_leading_number(L"1\x00A0"
                                 L"2"),
            1);
  EXPECT_EQ(parse_leading_number(L"1\v2"), 1);
  EXPECT_EQ(parse_leading_number(std::wstring(L"1\0"
                                              L"2",
                                              3)),
            1);
}

TEST(LeadingNumber, TakesNoOtherDigits) { EXPECT_EQ(parse_leading_number(L"\x0661\xFF11"), 0); }

TEST(LeadingNumber, TakesAnExponentOnlyWithDigits) {
  EXPECT_EQ(parse_leading_number(L"1e3"), 1000);
  EXPECT_EQ(parse_leading_number(L"1E+3"), 1000);
  EXPECT_EQ(parse_leading_number(L"1e-3"), 0.001);
  EXPECT_EQ(parse_leading_number(L"2e"), 2);
  EXPECT_EQ(parse_leading_number(L"2e+"), 2);
  EXPECT_EQ(parse_leading_number(L"2e+x"), 2);
  EXPECT_EQ(parse_leading_number(L"2e-+3"), 2);
  EXPECT_EQ(parse_leading_number(L"2d3"), 2);
  EXPECT_EQ(parse_leading_number(L"1.e2"), 100);
  EXPECT_EQ(parse_leading_number(L"1e2.5"), 100);
}

TEST(LeadingNumber, FailsOnlyBeyondTheRangeOfADouble) {
  EXPECT_EQ(parse_leading_number(L"1e309"), std::nullopt);
  EXPECT_EQ(parse_leading_number(L"-1e309"), std::nullopt);
  EXPECT_EQ(parse_leading_number(L"1.8e308"), std::nullopt);
  EXPECT_EQ(parse_leading_number(L"1e99999999999999999999"), std::nullopt);
  EXPECT_EQ(parse_leading_number(L"1.7976931348623157e308"), DBL_MAX);
  EXPECT_EQ(parse_leading_number(L"-1.7976931348623157e308"), -DBL_MAX);
}

TEST(LeadingNumber, IsZeroBelowTheRangeOfADouble) {
  EXPECT_EQ(parse_leading_number(L"1e-400"), 0);
  EXPECT_EQ(parse_leading_number(L"1e-99999999999999999999"), 0);
  EXPECT_EQ(parse_leading_number(L"1e-325"), 0);
  EXPECT_EQ(parse_leading_number(L"4.9406564584124654e-324"), DBL_TRUE_MIN);
  EXPECT_EQ(parse_leading_number(L"0e99999999999999999999"), 0);
  EXPECT_EQ(parse_leading_number(L"0.000e400"), 0);
}

TEST(LeadingNumber, TakesDigitsWithoutLimit) {
  const std::wstring zeros(100'000, L'0');
  EXPECT_EQ(parse_leading_number(zeros + L"5"), 5);
  EXPECT_EQ(parse_leading_number(L"0." + zeros + L"5e100001"), 5);
  EXPECT_EQ(parse_leading_number(L"5" + zeros + L"e-100000"), 5);
  EXPECT_EQ(parse_leading_number(L"5" + zeros), std::nullopt);
  EXPECT_EQ(parse_leading_number(L"0." + zeros + L"5"), 0);
  EXPECT_EQ(parse_leading_number(L"1." + std::wstring(100'000, L'9')), 2);
}

TEST(LeadingNumber, ReadsBackEveryDoubleOfSeventeenDigits) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20'000; ++i) {
    const double mantissa = std::uniform_real_distribution<double>(-1, 1)(random);
    const int exponent = std::uniform_int_distribution<int>(-1070, 1023)(random);
    const double value = std::ldexp(mantissa, exponent);
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    const std::string narrow(text);
    ASSERT_EQ(parse_leading_number(std::wstring(narrow.begin(), narrow.end())), value) << text;
  }
}

TEST(WholeNumberText, AcceptsOneNumberAndBlanksOnly) {
  EXPECT_EQ(parse_number(L" 1,5 "), 1.5);
  EXPECT_EQ(parse_number(L"-2e1"), -20);
  EXPECT_EQ(parse_number(L"0"), 0);
  for (const wchar_t* text : {L"", L" ", L"abc", L"12 kg", L"1,2,3", L"1e", L"-", L"1e999"}) {
    EXPECT_EQ(parse_number(text), std::nullopt) << std::string(text, text + std::wcslen(text));
  }
}

TEST(NormalizedNumber, ReadsTheFirstCommaAsAPoint) {
  EXPECT_EQ(lenient_number_text(L"2,5", L'.'), L"2.5");
  EXPECT_EQ(lenient_number_text(L"2.5", L'.'), L"2.5");
  EXPECT_EQ(lenient_number_text(L"2,5", L','), L"2,5");
  EXPECT_EQ(lenient_number_text(L"1,5,7", L'.'), L"1.5");
  EXPECT_EQ(lenient_number_text(L"1.5,7", L'.'), L"1.5");
  EXPECT_EQ(lenient_number_text(L"1,000.5", L'.'), L"1");
  EXPECT_EQ(lenient_number_text(L",5", L'.'), L"0.5");
}

TEST(NormalizedNumber, WritesTheLeadingNumberInItsOrdinaryForm) {
  EXPECT_EQ(lenient_number_text(L"12 kg", L'.'), L"12");
  EXPECT_EQ(lenient_number_text(L"1e3", L'.'), L"1000");
  EXPECT_EQ(lenient_number_text(L"0.10", L','), L"0,1");
  EXPECT_EQ(lenient_number_text(L"-0", L'.'), L"0");
  EXPECT_EQ(lenient_number_text(L"0.00001", L'.'), L"1E-05");
}

TEST(NormalizedNumber, IsZeroOnFailure) {
  EXPECT_EQ(lenient_number_text(L"", L'.'), L"0");
  EXPECT_EQ(lenient_number_text(L"abc", L'.'), L"0");
  EXPECT_EQ(lenient_number_text(L"1e999", L'.'), L"0");
}

TEST(NumberOf, IsTheValueOfTheNumberText) {
  EXPECT_EQ(lenient_number(L"1,25"), 1.25);
  EXPECT_EQ(lenient_number(L"2.5"), 2.5);
  EXPECT_EQ(lenient_number(L"12 kg"), 12);
  EXPECT_EQ(lenient_number(L""), 0);
  EXPECT_EQ(lenient_number(L"abc"), 0);
  EXPECT_EQ(lenient_number(L"1e999"), 0);
  EXPECT_EQ(lenient_number(L"2.50000000000000001"), 2.5);
  EXPECT_EQ(lenient_number(L"1.234567890123456789"), 1.23456789012346);
}

TEST(NumberOf, IsZeroForTheLargestDoublesWhichHaveNoTextOfFifteenDigits) {
  EXPECT_EQ(lenient_number(L"1.7976931348623157e308"), 0);
  EXPECT_EQ(lenient_number(L"1.79769313486231e308"), 1.79769313486231e308);
}

TEST(SingleOf, FailsBeyondTheRangeOfAFloat) {
  EXPECT_EQ(single_of(0.1), 0.1F);
  EXPECT_EQ(single_of(-2.5), -2.5F);
  EXPECT_EQ(single_of(FLT_MAX), FLT_MAX);
  EXPECT_EQ(single_of(3.40282346638529e38), FLT_MAX);
  EXPECT_EQ(single_of(-3.40282346638529e38), -FLT_MAX);
  EXPECT_EQ(single_of(0x1.ffffffp127), std::nullopt);
  EXPECT_EQ(single_of(1e39), std::nullopt);
  EXPECT_EQ(single_of(-1e39), std::nullopt);
  EXPECT_EQ(single_of(kInfinity), std::nullopt);
  EXPECT_EQ(single_of(kNan), std::nullopt);
  EXPECT_EQ(single_of(1e-60), 0.0F);
}

TEST(IntegerOrZero, IsZeroOutsideTheType) {
  EXPECT_EQ(lenient_integer<std::int16_t>(32767.4), 32767);
  EXPECT_EQ(lenient_integer<std::int16_t>(32767.5), 0);
  EXPECT_EQ(lenient_integer<std::int16_t>(-32768.5), -32768);
  EXPECT_EQ(lenient_integer<std::int16_t>(-32768.6), 0);
  EXPECT_EQ(lenient_integer<std::uint8_t>(255.4), 255);
  EXPECT_EQ(lenient_integer<std::uint8_t>(255.5), 0);
  EXPECT_EQ(lenient_integer<std::uint8_t>(-0.5), 0);
  EXPECT_EQ(lenient_integer<std::uint8_t>(-1), 0);
  EXPECT_EQ(lenient_integer<std::int32_t>(2147483647.4), 2147483647);
  EXPECT_EQ(lenient_integer<std::int32_t>(2147483647.5), 0);
  EXPECT_EQ(lenient_integer<std::int32_t>(-2147483648.0), INT32_MIN);
  EXPECT_EQ(lenient_integer<std::int32_t>(1e300), 0);
  EXPECT_EQ(lenient_integer<std::int64_t>(9223372036854775808.0), 0);
  EXPECT_EQ(lenient_integer<std::int64_t>(-9223372036854775808.0), INT64_MIN);
  EXPECT_EQ(lenient_integer<std::int16_t>(kNan), 0);
  EXPECT_EQ(lenient_integer<std::int16_t>(kInfinity), 0);
}

TEST(IntegerOf, RoundsTheNumberTextHalfToEven) {
  EXPECT_EQ(lenient_integer<std::int16_t>(L"2,5"), 2);
  EXPECT_EQ(lenient_integer<std::int16_t>(L"3.5"), 4);
  EXPECT_EQ(lenient_integer<std::int16_t>(L"12 kg"), 12);
  EXPECT_EQ(lenient_integer<std::int16_t>(L""), 0);
  EXPECT_EQ(lenient_integer<std::int16_t>(L"True"), 0);
  EXPECT_EQ(lenient_integer<std::int16_t>(L"40000"), 0);
  EXPECT_EQ(lenient_integer<std::uint8_t>(L"300"), 0);
  EXPECT_EQ(lenient_integer<std::uint8_t>(L"200"), 200);
  EXPECT_EQ(lenient_integer<std::int32_t>(L"40000"), 40000);
  EXPECT_EQ(lenient_integer<std::int16_t>(L"2.50000000000000001"), 2);
}

TEST(PlainInteger, IsDigitsWithOrWithoutAMinusAndNothingElse) {
  EXPECT_EQ(parse_integer(L"0"), 0);
  EXPECT_EQ(parse_integer(L"-0"), 0);
  EXPECT_EQ(parse_integer(L"007"), 7);
  EXPECT_EQ(parse_integer(L"-32768"), -32768);
  EXPECT_EQ(parse_integer(L"999999999"), 999999999);
  EXPECT_EQ(parse_integer(L"-999999999"), -999999999);
  for (const wchar_t* text :
       {L"", L"-", L"--1", L"+1", L" 1", L"1 ", L"1.", L"1,0", L"1e2", L"1000000000", L"x"}) {
    EXPECT_EQ(parse_integer(text), std::nullopt) << std::wstring(text).size();
  }
}

// The short ways of reading must not be seen in the results.
TEST(NumberOf, TakesNoShortWayThatShows) {
  for (const wchar_t* text : {L"0",
                              L"-0",
                              L"12",
                              L"-32769",
                              L"1.5",
                              L"-0,25",
                              L"0.1",
                              L"123456789012345",
                              L"1234567890123456",
                              L"0.1000000000000000055",
                              L"1e-300",
                              L"1e-310",
                              L"4.9e-324",
                              L"1.79769313486231e308",
                              L"1.7976931348623157e308",
                              L"1e309",
                              L"999999999999999.9",
                              L"3.14 kg",
                              L"x",
                              L""}) {
    const double through_text = parse_leading_number(lenient_number_text(text, L'.')).value_or(0.0);
    EXPECT_EQ(lenient_number(text), through_text) << std::string(text, text + std::wcslen(text));
    EXPECT_EQ(lenient_integer<std::int16_t>(text), lenient_integer<std::int16_t>(through_text));
    EXPECT_EQ(lenient_integer<unsigned char>(text), lenient_integer<unsigned char>(through_text));
  }
}

}  // namespace
}  // namespace pv
