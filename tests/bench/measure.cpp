// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/bench/measure.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace pv::bench {
namespace {

using Clock = std::chrono::steady_clock;

// Many short rounds: on a busy machine most of them are not interrupted, and the median is one of
// those. They are far above the resolution of the clock.
constexpr int kRounds = 15;
constexpr int kMostRounds = 201;
constexpr double kRoundNanoseconds = 1e6;
constexpr double kAllNanoseconds = 400e6;
constexpr long kMostCalls = 1'000'000;

double nanoseconds_of(const Task& task, long calls) {
  const auto start = Clock::now();
  for (long i = 0; i < calls; ++i) task.work();
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

// Also the warm-up: what is created at first use is there before the first round.
long calls_per_round(const Task& task) {
  task.work();
  for (long calls = 1;; calls *= 2) {
    if (calls >= kMostCalls || nanoseconds_of(task, calls) >= kRoundNanoseconds) return calls;
  }
}

double per_operation(const Task& task, long calls) {
  return nanoseconds_of(task, calls) / (static_cast<double>(calls) * task.operations);
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

}  // namespace

Medians compare(const Task& ours, const Task& theirs) {
  const long our_calls = calls_per_round(ours);
  const long their_calls = calls_per_round(theirs);
  std::vector<double> our_times, their_times;
  const auto start = Clock::now();
  const auto is_enough = [&](int rounds) {
    const std::chrono::duration<double, std::nano> spent = Clock::now() - start;
    return rounds >= kRounds && (rounds >= kMostRounds || spent.count() >= kAllNanoseconds);
  };
  for (int round = 0; !is_enough(round); ++round) {
    our_times.push_back(per_operation(ours, our_calls));
    their_times.push_back(per_operation(theirs, their_calls));
  }
  return {median(our_times), median(their_times)};
}

}  // namespace pv::bench
