// Measures the library beside this program against the platform and prints a table of ratios.

#include <cstdio>
#include <exception>

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

int run() {
  const Apartment apartment;
  Report report;
  measure_lookups(report);
  measure_values(report);
  measure_exchanges(report);
  measure_events(report);
  measure_statistics(report);
  measure_files(report);
  measure_memory(report);
  report.print();
  return 0;
}

}  // namespace
}  // namespace pv::bench

int main() {
  try {
    return pv::bench::run();
  } catch (const pv::com_failure& error) {
    std::printf("bench: a call failed with %lx\n", error.result());
    return 1;
  } catch (const std::exception& error) {
    std::printf("bench: %s\n", error.what());
    return 1;
  }
}
