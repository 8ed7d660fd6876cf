// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>
#include <cstddef>

namespace fluxor {

/// When the characters on a line have passed. They follow each other in both directions, as on a
/// bus with one pair of wires, and without gaps; each takes its time, or none.
class LineClock {
 public:
  using Clock = std::chrono::steady_clock;
  using Seconds = std::chrono::duration<double>;

  void set_character(double seconds) { character_ = Seconds(seconds); }

  /// Somebody begins to send: at once, or as soon as the line is free.
  void begin();
  void pass(std::size_t characters) { add(character_ * static_cast<double>(characters)); }
  void pause(int milliseconds) { add(std::chrono::milliseconds(milliseconds)); }

  /// Returns when all that was sent has passed.
  void wait() const;

 private:
  void add(Seconds time) { free_ += std::chrono::duration_cast<Clock::duration>(time); }

  Seconds character_{0};
  Clock::time_point free_{};
};

/// Makes this program's waiting end when its time is over, not up to 50 us later.
void wait_exactly();

}  // namespace fluxor
