// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Many random calls: nothing may crash, hang or leak. The allocation balance and the object count
// are checked when the program ends.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/hostile/world.h"
#include "tests/support/dialogs/dialog_presser.h"
#include "tests/support/module.h"
#include "tests/support/silent_streams.h"

namespace pv::test {
namespace {

constexpr long kCallsPerSeed = 2000;
constexpr long kUsualCalls = 40'000;

/// The environment variable PV_HOSTILE_CALLS asks for more.
unsigned seed_count() {
  const char* const calls = std::getenv("PV_HOSTILE_CALLS");
  return static_cast<unsigned>((calls ? std::atol(calls) : kUsualCalls) / kCallsPerSeed);
}

/// One test for each seed.
class HostileCaller : public testing::TestWithParam<unsigned> {
 protected:
  HostileCaller() { SetCurrentDirectoryW(scratch_folder().c_str()); }
  ~HostileCaller() override { SetCurrentDirectoryW(program_folder().c_str()); }

  // A single seed may find none that takes its listeners.
  static void TearDownTestSuite() { EXPECT_GT(connected_, 0); }

  static long connected_;
};
long HostileCaller::connected_ = 0;

TEST_P(HostileCaller, DoesNoHarm) {
  const DialogPresser presser;
  World::Tally tally;
  {
    const SilentStreams silence;
    World world(GetParam());
    world.call_many(kCallsPerSeed);
    tally = world.tally();
  }
  EXPECT_GT(tally.refused, tally.calls / 20);       // much is refused
  EXPECT_LT(tally.refused, tally.calls * 19 / 20);  // and much is not
  EXPECT_GT(tally.mischief, 0);                     // the library called back
  connected_ += tally.connected;
}

INSTANTIATE_TEST_SUITE_P(Seeds, HostileCaller, testing::Range(1u, seed_count() + 1));

// Each of these did harm once: objects that serve themselves; an array variable by reference.
INSTANTIATE_TEST_SUITE_P(Kept, HostileCaller, testing::Values(40u, 142u));

TEST(Circles, OfTransmittersThatServeEachOtherEndWithAnError) {
  const Object one = Object::create(L"pvItems32.CTxm");
  const Object two = Object::create(L"pvItems32.CTxm");
  one.set(L"Server", two);
  two.set(L"Server", one);
  constexpr long kOutOfStack = 28;
  EXPECT_EQ(one.try_get(L"Items").number(), kOutOfStack);
  EXPECT_EQ(two.try_get(L"Items").number(), kOutOfStack);  // every time anew
  one.set(L"Server", Value::nothing());
  two.set(L"Server", Value::nothing());
}

}  // namespace
}  // namespace pv::test
