// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Running figures of a series of readings, against an independent computation.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/automation/utility/utility_support.h"

namespace pv::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kLargest = std::numeric_limits<float>::max();

/// The figures from all readings at once, as they are defined: each stored in its own precision.
/// A derived figure that is not finite stays 0, as it was.
struct Figures {
  explicit Figures(const std::vector<float>& readings) {
    for (const float reading : readings) {
      sum += reading;
      squares += static_cast<double>(reading) * static_cast<double>(reading);
      if (++sample == 1 || is_above(reading, max)) max = reading;
      if (sample == 1 || is_above(min, reading)) min = reading;
      value = reading;
    }
    square_of_sum = sum * sum;
    range = finite_or_zero(max - min);
    if (sample == 0) return;
    average = finite_or_zero(static_cast<float>(sum / sample));
    if (sample < 2) return;
    const double variance = squares - square_of_sum / sample;
    if (!(variance >= 0)) return;
    deviation = finite_or_zero(static_cast<float>(std::sqrt(variance / (sample - 1))));
  }

  static float finite_or_zero(float figure) { return std::isfinite(figure) ? figure : 0; }

  static bool is_above(float a, float b) {
    const volatile float difference = a - b;
    return difference > 0;
  }

  int sample = 0;
  float value = 0, min = 0, max = 0;
  double sum = 0, squares = 0, square_of_sum = 0;
  float average = 0, range = 0, deviation = 0;
};

bool same(const Value& actual, double expected) {
  return actual.real() == expected || (std::isnan(actual.real()) && std::isnan(expected));
}

class Statistics : public testing::Test {
 protected:
  void add(const std::vector<float>& readings) const {
    for (const float reading : readings) series_.call(L"Add", reading);
  }
  Value figure(const wchar_t* name) const { return series_.get(name); }

  void expect_running(const Figures& expected) const {
    EXPECT_EQ(figure(L"Sample"), expected.sample);
    EXPECT_PRED2(same, figure(L"Value"), expected.value);
    EXPECT_PRED2(same, figure(L"Min"), expected.min);
    EXPECT_PRED2(same, figure(L"Max"), expected.max);
    EXPECT_PRED2(same, figure(L"Sum"), expected.sum);
    EXPECT_PRED2(same, figure(L"SD2"), expected.squares);
    EXPECT_PRED2(same, figure(L"S2D"), expected.square_of_sum);
  }
  void expect_derived(const Figures& expected) const {
    EXPECT_PRED2(same, figure(L"Average"), expected.average);
    EXPECT_PRED2(same, figure(L"Range"), expected.range);
    EXPECT_PRED2(same, figure(L"STD"), expected.deviation);
  }
  void expect_figures_of(const std::vector<float>& readings) const {
    series_.call(L"Reset");
    add(readings);
    series_.call(L"Refresh");
    const Figures expected(readings);
    expect_running(expected);
    expect_derived(expected);
  }

  const Object series_ = Object::create(L"pvItems32.CStatistics");
};

TEST_F(Statistics, BeginWithZeros) {
  expect_running(Figures({}));
  expect_derived(Figures({}));
}

TEST_F(Statistics, HaveTheirPublishedTypes) {
  add({1.5f, 2});
  series_.call(L"Refresh");
  EXPECT_EQ(figure(L"Sample").vt, VT_I4);
  for (const wchar_t* name : {L"Value", L"Min", L"Max", L"Average", L"Range", L"STD"}) {
    EXPECT_EQ(figure(name).vt, VT_R4) << printable(name);
  }
  for (const wchar_t* name : {L"Sum", L"SD2", L"S2D"}) {
    EXPECT_EQ(figure(name).vt, VT_R8) << printable(name);
  }
}

TEST_F(Statistics, CanOnlyBeRead) {
  for (const wchar_t* name : {L"Sample", L"Value", L"Min", L"Max", L"Sum", L"SD2", L"S2D",
                              L"Average", L"Range", L"STD"}) {
    EXPECT_FALSE(series_.try_put(name, 1).worked()) << printable(name);
  }
  expect_running(Figures({}));
}

TEST_F(Statistics, OfASeries) {
  add({2, 4, 4, 4, 5, 5, 7, 9});
  series_.call(L"Refresh");
  EXPECT_EQ(figure(L"Sample"), 8);
  EXPECT_EQ(figure(L"Value"), 9.0f);
  EXPECT_EQ(figure(L"Sum"), 40.0);
  EXPECT_EQ(figure(L"Average"), 5.0f);
  EXPECT_EQ(figure(L"Min"), 2.0f);
  EXPECT_EQ(figure(L"Max"), 9.0f);
  EXPECT_EQ(figure(L"Range"), 7.0f);
  EXPECT_EQ(figure(L"SD2"), 232.0);
  EXPECT_EQ(figure(L"S2D"), 1600.0);
  EXPECT_EQ(figure(L"STD"), static_cast<float>(std::sqrt(32.0 / 7.0)));
}

TEST_F(Statistics, DerivedFiguresLagBehindUntilRefresh) {
  add({2, 4});
  expect_running(Figures({2, 4}));
  expect_derived(Figures({}));
  series_.call(L"Refresh");
  expect_derived(Figures({2, 4}));
  add({100, -1});
  expect_running(Figures({2, 4, 100, -1}));
  expect_derived(Figures({2, 4}));
  series_.call(L"Refresh");
  expect_derived(Figures({2, 4, 100, -1}));
}

TEST_F(Statistics, OfAnEmptySeriesAreZero) {
  series_.call(L"Refresh");
  expect_derived(Figures({}));
}

TEST_F(Statistics, OfOneReadingHaveNoDeviation) {
  expect_figures_of({3.7f});
  EXPECT_EQ(figure(L"STD"), 0.0f);
  EXPECT_EQ(figure(L"Average"), 3.7f);
  EXPECT_EQ(figure(L"Range"), 0.0f);
}

TEST_F(Statistics, ResetStartsANewSeries) {
  add({2, 4, 9});
  series_.call(L"Refresh");
  series_.call(L"Reset");
  expect_running(Figures({}));
  expect_derived(Figures({}));
  add({-5});
  expect_running(Figures({-5}));
  series_.call(L"Refresh");
  EXPECT_EQ(figure(L"STD"), 0.0f);
}

TEST_F(Statistics, ResetForgetsReadingsBeforeAnyFigureIsAskedFor) {
  add({2, 4, 9});
  series_.call(L"Reset");
  expect_running(Figures({}));
}

// However many readings come between two looks at the figures.
TEST_F(Statistics, CountEveryReading) {
  std::vector<float> readings;
  for (std::size_t more = 1; more <= 40; ++more) {
    const std::vector<float> next(more, static_cast<float>(more) / 4);
    add(next);
    readings.insert(readings.end(), next.begin(), next.end());
    expect_running(Figures(readings));
  }
}

TEST_F(Statistics, OfNegativeReadingsHaveTheirOwnLimits) {
  expect_figures_of({-5, -9, -7});
  EXPECT_EQ(figure(L"Min"), -9.0f);
  EXPECT_EQ(figure(L"Max"), -5.0f);
}

TEST_F(Statistics, IgnoreWhatIsNoNumber) {
  add({kNan});
  expect_running(Figures({}));
  add({1, kNan, 3, kNan});
  expect_running(Figures({1, 3}));
}

TEST_F(Statistics, TakeInfinities) {
  expect_figures_of({kInfinity});
  expect_figures_of({1, kInfinity, 2});
  EXPECT_EQ(figure(L"Max"), kInfinity);
  EXPECT_EQ(figure(L"Min"), 1.0f);
  EXPECT_EQ(figure(L"STD"), 0.0f);
  expect_figures_of({-kInfinity, 5});
  expect_figures_of({kInfinity, -kInfinity, 0});
  expect_figures_of({kInfinity, kInfinity});
}

TEST_F(Statistics, HaveDeviationZeroAfterAFloatingPointFault) {
  expect_figures_of({kLargest, -kLargest, kLargest});
  EXPECT_EQ(figure(L"STD"), 0.0f);
  EXPECT_EQ(figure(L"Sum"), static_cast<double>(kLargest));
}

TEST_F(Statistics, KeepFiguresWhoseResultIsNotFinite) {
  add({2, 4});
  series_.call(L"Refresh");
  add({3e38f, -3e38f});
  series_.call(L"Refresh");
  EXPECT_EQ(figure(L"Range"), 2.0f);
  add({3e38f});
  series_.call(L"Refresh");
  EXPECT_EQ(figure(L"Average"), 3e38f / 5);
  add({kInfinity});
  series_.call(L"Refresh");
  EXPECT_EQ(figure(L"Range"), 2.0f);
  EXPECT_EQ(figure(L"Average"), 3e38f / 5);
  EXPECT_EQ(figure(L"STD"), 0.0f);
}

// Equal readings make the sum-of-squares formula slightly negative now and then.
TEST_F(Statistics, OfEqualReadingsNeverFail) {
  std::mt19937 random(3);
  std::uniform_real_distribution<float> readings(-1e6f, 1e6f);
  for (int round = 0; round < 200; ++round) {
    expect_figures_of(
        std::vector<float>(2 + static_cast<std::size_t>(round % 9), readings(random)));
    ASSERT_GE(figure(L"STD").real(), 0);
  }
}

TEST_F(Statistics, AgreeWithTheDefinitionForReadingsOfAllMagnitudes) {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> mantissa(-1, 1);
  for (int round = 0; round < 500 && !HasFailure(); ++round) {
    std::uniform_int_distribution<int> exponent(-20 - round % 120, round % 100);
    std::vector<float> readings(1 + random() % 40);
    for (float& reading : readings) reading = std::ldexp(mantissa(random), exponent(random));
    expect_figures_of(readings);
  }
}

TEST_F(Statistics, OfAMeasuredValueAreExactOverALongSeries) {
  std::mt19937 random(11);
  std::normal_distribution<float> noise(1013.25f, 0.5f);
  std::vector<float> readings(100'000);
  for (float& reading : readings) reading = noise(random);
  expect_figures_of(readings);
  EXPECT_NEAR(figure(L"Average").real(), 1013.25, 0.01);
}

TEST_F(Statistics, TakeReadingsOfAnyNumericType) {
  for (const Value& reading : {Value(2), Value(static_cast<short>(2)), Value(2.0), Value(true),
                               Value(in_user_locale(L"1.5"))}) {
    series_.call(L"Add", reading);
  }
  expect_running(Figures({2, 2, 2, -1, 1.5f}));
  Value variable(4);
  series_.call(L"Add", by_ref(variable));
  EXPECT_EQ(figure(L"Value"), 4.0f);
}

TEST_F(Statistics, RefuseWhatNoSingleNumberHolds) {
  add({1});
  EXPECT_EQ(series_.try_call(L"Add", 1e39).result, DISP_E_OVERFLOW);
  EXPECT_EQ(series_.try_call(L"Add", L"abc").result, DISP_E_TYPEMISMATCH);
  EXPECT_FALSE(series_.try_call(L"Add", Value::null()).worked());
  expect_running(Figures({1}));
}

TEST_F(Statistics, AreOfEachObjectItsOwn) {
  const Object other = Object::create(L"pvItems32.CStatistics");
  add({1, 2});
  other.call(L"Add", 7.0f);
  expect_running(Figures({1, 2}));
  EXPECT_EQ(other.get(L"Sample"), 1);
}

// --- FPMin and FPMax

class FloatLimits : public Statistics {
 protected:
  float smaller(float a, float b) const {
    const Value result = series_.call(L"FPMin", a, b);
    EXPECT_EQ(result.vt, VT_R4);
    return result.fltVal;
  }
  float larger(float a, float b) const {
    const Value result = series_.call(L"FPMax", a, b);
    EXPECT_EQ(result.vt, VT_R4);
    return result.fltVal;
  }
};

TEST_F(FloatLimits, GiveTheSmallerAndTheLarger) {
  EXPECT_EQ(smaller(1, 2), 1);
  EXPECT_EQ(smaller(2, 1), 1);
  EXPECT_EQ(larger(1, 2), 2);
  EXPECT_EQ(larger(2, 1), 2);
  EXPECT_EQ(smaller(-kLargest, kLargest), -kLargest);
  EXPECT_EQ(larger(-kLargest, kLargest), kLargest);
}

TEST_F(FloatLimits, OfEqualNumbersGiveTheFirst) {
  EXPECT_EQ(smaller(2, 2), 2);
  EXPECT_TRUE(std::signbit(smaller(-0.0f, 0.0f)));
  EXPECT_FALSE(std::signbit(smaller(0.0f, -0.0f)));
  EXPECT_TRUE(std::signbit(larger(-0.0f, 0.0f)));
  EXPECT_FALSE(std::signbit(larger(0.0f, -0.0f)));
}

// The difference of two infinities, and of anything and NaN, is neither positive nor negative.
TEST_F(FloatLimits, WithoutADifferenceGiveTheSecond) {
  EXPECT_EQ(smaller(kInfinity, kInfinity), kInfinity);
  EXPECT_EQ(smaller(kNan, 1), 1);
  EXPECT_EQ(larger(kNan, 1), 1);
  EXPECT_TRUE(std::isnan(smaller(1, kNan)));
  EXPECT_TRUE(std::isnan(larger(1, kNan)));
}

TEST_F(FloatLimits, TellTheClosestNumbersApart) {
  const float one = 1, next = std::nextafter(one, 2.0f);
  EXPECT_EQ(smaller(next, one), one);
  EXPECT_EQ(larger(one, next), next);
  const float least = std::numeric_limits<float>::denorm_min();
  EXPECT_EQ(smaller(least, 0), 0);
  EXPECT_EQ(larger(0, least), least);
}

TEST_F(FloatLimits, DoNotTouchTheSeries) {
  add({5});
  smaller(1, 2);
  larger(100, 2);
  expect_running(Figures({5}));
}

}  // namespace
}  // namespace pv::test
