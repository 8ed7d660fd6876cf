// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "options.h"

#include <charconv>
#include <stdexcept>
#include <utility>

namespace fluxor {

const char* const kUsage =
    "Usage: fluxor_simulator [option...]\n"
    "Behaves like a Fluxor transmitter on a serial line and prints the name of the line's end.\n"
    "  --data FOLDER     settings files of the Fluxor (default: this folder)\n"
    "  --software NAME   software version of the device (default: 2.30)\n"
    "  --address N       bus address, 1 to 99 (default: that of the settings files)\n"
    "  --link PATH       makes PATH a link to the host's end of the line\n"
    "  --delay MS        milliseconds until an answer goes out\n"
    "  --timed           characters take the time that they need at the baud rate\n"
    "  --autobaud        answers at every baud rate\n"
    "  --counts FILE     counts of what passed the line, written whenever it has fallen silent\n"
    "  --drop PERCENT    telegrams lost\n"
    "  --noise PERCENT   answers damaged, between garbage\n"
    "  --half PERCENT    answers that break off\n"
    "  --checksum PERCENT  answers with a wrong checksum\n"
    "  --pulled 1        the line is not plugged in\n"
    "  --faults FILE     lines like drop=20, read anew before each telegram\n"
    "  --seed N          other faults\n"
    "  --store PERCENT   of an item's waiting time, until a write is stored (default: 50)\n"
    "  --hang-up N       ends after N telegrams\n"
    "  --verbose         prints each telegram\n";

namespace {

constexpr std::pair<const char*, bool Options::*> kFlags[] = {
    {"--timed", &Options::timed},
    {"--autobaud", &Options::autobaud},
    {"--verbose", &Options::verbose},
};

bool set_flag(Options& options, const std::string& name) {
  for (const auto& [known, member] : kFlags) {
    if (name != known) continue;
    options.*member = true;
    return true;
  }
  return false;
}

int number(const std::string& name, const std::string& text) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, value);
  if (result.ec != std::errc{} || result.ptr != end || value < 0) {
    throw std::runtime_error(name + " needs a number, not " + text);
  }
  return value;
}

bool set_text(Options& options, const std::string& name, const std::string& value) {
  if (name == "--data") {
    options.data = value;
  } else if (name == "--software") {
    options.software = value;
  } else if (name == "--link") {
    options.link = value;
  } else if (name == "--faults") {
    options.faults_file = value;
  } else if (name == "--counts") {
    options.counts_file = value;
  } else {
    return false;
  }
  return true;
}

void set_number(Options& options, const std::string& name, const std::string& text) {
  if (name == "--address") {
    options.address = number(name, text);
  } else if (name == "--seed") {
    options.seed = static_cast<std::uint32_t>(number(name, text));
  } else if (name == "--store") {
    options.store = number(name, text);
  } else if (name == "--hang-up") {
    options.hang_up = number(name, text);
  } else if (!name.starts_with("--") ||
             !set_fault(options.faults, name.substr(2), number(name, text))) {
    throw std::runtime_error("unknown option " + name);
  }
}

}  // namespace

Options parse_options(std::span<const char* const> arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string name = arguments[i];
    if (set_flag(options, name)) continue;
    if (i + 1 == arguments.size())
      throw std::runtime_error(name + " is unknown or lacks its value");
    const std::string value = arguments[++i];
    if (!set_text(options, name, value)) set_number(options, name, value);
  }
  return options;
}

}  // namespace fluxor
