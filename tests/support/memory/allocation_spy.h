// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>

namespace pv::test {

/// Watches every allocation of the task allocator: BSTRs, arrays, and what COM hands out. The
/// platform's BSTR cache must be off (environment OANOCACHE=1), or freed texts count as living.
///
/// Programs of the common main are watched as a whole and fail when something is left at the end.
/// A single test looks at the difference that a piece of code makes:
///
///   const AllocationBalance balance;
///   ...
///   EXPECT_EQ(balance.difference(), 0) << balance.report();
void install_allocation_spy();
void remove_allocation_spy();

/// Asked for every allocation under the spy whether it is to fail; null for no questions.
void refuse_allocations(bool (*refuses)());

/// Blocks that are allocated now and were allocated under the spy.
std::size_t living_allocations();

/// Those among them that the platform's stubs allocated for arguments of calls from other
/// apartments. Each is known by what the stub writes behind its data, so no block of anybody else
/// is among them.
std::size_t living_arguments_of_stubs();
/// Takes them for released.
void forget_arguments_of_stubs();

class AllocationBalance {
 public:
  AllocationBalance();
  /// Living blocks that did not exist at construction, less those of then that are gone.
  long difference() const;
  /// The new blocks: size and first characters of each.
  std::string report() const;

 private:
  std::size_t before_;
  std::size_t first_new_;
};

/// Forgets the blocks that are allocated while it lives and are left at its end: those that the
/// platform loses by itself.
class LostByThePlatform {
 public:
  LostByThePlatform();
  ~LostByThePlatform();
  LostByThePlatform(const LostByThePlatform&) = delete;
  LostByThePlatform& operator=(const LostByThePlatform&) = delete;

 private:
  std::size_t first_new_;
};

}  // namespace pv::test
