// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/units/unit_conversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace pv {
namespace {

const UnitRecord kFlow{L"m3/h", 3.6, 0};
constexpr long kValueOnly = static_cast<long>(ShowMode::kValueOnly);
constexpr long kUnitOnly = static_cast<long>(ShowMode::kUnitOnly);
constexpr long kValueAndUnit = static_cast<long>(ShowMode::kValueAndUnit);

TEST(ToUnit, MultipliesBySlopeAndAddsOffset) {
  EXPECT_EQ(to_unit(10, 3.6, 0), 36);
  EXPECT_EQ(to_unit(10, 2, -5), 15);
  EXPECT_EQ(to_unit(10, 0, 7), 7);
}

TEST(ToBase, IsTheWayBack) {
  EXPECT_EQ(to_base(36, 3.6, 0), 10);
  EXPECT_EQ(to_base(15, 2, -5), 10);
}

TEST(ToBase, CountsSlopeZeroAsOne) {
  EXPECT_EQ(to_base(5, 0, 2), 3);
  EXPECT_EQ(to_base(2, 0, 2), 0);
  EXPECT_EQ(to_base(5, -0.0, 2), 3);
}

TEST(ToBase, CountsASlopeThatCannotBeDividedByAsOne) {
  EXPECT_EQ(to_base(1e300, 1e-300, 0), 1e300);
}

TEST(NumberShown, TakesNegativeDecimalsAsGeneral) {
  EXPECT_EQ(format_decimals(36.5, -1, L','), L"36,5");
  EXPECT_EQ(format_decimals(36.5, -5, L'.'), L"36.5");
  EXPECT_EQ(format_decimals(1e20, -1, L'.'), L"1E+20");
}

TEST(NumberShown, ShowsZeroToEightDecimals) {
  const wchar_t* expected[] = {L"2",       L"1.7",      L"1.67",      L"1.667",     L"1.6667",
                               L"1.66667", L"1.666667", L"1.6666667", L"1.66666667"};
  for (long decimals = 0; decimals <= 8; ++decimals) {
    EXPECT_EQ(format_decimals(5.0 / 3, decimals, L'.'), expected[decimals]);
  }
}

TEST(NumberShown, TakesMoreThanEightDecimalsAsEight) {
  EXPECT_EQ(format_decimals(1.5, 9, L'.'), L"1.50000000");
  EXPECT_EQ(format_decimals(1.5, 12, L'.'), L"1.50000000");
  EXPECT_EQ(format_decimals(1.5, std::numeric_limits<long>::max(), L'.'), L"1.50000000");
  EXPECT_EQ(format_decimals(1.5, std::numeric_limits<long>::min(), L'.'), L"1.5");
}

TEST(UnitText, ShowsTheConvertedValue) {
  EXPECT_EQ(format_in_unit(10, kFlow, -1, kValueOnly, false, L'.'), L"36");
  EXPECT_EQ(format_in_unit(10, kFlow, 2, kValueOnly, false, L'.'), L"36.00");
  EXPECT_EQ(format_in_unit(10, kFlow, 2, kValueOnly, false, L','), L"36,00");
  EXPECT_EQ(format_in_unit(10, kFlow, 12, kValueOnly, false, L'.'), L"36.00000000");
  EXPECT_EQ(format_in_unit(10, kFlow, -5, kValueOnly, false, L'.'), L"36");
  EXPECT_EQ(format_in_unit(10, {L"K", 1, 273.15}, 1, kValueOnly, false, L'.'), L"283.2");
}

TEST(UnitText, ShowsTheCaptionAloneOrBehindTheValue) {
  EXPECT_EQ(format_in_unit(10, kFlow, 2, kUnitOnly, false, L'.'), L"m3/h");
  EXPECT_EQ(format_in_unit(10, kFlow, 2, kValueAndUnit, false, L'.'), L"36.00 m3/h");
  EXPECT_EQ(format_in_unit(10, {L"", 1, 0}, -1, kValueAndUnit, false, L'.'), L"10 ");
}

TEST(UnitText, ShowsAQuestionMarkForADirtyValue) {
  EXPECT_EQ(format_in_unit(10, kFlow, 2, kValueOnly, true, L'.'), L"?");
  EXPECT_EQ(format_in_unit(10, kFlow, 2, kUnitOnly, true, L'.'), L"m3/h");
  EXPECT_EQ(format_in_unit(10, kFlow, 2, kValueAndUnit, true, L'.'), L"? m3/h");
}

TEST(UnitText, IsEmptyForAnUnknownMode) {
  for (const long mode : {-1L, 3L, 99L, std::numeric_limits<long>::max()}) {
    EXPECT_EQ(format_in_unit(10, kFlow, 2, mode, false, L'.'), L"");
    EXPECT_EQ(format_in_unit(10, kFlow, 2, mode, true, L'.'), L"");
  }
}

TEST(UnitText, IsEmptyForAValueBeyondTheRangeOfADouble) {
  const UnitRecord huge{L"x", 1e300, 0};
  EXPECT_EQ(format_in_unit(1e300, huge, 2, kValueOnly, false, L'.'), L"");
  EXPECT_EQ(format_in_unit(1e300, huge, 2, kValueAndUnit, false, L'.'), L"");
  EXPECT_EQ(format_in_unit(1e300, huge, 2, kUnitOnly, false, L'.'), L"x");
  EXPECT_EQ(format_in_unit(1e300, huge, 2, kValueAndUnit, true, L'.'), L"? x");
}

}  // namespace
}  // namespace pv
