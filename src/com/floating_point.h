// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <xmmintrin.h>

#include <atomic>
#include <cstdint>

namespace pv {

/// What a thread's floating-point unit is set to, and the exceptions that it remembers: MXCSR, and
/// the words of the x87 unit, in which the run-time library computes some functions in 64 bits,
/// too.
struct FloatingPointState {
  std::uint32_t mxcsr;
  std::uint16_t x87_control;
  std::uint16_t x87_exceptions;
};

FloatingPointState floating_point_state() noexcept;
/// Does not trap, whatever is pending before or afterwards.
void set_floating_point_state(const FloatingPointState& state) noexcept;

/// Whether all exceptions are masked, results rounded to nearest, and doubles kept as such. To ask
/// MXCSR waits for the computations under way, on some processors as long as a short call takes:
/// bodies that compute nothing do without (see plain_method in com/object.h).
inline bool is_default_floating_point() noexcept {
  constexpr std::uint32_t kMxcsrExceptions = 0x3F, kMxcsrDefault = 0x1F80;
  if ((_mm_getcsr() & ~kMxcsrExceptions) != kMxcsrDefault) return false;
  // Exception masks, upper bit of the precision (53 or 64 bits), rounding.
  constexpr std::uint16_t kMeant = 0x0E3F, kDefault = 0x023F;
  std::uint16_t control = 0;
  asm volatile("fnstcw %0" : "=m"(control));
  if ((control & kMeant) != kDefault) return false;
  return true;
}

/// Around the work of the library: its floating-point unit masks all exceptions and rounds to
/// nearest, whatever the host has set, and the host finds its own state again.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): mostly nothing is set aside.
class FloatingPointScope {
 public:
  FloatingPointScope() noexcept {
    if (!is_default_floating_point()) enter();
  }
  ~FloatingPointScope() {
    if (entered_) leave();
  }
  FloatingPointScope(const FloatingPointScope&) = delete;
  FloatingPointScope& operator=(const FloatingPointScope&) = delete;

 private:
  friend class HostFloatingPoint;

  void enter() noexcept;
  void leave() noexcept;

  bool entered_ = false;
  FloatingPointState host_;          // only when entered
  const FloatingPointScope* outer_;  // as above
};

/// Around a call of the host from within the library: the host has its own state. Whatever it
/// leaves behind, the library goes on with the default. Only within a FloatingPointScope.
class HostFloatingPoint {
 public:
  HostFloatingPoint() noexcept {
    if (scopes_.load(std::memory_order_relaxed) != 0) lend();
  }
  ~HostFloatingPoint() {
    if (!is_default_floating_point()) take_back();
  }
  HostFloatingPoint(const HostFloatingPoint&) = delete;
  HostFloatingPoint& operator=(const HostFloatingPoint&) = delete;

 private:
  friend class FloatingPointScope;

  static void lend() noexcept;
  static void take_back() noexcept;

  // Scopes of all threads that have set a host's state aside: nearly always none.
  // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
  static inline std::atomic<long> scopes_{0};
};

}  // namespace pv
