// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "tests/bench/measure.h"

namespace pv::bench {

/// The table of what was measured, in Markdown.
class Report {
 public:
  /// A measured ratio and the goal that it should not exceed.
  void ratio(std::string work, std::string against, const Medians& medians, double goal);
  /// The same for a goal that is a time, in nanoseconds; the comparison is for information.
  void time(std::string work, std::string against, const Medians& medians, double goal);
  /// The same for a goal that is the difference of the two times, in nanoseconds.
  void difference(std::string work, std::string against, const Medians& medians, double goal);
  /// A ratio of sizes, in bytes.
  void size(std::string work, std::string against, const Medians& bytes, double goal);
  /// A ratio without a goal.
  void information(std::string work, std::string against, const Medians& medians);

  void print() const;

 private:
  using Line = std::vector<std::string>;
  void add(std::string work, std::string ours, std::string against, std::string theirs,
           const Medians& figures, std::string goal, std::string verdict);
  void add_times(std::string work, std::string against, const Medians& medians, std::string goal,
                 std::string verdict);

  std::vector<Line> lines_;
};

}  // namespace pv::bench
