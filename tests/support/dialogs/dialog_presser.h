// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <thread>

#include "com/automation.h"

namespace pv::test {

/// While it lives, every window that appears on the thread that made it is answered, so that calls
/// that open dialogs come back: first Cancel, then the default button, then Esc and Enter, and the
/// window is closed when nothing else helps.
class DialogPresser {
 public:
  DialogPresser();
  ~DialogPresser();

  /// Windows seen so far.
  int windows_seen() const { return seen_; }

 private:
  void press_until_stopped();
  void press(HWND window, int attempt);

  DWORD watched_thread_;
  HANDLE stop_;
  std::atomic<int> seen_{0};
  std::thread presser_;
};

}  // namespace pv::test
