// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include "tests/dialogs/driver/automation_client.h"
#include "tests/dialogs/driver/gallery.h"
#include "tests/support/memory/allocation_spy.h"

namespace pv::dialogs_test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kTestLimit = std::chrono::seconds(240);

// A dialog that nobody answers would wait forever: this ends the program instead.
class Watchdog : public testing::EmptyTestEventListener {
 public:
  Watchdog() {
    restart("start");
    std::thread([this] { watch(); }).detach();
  }

  void restart(const std::string& what) {
    what_ = what;
    limit_ = (Clock::now() + kTestLimit).time_since_epoch().count();
  }

  void OnTestStart(const testing::TestInfo& test) override {
    restart(std::string(test.test_suite_name()) + "." + test.name());
  }

 private:
  [[noreturn]] void watch() {
    while (IsDebuggerPresent() || Clock::now().time_since_epoch().count() < limit_.load())
      Sleep(200);
    std::printf("[  FAILED  ] %s: TIME LIMIT EXCEEDED, a dialog hangs\n", what_.c_str());
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 3);
    std::abort();
  }

  std::string what_;
  std::atomic<Clock::rep> limit_{0};
};

}  // namespace
}  // namespace pv::dialogs_test

int main(int count, char** arguments) {
  using namespace pv::dialogs_test;
  testing::InitGoogleTest(&count, arguments);
  if (!register_library()) return 2;
  // Owned by Google Test from here on; lives to the end of the program.
  const auto watchdog = new Watchdog;
  testing::UnitTest::GetInstance()->listeners().Append(watchdog);
  pv::test::install_allocation_spy();
  const Apartment apartment;
  if (count == 4 && std::strcmp(arguments[1], "--gallery") == 0) {
    return make_gallery(arguments[2], arguments[3],
                        [&](const std::string& what) { watchdog->restart(what); });
  }
  return RUN_ALL_TESTS();
}
