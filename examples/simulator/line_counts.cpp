// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "line_counts.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace fluxor {

void write_counts(const std::string& path, const LineCounts& counts, const LineFormat& format) {
  const std::string new_file = path + ".new";
  std::ofstream file(new_file);
  file << "telegrams=" << counts.telegrams << "\nreceived=" << counts.received
       << "\nsent=" << counts.sent << "\nmilliseconds=" << counts.milliseconds
       << "\nbaud=" << format.baud << "\nbits=" << format.bits << '\n';
  file.close();
  if (!file || std::rename(new_file.c_str(), path.c_str()) != 0) {
    throw std::runtime_error("the counts cannot be written to " + path);
  }
}

}  // namespace fluxor
