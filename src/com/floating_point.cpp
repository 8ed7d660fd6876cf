// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/floating_point.h"

namespace pv {
namespace {

// The innermost scope of the thread that has set a host's state aside.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): each thread has one.
thread_local const FloatingPointScope* innermost = nullptr;

constexpr FloatingPointState default_state() {
  return {.mxcsr = 0x1F80,
          .x87_control = 0x027F,  // what a thread of the system begins with
          .x87_exceptions = 0};
}

constexpr std::uint16_t kExceptions = 0x7F;          // with the stack fault
constexpr std::uint16_t kFollowExceptions = 0x8080;  // summary and busy: the unit sets them itself

// As FNSTENV stores it in 32-bit and 64-bit code.
struct Environment {
  std::uint16_t control, reserved1;
  std::uint16_t status, reserved2;
  std::uint16_t tags, reserved3;
  std::uint32_t pointers[4];
};
static_assert(sizeof(Environment) == 28);

// The exceptions are written with the control word: a pending one that the old word lets pass
// would trap on the next instruction. What lies on the register stack stays.
void set_x87(std::uint16_t control, std::uint16_t exceptions) {
  Environment environment{};
  asm volatile("fnstenv %0" : "=m"(environment));  // masks all, so that FLDENV does not trap
  environment.control = control;
  environment.status &= static_cast<std::uint16_t>(~(kExceptions | kFollowExceptions));
  environment.status |= exceptions;
  asm volatile("fldenv %0" : : "m"(environment));
}

}  // namespace

FloatingPointState floating_point_state() noexcept {
  FloatingPointState state{};
  state.mxcsr = _mm_getcsr();
  std::uint16_t status = 0;
  asm volatile("fnstcw %0" : "=m"(state.x87_control));
  asm volatile("fnstsw %0" : "=m"(status));
  state.x87_exceptions = status & kExceptions;
  return state;
}

void set_floating_point_state(const FloatingPointState& state) noexcept {
  set_x87(state.x87_control, state.x87_exceptions);
  _mm_setcsr(state.mxcsr);
}

void FloatingPointScope::enter() noexcept {
  host_ = floating_point_state();
  set_floating_point_state(default_state());
  outer_ = innermost;
  innermost = this;
  entered_ = true;
  ++HostFloatingPoint::scopes_;
}

void FloatingPointScope::leave() noexcept {
  --HostFloatingPoint::scopes_;
  innermost = outer_;
  set_floating_point_state(host_);
}

void HostFloatingPoint::lend() noexcept {
  if (innermost) set_floating_point_state(innermost->host_);
}

void HostFloatingPoint::take_back() noexcept { set_floating_point_state(default_state()); }

}  // namespace pv
