// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "faults.h"

namespace fluxor {

struct Options {
  std::string data = ".";
  std::string software = "2.30";
  std::string link;
  std::string faults_file;
  std::string counts_file;
  Faults faults;
  int address = 0;  // 0: the one in the values file
  std::uint32_t seed = 1;
  int store = 50;         // per cent of an item's waiting time until a write is stored
  int hang_up = 0;        // telegrams after which the program ends; 0: never
  bool timed = false;     // characters take their time on the line
  bool autobaud = false;  // the device follows the baud rate of the host
  bool verbose = false;
};

/// Throws std::runtime_error for an option that is not known or lacks its value.
Options parse_options(std::span<const char* const> arguments);

extern const char* const kUsage;

}  // namespace fluxor
