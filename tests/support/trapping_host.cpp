// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/trapping_host.h"

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cstdlib>
#include <string_view>

namespace pv::test {
namespace {

thread_local int hosts = 0;

}  // namespace

FloatingPointControl FloatingPointControl::current() {
  constexpr std::uint32_t kExceptions = 0x3F;
  constexpr std::uint16_t kMeant = 0x0F3F;  // without bits that have no meaning
  std::uint16_t x87 = 0;
  asm volatile("fnstcw %0" : "=m"(x87));
  return {static_cast<std::uint16_t>((x87 & kMeant) | 0x40), _mm_getcsr() & ~kExceptions};
}

void FloatingPointControl::set() const {
  asm volatile("fnclex\n\tfldcw %0" : : "m"(x87));
  _mm_setcsr(sse);
}

void PrintTo(const FloatingPointControl& control, std::ostream* out) {
  *out << std::hex << "x87 " << control.x87 << ", SSE " << control.sse << std::dec;
}

TrappingHost::TrappingHost(const FloatingPointControl& control)
    : control_(control), before_(FloatingPointControl::current()) {
  control_.set();
  ++hosts;
}

TrappingHost::~TrappingHost() {
  const FloatingPointControl left = FloatingPointControl::current();
  before_.set();
  --hosts;
  EXPECT_EQ(left, control_) << "the floating-point unit of the host";
}

bool TrappingHost::is_calling() { return hosts > 0; }

bool host_traps() {
  static const char* const wanted = std::getenv("PV_FLOATING_POINT");
  return wanted && std::string_view(wanted) == "traps";
}

}  // namespace pv::test
