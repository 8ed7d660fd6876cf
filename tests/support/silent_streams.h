// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv::test {

/// The standard streams lead nowhere as long as it lives: some members write to the open file of a
/// given number.
class SilentStreams {
 public:
  SilentStreams();
  ~SilentStreams();
  SilentStreams(const SilentStreams&) = delete;
  SilentStreams& operator=(const SilentStreams&) = delete;
};

}  // namespace pv::test
