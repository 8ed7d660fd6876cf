#pragma once

#include <cstdint>

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
  void refresh();
};

/// The smaller and the larger of two numbers, by their single-precision difference.
float smaller_of(float a, float b);
float larger_of(float a, float b);

}  // namespace pv
