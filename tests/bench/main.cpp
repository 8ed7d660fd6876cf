// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Measures the library beside this program against the platform and prints a table of ratios.
//
//   bench_tests [group...]
//   bench_tests --lines <folder of the counts>
//
// Measures the named groups of kGroups, or all; with the option, simulated transmitters on sixteen
// lines instead. It starts itself as bench_tests --cold <what> where a measurement needs a process
// of its own.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

// Leaves COM after every object is gone, whatever happens.
struct Apartment {
  Apartment() { check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { CoUninitialize(); }
};

constexpr struct {
  std::string_view name;
  void (*measure)(Report& report);
} kGroups[] = {
    {"lookups", measure_lookups},       {"values", measure_values},
    {"exchanges", measure_exchanges},   {"events", measure_events},
    {"statistics", measure_statistics}, {"files", measure_files},
    {"memory", measure_memory},         {"cold", measure_cold},
};

void measure_library(Report& report, const std::vector<std::string_view>& names) {
  stay_on_one_processor();
  std::size_t measured = 0;
  for (const auto& [name, measure] : kGroups) {
    if (!names.empty() && std::find(names.begin(), names.end(), name) == names.end()) continue;
    measure(report);
    ++measured;
  }
  if (measured < names.size()) throw std::runtime_error("there is no such group");
}

int run(int argc, char** argv) {
  const Apartment apartment;
  if (argc == 3 && std::string_view(argv[1]) == "--cold") {
    return static_cast<int>(measure_in_this_process(std::filesystem::path(argv[2]).wstring()));
  }
  Report report;
  if (argc == 3 && std::string_view(argv[1]) == "--lines") {
    measure_lines(report, std::filesystem::path(argv[2]).wstring());
  } else {
    measure_library(report, {argv + 1, argv + argc});
  }
  report.print();
  return 0;
}

}  // namespace
}  // namespace pv::bench

int main(int argc, char** argv) {
  try {
    return pv::bench::run(argc, argv);
  } catch (const pv::com_failure& error) {
    std::printf("bench: a call failed with %lx\n", error.result());
    return 1;
  } catch (const std::exception& error) {
    std::printf("bench: %s\n", error.what());
    return 1;
  }
}
