// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cmath>
#include <cstdint>
#include <limits>

namespace pv {

/// Running figures of a series of readings. `average`, `range` and `deviation` are as of the last
/// refresh.
struct RunningStatistics {
  std::int32_t sample = 0;
  float value = 0;
  float min = 0;
  float max = 0;
  double sum = 0;
  double sum_of_squares = 0;
  double square_of_sum = 0;
  float average = 0;
  float range = 0;
  float deviation = 0;

  /// A reading that is no number is ignored. Throws kOverflow when the count leaves 32 bits.
  void add(float reading);
  /// A result that is not finite fails: average and range stay as they were, the deviation is 0.
  void refresh();

 private:
  [[noreturn]] static void refuse_more();
};

/// The smaller and the larger of two numbers, by their single-precision difference.
inline float smaller_of(float a, float b) {
  const float difference = a - b;
  return difference <= 0 ? a : b;
}
inline float larger_of(float a, float b) {
  const float difference = a - b;
  return difference >= 0 ? a : b;
}

// Here for the sake of its callers' loops: a call would cost as much as the sums.
inline void RunningStatistics::add(float reading) {
  if (std::isnan(reading)) return;
  if (sample == std::numeric_limits<std::int32_t>::max()) refuse_more();
  ++sample;
  min = sample == 1 ? reading : smaller_of(min, reading);
  max = sample == 1 ? reading : larger_of(max, reading);
  value = reading;
  sum += reading;
  sum_of_squares += static_cast<double>(reading) * reading;  // exact: no square is lost or rounded
  square_of_sum = sum * sum;
}

}  // namespace pv
