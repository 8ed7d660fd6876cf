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

/// Nanoseconds per operation, each the median of its rounds.
struct Medians {
  double ours = 0;
  double theirs = 0;
  double ratio() const { return ours / theirs; }
};

/// Times both tasks in alternating rounds, so that a busy moment of the machine strikes both.
Medians compare(const Task& ours, const Task& theirs);

}  // namespace pv::bench
