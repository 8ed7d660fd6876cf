#include "util/running_statistics.h"

#include <cmath>
#include <limits>

#include "com/automation_error.h"

namespace pv {
namespace {

// The sum-of-squares formula; rounding can make the variance negative.
float deviation_of(const RunningStatistics& s) {
  const double variance = s.sum_of_squares - s.square_of_sum / s.sample;
  const double deviation = std::sqrt(variance / (s.sample - 1));
  const auto single = static_cast<float>(deviation);
  return variance >= 0 && std::isfinite(single) ? single : 0;
}

}  // namespace

float smaller_of(float a, float b) {
  const float difference = a - b;
  return difference <= 0 ? a : b;
}

float larger_of(float a, float b) {
  const float difference = a - b;
  return difference >= 0 ? a : b;
}

void RunningStatistics::add(float reading) {
  if (std::isnan(reading)) return;
  if (sample == std::numeric_limits<std::int32_t>::max()) {
    throw automation_error(ErrorCode::kOverflow, L"number of readings");
  }
  ++sample;
  min = sample == 1 ? reading : smaller_of(min, reading);
  max = sample == 1 ? reading : larger_of(max, reading);
  value = reading;
  sum += reading;
  sum_of_squares += static_cast<double>(reading) * reading;  // exact: no square is lost or rounded
  square_of_sum = sum * sum;
}

void RunningStatistics::refresh() {
  range = max - min;
  if (sample == 0) {
    average = 0;
    deviation = 0;
    return;
  }
  average = static_cast<float>(sum / sample);
  if (sample >= 2) deviation = deviation_of(*this);
}

}  // namespace pv
