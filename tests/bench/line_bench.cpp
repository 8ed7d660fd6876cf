// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The round on the line: all items of simulated transmitters, read through host, library, sample
// server and protocol, against the time that the line itself needs for the characters.

#include <algorithm>
#include <chrono>
#include <string>

#include "tests/bench/subject.h"
#include "tests/support/line_host.h"

namespace pv::bench {
namespace {

using Clock = std::chrono::steady_clock;
using test::LineHost;

// All in nanoseconds, for reading all items once.
struct Round {
  double elapsed = 1e18;  // the best round of the slowest line
  double line = 0;        // that the line itself needs
  double processor = 0;   // of this process, for one line
};

double nanoseconds_since(Clock::time_point begin) {
  return std::chrono::duration<double, std::nano>(Clock::now() - begin).count();
}

double processor_time() {
  FILETIME created, ended, kernel, user;
  if (!GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user)) return 0;
  const auto nanoseconds = [](const FILETIME& time) {
    return 100.0 * (time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime);
  };
  return nanoseconds(kernel) + nanoseconds(user);
}

double best_round(const LineHost& host, int rounds) {
  double best = 1e18;
  for (int round = 0; round < rounds; ++round) {
    const auto begin = Clock::now();
    host.read_all();
    best = std::min(best, nanoseconds_since(begin));
  }
  return best;
}

Round read_lines(short lines, int baud, int rounds, const std::wstring& counts_folder) {
  const std::wstring settings = std::to_wstring(baud) + L",n,8,1";
  std::vector<double> times(static_cast<std::size_t>(lines));
  Round round;
  std::barrier<> barrier(lines);
  test::in_apartments(lines, [&](short line) {
    test::Together together(barrier);
    const LineHost host(line, settings, counts_folder);
    host.read_all();  // what is made at the first use is there afterwards
    const auto before = host.counts();
    together.wait();
    const double processor = processor_time();
    times[static_cast<std::size_t>(line) - 1] = best_round(host, rounds);
    together.wait();
    const double all_processor = processor_time() - processor;
    const auto counts = host.counts() - before;
    if (line != 1) return;
    round.processor = all_processor / rounds / lines;
    round.line = counts.seconds * 1e9 / rounds;
  });
  round.elapsed = *std::max_element(times.begin(), times.end());
  return round;
}

struct Speed {
  int baud;
  const char* name;
  int rounds;
  double line_share;  // of the time, at least
};

constexpr Speed kSpeeds[] = {
    {4800, "4,800", 3, 0.98}, {9600, "9,600", 3, 0.97}, {115200, "115,200", 40, 0.9}};
constexpr Speed kManyLines = kSpeeds[1];
constexpr short kLines[] = {4, 16};
constexpr double kMostAgainstOneLine = 1.05;

std::string lines_text(short lines) {
  return lines == 1 ? "1 line" : std::to_string(lines) + " lines at once";
}

void add_processor(Report& report, const Round& round, short lines) {
  report.information("processor time of the host per line, " + lines_text(lines),
                     "the time that this took", {round.processor, round.elapsed});
}

}  // namespace

void measure_lines(Report& report, const std::wstring& counts_folder) {
  Round one_line;
  for (const Speed& speed : kSpeeds) {
    const Round round = read_lines(1, speed.baud, speed.rounds, counts_folder);
    report.ratio(std::string("all items of a transmitter at ") + speed.name + " baud",
                 "the line's own time", {round.elapsed, round.line}, 1 / speed.line_share);
    if (speed.baud == kManyLines.baud) one_line = round;
  }
  add_processor(report, one_line, 1);
  for (const short lines : kLines) {
    const Round round = read_lines(lines, kManyLines.baud, kManyLines.rounds, counts_folder);
    report.ratio(std::string("all items at ") + kManyLines.name + " baud, " + lines_text(lines),
                 lines_text(1), {round.elapsed, one_line.elapsed}, kMostAgainstOneLine);
    add_processor(report, round, lines);
  }
}

}  // namespace pv::bench
