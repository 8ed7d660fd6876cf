// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/statistics/running_statistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "core/errors/automation_error.h"

namespace pv {
namespace {

RunningStatistics series_of(const std::vector<float>& readings) {
  RunningStatistics series;
  for (float reading : readings) series.add(reading);
  return series;
}

TEST(RunningStatistics, ComputesTheFiguresOfASeries) {
  RunningStatistics series = series_of({2, 4, 4, 4, 5, 5, 7, 9});
  series.refresh();
  EXPECT_EQ(series.sample, 8);
  EXPECT_EQ(series.sum, 40);
  EXPECT_EQ(series.average, 5);
  EXPECT_EQ(series.min, 2);
  EXPECT_EQ(series.max, 9);
  EXPECT_EQ(series.range, 7);
  EXPECT_EQ(series.sum_of_squares, 232);
  EXPECT_EQ(series.square_of_sum, 1600);
  EXPECT_EQ(series.value, 9);
  EXPECT_FLOAT_EQ(series.deviation, static_cast<float>(std::sqrt(32.0 / 7.0)));
}

TEST(RunningStatistics, DerivedFiguresLagBehindUntilRefresh) {
  RunningStatistics series = series_of({2, 4});
  EXPECT_EQ(series.average, 0);
  series.refresh();
  EXPECT_EQ(series.average, 3);
  series.add(100);
  EXPECT_EQ(series.average, 3);
  EXPECT_EQ(series.range, 2);
  EXPECT_EQ(series.max, 100);
}

TEST(RunningStatistics, AnEmptySeriesHasZeroFigures) {
  RunningStatistics series;
  series.refresh();
  EXPECT_EQ(series.average, 0);
  EXPECT_EQ(series.deviation, 0);
  EXPECT_EQ(series.range, 0);
}

TEST(RunningStatistics, OneReadingLeavesTheDeviationAsItWas) {
  RunningStatistics series = series_of({3});
  series.deviation = 7;
  series.refresh();
  EXPECT_EQ(series.deviation, 7);
  EXPECT_EQ(series.min, 3);
  EXPECT_EQ(series.max, 3);
}

TEST(RunningStatistics, NegativeReadingsSetTheLimitsToo) {
  const RunningStatistics series = series_of({-5, -9, -7});
  EXPECT_EQ(series.min, -9);
  EXPECT_EQ(series.max, -5);
}

TEST(RunningStatistics, WhatIsNoNumberIsIgnored) {
  RunningStatistics series = series_of({1, std::numeric_limits<float>::quiet_NaN(), 3});
  EXPECT_EQ(series.sample, 2);
  EXPECT_EQ(series.sum, 4);
  EXPECT_EQ(series.value, 3);
}

TEST(RunningStatistics, SquaresAreExact) {
  EXPECT_EQ(series_of({1.1f}).sum_of_squares, 1.1f * static_cast<double>(1.1f));
  EXPECT_EQ(series_of({3e38f}).sum_of_squares, 3e38f * static_cast<double>(3e38f));
  EXPECT_GT(series_of({1e-30f}).sum_of_squares, 0);
}

// Equal readings may make the sum-of-squares formula slightly negative.
TEST(RunningStatistics, RoundingNeverMakesTheDeviationFail) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> values(-1e6f, 1e6f);
  for (int round = 0; round < 1000; ++round) {
    RunningStatistics series = series_of(std::vector<float>(3 + round % 7, values(random)));
    series.refresh();
    ASSERT_GE(series.deviation, 0);
    ASSERT_FALSE(std::isnan(series.deviation));
  }
}

TEST(RunningStatistics, AFloatingPointFaultGivesDeviationZero) {
  RunningStatistics series = series_of({3e38f, -3e38f, 3e38f});
  series.refresh();
  EXPECT_EQ(series.deviation, 0);
}

TEST(RunningStatistics, AResultThatIsNotFiniteKeepsTheFormerOne) {
  RunningStatistics series = series_of({2, 4});
  series.refresh();
  for (const float reading : {3e38f, -3e38f, 3e38f}) series.add(reading);
  series.refresh();
  EXPECT_EQ(series.max, 3e38f);
  EXPECT_EQ(series.min, -3e38f);
  EXPECT_EQ(series.range, 2);
  EXPECT_EQ(series.average, 3e38f / 5);

  series.add(std::numeric_limits<float>::infinity());
  series.refresh();
  EXPECT_EQ(series.range, 2);
  EXPECT_EQ(series.average, 3e38f / 5);
  EXPECT_EQ(series.deviation, 0);
}

TEST(RunningStatistics, TheCountMayNotLeave32Bits) {
  RunningStatistics series;
  series.sample = std::numeric_limits<std::int32_t>::max();
  EXPECT_THROW(series.add(1), automation_error);
  EXPECT_EQ(series.sum, 0);
}

TEST(RunningStatistics, EqualNumbersGiveTheFirst) {
  EXPECT_EQ(smaller_of(2, 2), 2);
  EXPECT_EQ(larger_of(2, 2), 2);
  EXPECT_TRUE(std::signbit(smaller_of(-0.0f, 0.0f)));
  EXPECT_TRUE(std::signbit(larger_of(-0.0f, 0.0f)));
  EXPECT_EQ(smaller_of(1, 2), 1);
  EXPECT_EQ(smaller_of(2, 1), 1);
  EXPECT_EQ(larger_of(1, 2), 2);
  EXPECT_EQ(larger_of(2, 1), 2);
}

}  // namespace
}  // namespace pv
