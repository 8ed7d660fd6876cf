// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A device with software 1.10. Run alone: it needs a simulated transmitter of its own.

#include "tests/serial/line_test.h"

namespace pv::test {
namespace {

using OldSoftware = LineTest;

TEST_F(OldSoftware, IsFoundAndItsItemsAreUsed) {
  transmitter_.put(L"Version", L"");
  ASSERT_TRUE(connect());
  EXPECT_EQ(transmitter_.get(L"Version"), L"1.10");
  EXPECT_EQ(transmitter_.get_object(L"Items").get(L"Count"), 54);
  ASSERT_TRUE(read(L"32"));
  EXPECT_EQ(record().get(L"CmdItemID"), 160);
  EXPECT_EQ(value(L"32"), 3);
}

TEST_F(OldSoftware, DoesNotKnowNewerItems) {
  EXPECT_EQ(read(L"6"), false);
  EXPECT_EQ(answer_error(), kItemUnknown);
}

}  // namespace
}  // namespace pv::test
