// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/bench/measure.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace pv::bench {
namespace {

using Clock = std::chrono::steady_clock;

// A slice is far shorter than what a scheduler gives a process at a time, so that many run from
// beginning to end undisturbed, and far above the resolution of the clock.
constexpr double kSliceNanoseconds = 2e5;
constexpr double kAllNanoseconds = 600e6;
constexpr std::size_t kFewestSlices = 16;
constexpr long kMostCalls = 1'000'000;

double nanoseconds_of(const Task& task, long calls) {
  const auto start = Clock::now();
  for (long i = 0; i < calls; ++i) task.work();
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

// Also the warm-up: what is created at first use is there before the first slice.
long calls_per_slice(const Task& task) {
  task.work();
  for (long calls = 1;; calls *= 2) {
    if (calls >= kMostCalls || nanoseconds_of(task, calls) >= kSliceNanoseconds) return calls;
  }
}

// One side of a comparison.
class Side {
 public:
  explicit Side(const Task& task) : task_(task), calls_(calls_per_slice(task)) {}

  void measure_slice() {
    slices_.push_back(nanoseconds_of(task_, calls_) /
                      (static_cast<double>(calls_) * task_.operations));
  }
  std::size_t count() const { return slices_.size(); }

  struct Figure {
    double median;
    double spread;
  };
  Figure of_fastest_quarter() {
    std::sort(slices_.begin(), slices_.end());
    const std::size_t last = slices_.size() / 4 - 1;
    const double median = slices_[last / 2];
    return {median, std::max(slices_[last] - median, median - slices_.front()) / median};
  }

 private:
  const Task& task_;
  long calls_;
  std::vector<double> slices_;
};

}  // namespace

Medians compare(const Task& ours, const Task& theirs) {
  Side our_side(ours), their_side(theirs);
  const auto start = Clock::now();
  const auto is_enough = [&] {
    const std::chrono::duration<double, std::nano> spent = Clock::now() - start;
    return our_side.count() >= kFewestSlices && spent.count() >= kAllNanoseconds;
  };
  while (!is_enough()) {
    our_side.measure_slice();
    their_side.measure_slice();
  }
  const auto our_figure = our_side.of_fastest_quarter();
  const auto their_figure = their_side.of_fastest_quarter();
  return {our_figure.median, their_figure.median, std::max(our_figure.spread, their_figure.spread)};
}

void stay_on_one_processor() {
  SetProcessAffinityMask(GetCurrentProcess(), DWORD_PTR{1} << GetCurrentProcessorNumber());
}

}  // namespace pv::bench
