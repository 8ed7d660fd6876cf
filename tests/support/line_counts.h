// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>

namespace pv::test {

/// What a simulated transmitter counted on its line since it was started.
struct LineCounts {
  long telegrams = 0;   // commands
  long characters = 0;  // in both directions
  double seconds = 0;   // that they need at the speed of the line, with the delay of the answers
};

LineCounts operator-(const LineCounts& later, const LineCounts& earlier);

/// The counts that the transmitter told last, which it does when its line has fallen silent; none
/// without a file.
LineCounts counts_in(const std::filesystem::path& file);

/// The counts once they tell so many telegrams. Throws when they do not within ten seconds.
LineCounts counts_after(const std::filesystem::path& file, long telegrams);

}  // namespace pv::test
