// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A host whose run-time library lets the floating-point unit trap.
#pragma once

#include <cstdint>
#include <ostream>

namespace pv::test {

/// The control words of the x87 unit and of the SSE unit, without the exceptions that the latter
/// remembers.
struct FloatingPointControl {
  std::uint16_t x87 = 0;
  std::uint32_t sse = 0;
  bool operator==(const FloatingPointControl&) const = default;

  static FloatingPointControl current();
  void set() const;
};
void PrintTo(const FloatingPointControl& control, std::ostream* out);

/// Invalid operations, overflow and divisions by zero trap.
inline constexpr FloatingPointControl kTraps{0x0372, 0x1900};
/// The same, and results are rounded up.
inline constexpr FloatingPointControl kTrapsRoundingUp{0x0B72, 0x5900};
/// Nothing traps.
inline constexpr FloatingPointControl kMasked{0x037F, 0x1F80};

/// Sets the unit of this thread for as long as it lives, and fails the test when it is set
/// otherwise at the end.
class TrappingHost {
 public:
  explicit TrappingHost(const FloatingPointControl& control = kTraps);
  ~TrappingHost();
  TrappingHost(const TrappingHost&) = delete;
  TrappingHost& operator=(const TrappingHost&) = delete;

  /// Whether the thread is within such a host.
  static bool is_calling();

 private:
  FloatingPointControl control_;
  FloatingPointControl before_;
};

/// Whether the test program was told to call as such a host: PV_FLOATING_POINT=traps.
bool host_traps();

}  // namespace pv::test
