// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/bench/report.h"

#include <algorithm>
#include <cstdio>

namespace pv::bench {
namespace {

std::string formatted(const char* pattern, double number) {
  char text[64];
  std::snprintf(text, sizeof text, pattern, number);
  return text;
}

std::string time_text(double nanoseconds) {
  if (nanoseconds < 1e3) return formatted("%.1f ns", nanoseconds);
  if (nanoseconds < 1e6) return formatted("%.2f us", nanoseconds / 1e3);
  return formatted("%.2f ms", nanoseconds / 1e6);
}

const char* verdict(bool met) { return met ? "met" : "missed"; }

}  // namespace

void Report::add(std::string work, std::string ours, std::string against, std::string theirs,
                 const Medians& figures, std::string goal, std::string verdict) {
  std::string spread = figures.spread > 0 ? formatted("%.0f %%", 100 * figures.spread) : "";
  lines_.push_back({std::move(work), std::move(ours), std::move(against), std::move(theirs),
                    formatted("%.3g", figures.ratio()), std::move(spread), std::move(goal),
                    std::move(verdict)});
  std::fprintf(stderr, ".");
}

void Report::add_times(std::string work, std::string against, const Medians& medians,
                       std::string goal, std::string verdict) {
  add(std::move(work), time_text(medians.ours), std::move(against), time_text(medians.theirs),
      medians, std::move(goal), std::move(verdict));
}

void Report::ratio(std::string work, std::string against, const Medians& medians, double goal) {
  add_times(std::move(work), std::move(against), medians, formatted("%.3g", goal),
            verdict(medians.ratio() <= goal));
}

void Report::time(std::string work, std::string against, const Medians& medians, double goal) {
  add_times(std::move(work), std::move(against), medians, time_text(goal),
            verdict(medians.ours <= goal));
}

void Report::difference(std::string work, std::string against, const Medians& medians,
                        double goal) {
  add_times(std::move(work), std::move(against), medians, "+ " + time_text(goal),
            verdict(medians.ours - medians.theirs <= goal));
}

void Report::size(std::string work, std::string against, const Medians& bytes, double goal) {
  add(std::move(work), formatted("%.0f bytes", bytes.ours), std::move(against),
      formatted("%.0f bytes", bytes.theirs), bytes, formatted("%.3g", goal),
      verdict(bytes.ratio() <= goal));
}

void Report::information(std::string work, std::string against, const Medians& medians) {
  add_times(std::move(work), std::move(against), medians, "", "");
}

void Report::print() const {
  std::vector<Line> table{{"work", "time", "against", "its time", "ratio", "spread", "goal", ""}};
  table.insert(table.end(), lines_.begin(), lines_.end());
  // At least so wide that tables of different groups can stand below each other.
  std::vector<std::size_t> widths{53, 10, 47, 11, 7, 6, 9, 6};
  for (const Line& line : table) {
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], line[i].size());
  }
  std::fprintf(stderr, "\n");
  for (std::size_t row = 0; row < table.size(); ++row) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      std::printf("| %-*s ", static_cast<int>(widths[i]), table[row][i].c_str());
    }
    std::printf("|\n");
    if (row > 0) continue;
    for (std::size_t width : widths) std::printf("|%s", std::string(width + 2, '-').c_str());
    std::printf("|\n");
  }
}

}  // namespace pv::bench
