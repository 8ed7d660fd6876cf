// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/statistics/running_statistics.h"

#include "core/errors/automation_error.h"

namespace pv {
namespace {

// The sum-of-squares formula; rounding can make the variance negative.
float deviation_of(const RunningStatistics& s) {
  const double variance = s.sum_of_squares - s.square_of_sum / s.sample;
  const double deviation = std::sqrt(variance / (s.sample - 1));
  const auto single = static_cast<float>(deviation);
  return variance >= 0 && std::isfinite(single) ? single : 0;
}

// A result beyond the range of its type fails, and the figure stays as it was.
void store(float& figure, float result) {
  if (std::isfinite(result)) figure = result;
}

}  // namespace

void RunningStatistics::refuse_more() {
  throw automation_error(ErrorCode::kOverflow, L"number of readings");
}

void RunningStatistics::refresh() {
  store(range, max - min);
  if (sample == 0) {
    average = 0;
    deviation = 0;
    return;
  }
  store(average, static_cast<float>(sum / sample));
  if (sample >= 2) deviation = deviation_of(*this);
}

}  // namespace pv
