// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "line_format.h"

namespace fluxor {

/// What passed the line since the start, whatever became of it.
struct LineCounts {
  long telegrams = 0;     // commands that came in whole
  long received = 0;      // characters of the host
  long sent = 0;          // characters of the device
  long milliseconds = 0;  // that answers were held back, as --delay says
  bool operator==(const LineCounts&) const = default;
};

/// Replaces a file of lines such as sent=123 by the counts, the speed and the bits of a character.
/// Whoever reads it meanwhile gets the former one.
void write_counts(const std::string& path, const LineCounts& counts, const LineFormat& format);

}  // namespace fluxor
