// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The port goes away after some telegrams. Each test is run alone: nobody answers afterwards.

#include "tests/serial/line_test.h"
#include "tests/support/program.h"

namespace pv::test {
namespace {

using HangUp = LineTest;

constexpr int kTelegrams = 5;  // until the port goes away

/// The simulated device takes the end of the line, which --line names, away with itself.
bool line_exists() {
  const auto line = option("--line");
  if (!line) throw CallFailed("the option --line is missing");
  // A device has no attributes either, but another error.
  return GetFileAttributesA(line->c_str()) != INVALID_FILE_ATTRIBUTES ||
         GetLastError() != ERROR_FILE_NOT_FOUND;
}

TEST_F(HangUp, EndsInTimeAndSaysWhy) {
  ASSERT_TRUE(connect());
  const StopWatch watch;
  int reads = 0;
  while (read(L"110") && reads < 100) ++reads;
  EXPECT_LT(reads, 100);
  EXPECT_GT(reads, 0);
  EXPECT_EQ(com_error(), kPortNotOpen);
  EXPECT_EQ(item(L"110").get(L"Dirty", 1), true);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(connect(), false);
  EXPECT_LT(watch.seconds(), 40);
}

TEST_F(HangUp, BetweenTwoExchangesIsNoticedByTheNextOne) {
  ASSERT_TRUE(line_exists());
  be_patient();
  for (int i = 1; i < kTelegrams; ++i) ASSERT_TRUE(read(L"110"));
  set_faults("delay=3000");  // the last answer comes when nobody waits
  server_.call(L"SendMessage", L"ResponseTime=0.1");
  allow_attempts(1);
  ASSERT_EQ(read(L"110"), false);
  ASSERT_EQ(com_error(), kReceiveTimeOut);
  allow_attempts(6);
  const StopWatch watch;
  while (line_exists() && watch.seconds() < 20) Sleep(10);
  ASSERT_FALSE(line_exists());
  EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(com_error(), kPortNotOpen);
  EXPECT_EQ(record().get(L"Repeat"), 1) << "a port that is gone is not asked again";
  EXPECT_EQ(record().get(L"CmdItemID"), 110);
}

}  // namespace
}  // namespace pv::test
