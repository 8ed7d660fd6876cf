// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

namespace pv::bench {

/// Something to be timed: one call of `work` does `operations` of them.
struct Task {
  std::function<void()> work;
  double operations = 1;
};

/// A loop around one operation, so that the loop's own cost does not count for short ones.
template <class Operation>
Task repeated(int times, Operation operation) {
  return {[times, operation] {
            for (int i = 0; i < times; ++i) operation();
          },
          static_cast<double>(times)};
}

/// Nanoseconds per operation, each the median of the fastest quarter of its slices.
struct Medians {
  double ours = 0;
  double theirs = 0;
  double spread = 0;  // how far the fastest quarter reaches from the median, as a part of it
  double ratio() const { return ours / theirs; }
};

/// Times both tasks in alternating short slices, so that a busy moment of the machine strikes both.
/// The fastest quarter of the slices ran undisturbed.
Medians compare(const Task& ours, const Task& theirs);

/// Keeps the process on the processor that it runs on, whose caches and clock then serve both
/// sides of every comparison.
void stay_on_one_processor();

}  // namespace pv::bench
