// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/line_counts.h"

#include <windows.h>

#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace pv::test {
namespace {

constexpr int kPatience = 1000, kPause = 10;  // looks, and milliseconds between two

}  // namespace

LineCounts counts_in(const std::filesystem::path& path) {
  std::ifstream file(path);
  std::map<std::string, double> numbers;
  std::string name;
  for (double number = 0; std::getline(file, name, '=') && file >> number >> std::ws;)
    numbers[name] = number;
  if (!(numbers["baud"] > 0)) return {};
  const double characters = numbers["received"] + numbers["sent"];
  return {static_cast<long>(numbers["telegrams"]), static_cast<long>(characters),
          characters * numbers["bits"] / numbers["baud"] + numbers["milliseconds"] / 1000};
}

LineCounts operator-(const LineCounts& later, const LineCounts& earlier) {
  return {later.telegrams - earlier.telegrams, later.characters - earlier.characters,
          later.seconds - earlier.seconds};
}

LineCounts counts_after(const std::filesystem::path& file, long telegrams) {
  for (int look = 0; look < kPatience; ++look, Sleep(kPause)) {
    const LineCounts counts = counts_in(file);
    if (counts.telegrams == telegrams) return counts;
  }
  throw std::runtime_error("the transmitter of " + file.string() + " has not counted " +
                           std::to_string(telegrams) + " telegrams");
}

}  // namespace pv::test
