// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"

namespace pv {

struct MessageBoxRequest {
  std::wstring prompt;
  /// 0 OK, 1 OK Cancel, 2 Abort Retry Ignore, 3 Yes No Cancel, 4 Yes No, 5 Retry Cancel; any other
  /// number is taken as 0.
  short buttons = 0;
  /// 16 stop, 32 question, 48 exclamation, 64 information; any other number shows no icon.
  short picture = 64;
  /// The library's own name when empty.
  std::wstring title;
  /// Any window, or none.
  HWND owner = nullptr;
};

/// Shows the library's message box and waits for the answer: 1 OK, 2 Cancel, 3 Abort, 4 Retry,
/// 5 Ignore, 6 Yes, 7 No. When the box is ended from outside (its owner is destroyed, the thread is
/// told to quit), the answer is Cancel if the set has it and 0 otherwise.
short show_message_box(const MessageBoxRequest& request);

}  // namespace pv
