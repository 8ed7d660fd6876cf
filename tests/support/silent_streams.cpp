// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/silent_streams.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

namespace pv::test {
namespace {

// Where the streams wait: beyond the numbers that tests pass as files.
constexpr int kStreams = 3;
constexpr int kWaiting = 1000;

}  // namespace

SilentStreams::SilentStreams() {
  std::fflush(stdout);
  const int nowhere = _open("NUL", _O_RDWR);
  for (int i = 0; i < kStreams; ++i) {
    _dup2(i, kWaiting + i);
    _dup2(nowhere, i);
  }
  _close(nowhere);
}

SilentStreams::~SilentStreams() {
  std::fflush(stdout);
  for (int i = 0; i < kStreams; ++i) {
    _dup2(kWaiting + i, i);
    _close(kWaiting + i);
  }
}

}  // namespace pv::test
