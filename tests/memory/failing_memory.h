// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv::test {

/// Counts every allocation of this thread, by operator new or of the task allocator (texts,
/// arrays), as long as it lives; one of them can be made to fail. The library is a part of this
/// program, so these are its allocations.
class FailingMemory {
 public:
  /// The allocation with this number, from 1, fails; 0 lets all succeed.
  explicit FailingMemory(long failing);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  /// Whether that many allocations were made.
  bool reached() const;
};

/// The host's own code, called by the library: its memory does not fail and is not counted.
class HostCode {
 public:
  HostCode();
  ~HostCode();
  HostCode(const HostCode&) = delete;
  HostCode& operator=(const HostCode&) = delete;

 private:
  bool was_counting_;
};

/// Blocks of operator new that live at this moment.
long living_blocks();

}  // namespace pv::test
