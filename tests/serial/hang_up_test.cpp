// The device goes away in the middle of everything. Run alone: nobody answers afterwards.

#include "tests/serial/line_test.h"

namespace pv::test {
namespace {

using HangUp = LineTest;

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

}  // namespace
}  // namespace pv::test
