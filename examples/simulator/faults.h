// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace fluxor {

/// What goes wrong on the line. Shares are per cent of the telegrams.
struct Faults {
  int drop = 0;      // lost: half of them on their way to the device, half on their way back
  int noise = 0;     // answers between garbage characters, one of their own characters replaced
  int half = 0;      // answers that break off in the middle
  int checksum = 0;  // answers whose checksum is wrong
  int delay = 0;     // milliseconds before an answer is sent
  int pulled = 0;    // not 0: nothing passes in either direction
};

/// Sets a fault by its name. False for an unknown name.
bool set_fault(Faults& faults, const std::string& name, int value);

/// Reads lines of name=value; a missing file leaves the faults as they are.
void read_faults(const std::string& path, Faults& faults);

/// A line that loses and damages telegrams, the same ones for the same seed.
class FaultyLine {
 public:
  explicit FaultyLine(std::uint32_t seed) : random_(seed) {}

  /// Decides on the next exchange; to be asked once for each command.
  void begin(const Faults& faults);
  bool command_arrives() const { return command_arrives_; }

  /// What arrives of an answer; nothing when it is lost.
  std::string carry(std::string answer);

 private:
  bool happens(int per_cent);
  std::size_t below(std::size_t limit);
  std::string garbage();

  std::mt19937 random_;
  Faults faults_;
  bool command_arrives_ = true;
  bool answer_arrives_ = true;
};

}  // namespace fluxor
