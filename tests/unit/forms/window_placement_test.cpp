// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/forms/window_placement.h"

#include <gtest/gtest.h>

#include <string>

namespace pv {
namespace {

TEST(Placement, ReadsFiveFields) {
  const auto placement = parse_placement(L"120|240,5|4000|3000.25|2|");
  ASSERT_TRUE(placement);
  EXPECT_EQ(placement->left, 120);
  EXPECT_EQ(placement->top, 240.5);
  EXPECT_EQ(placement->width, 4000);
  EXPECT_EQ(placement->height, 3000.25);
  EXPECT_EQ(placement->state, 2);
}

TEST(Placement, NeedsFiveFields) {
  EXPECT_FALSE(parse_placement(L""));
  EXPECT_FALSE(parse_placement(L"1"));
  EXPECT_FALSE(parse_placement(L"1|2|3|4"));
  EXPECT_TRUE(parse_placement(L"1|2|3|4|0"));
  EXPECT_TRUE(parse_placement(L"1|2|3|4|"));
  EXPECT_TRUE(parse_placement(L"||||"));
}

TEST(Placement, TakesTextAsZeroAndIgnoresWhatFollows) {
  const auto placement = parse_placement(L"x||3 cm|4|abc|9|");
  ASSERT_TRUE(placement);
  EXPECT_EQ(placement->left, 0);
  EXPECT_EQ(placement->top, 0);
  EXPECT_EQ(placement->width, 3);
  EXPECT_EQ(placement->state, 0);
}

TEST(Placement, HasSinglePrecision) {
  const auto placement = parse_placement(L"0.1|0|0|0|1");
  ASSERT_TRUE(placement);
  EXPECT_EQ(placement->left, 0.1F);
}

TEST(Placement, IsRefusedWithBoundsBeyondSinglePrecision) {
  EXPECT_FALSE(parse_placement(L"1e39|0|0|0|0|"));
  EXPECT_FALSE(parse_placement(L"0|0|0|-1e39|0|"));
}

TEST(Placement, ReadsAStateOutOfRangeAsNormal) {
  EXPECT_EQ(parse_placement(L"0|0|0|0|40000|")->state, 0);
}

TEST(Placement, IsWrittenWithASeparatorBehindEachField) {
  EXPECT_EQ(format_placement({120, -240.5, 4000, 3000.25, 2}, L'.'), L"120|-240.5|4000|3000.25|2|");
  EXPECT_EQ(format_placement({0.1, 240.5, 0, 12345678, 0}, L','), L"0,1|240,5|0|1,234568E+07|0|");
  EXPECT_EQ(format_placement({}, L'.'), L"0|0|0|0|0|");
}

TEST(Placement, ComesBackAsWritten) {
  for (const wchar_t decimal : {L'.', L',', L'\''}) {
    const std::wstring text = format_placement({-15, 30.75, 4005, 0.1, 1}, decimal);
    EXPECT_EQ(format_placement(*parse_placement(text, decimal), decimal), text);
  }
}

void expect_bounds(const WindowPlacement& placement, double left, double top, double width,
                   double height) {
  EXPECT_DOUBLE_EQ(placement.left, left);
  EXPECT_DOUBLE_EQ(placement.top, top);
  EXPECT_DOUBLE_EQ(placement.width, width);
  EXPECT_DOUBLE_EQ(placement.height, height);
  EXPECT_EQ(placement.state, 2);
}

TEST(FittedPlacement, StaysWhereItIsOnTheScreen) {
  expect_bounds(fitted({10, 20, 990, 780, 2}, 1000, 800), 10, 20, 990, 780);
  expect_bounds(fitted({-500, -600, 100, 100, 2}, 1000, 800), -500, -600, 100, 100);
}

TEST(FittedPlacement, StartsAtTheEdgeThatItWouldLeave) {
  expect_bounds(fitted({11, 20, 990, 780, 2}, 1000, 800), 0, 20, 900, 780);
  expect_bounds(fitted({10, 21, 990, 780, 2}, 1000, 800), 10, 0, 990, 640);
  expect_bounds(fitted({2000, 2000, 10, 10, 2}, 1000, 800), 0, 0, 900, 640);
}

}  // namespace
}  // namespace pv
