// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Measures the library beside this program against the platform and prints a table of ratios.
//
//   bench_tests [--lines <folder of the counts>]
//
// With the option, measures simulated transmitters on sixteen lines instead.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

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

void measure_library(Report& report) {
  measure_lookups(report);
  measure_values(report);
  measure_exchanges(report);
  measure_events(report);
  measure_statistics(report);
  measure_files(report);
  measure_memory(report);
}

int run(int argc, char** argv) {
  const Apartment apartment;
  Report report;
  if (argc == 3 && std::string_view(argv[1]) == "--lines") {
    measure_lines(report, std::filesystem::path(argv[2]).wstring());
  } else {
    measure_library(report);
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
