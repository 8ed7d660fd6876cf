// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "com/automation.h"

namespace pv::test {

/// What a message box showed.
struct ShownBox {
  std::wstring title;
  std::wstring prompt;
  int icon = 0;  ///< 16 stop, 32 question, 48 exclamation, 64 information, 0 none
  std::vector<std::wstring> buttons;
};

/// While it lives, every message box of the library that appears on the thread that made it is
/// noted and answered with its first button.
class DialogAnswerer {
 public:
  DialogAnswerer();
  DialogAnswerer(const DialogAnswerer&) = delete;
  DialogAnswerer& operator=(const DialogAnswerer&) = delete;
  ~DialogAnswerer();

  /// The boxes so far, in the order of their appearance.
  std::vector<ShownBox> boxes() const;

 private:
  void answer_until_stopped();
  void answer(HWND box);

  DWORD watched_thread_;
  HANDLE stop_;
  mutable std::mutex mutex_;
  std::vector<ShownBox> boxes_;
  std::thread answerer_;
};

}  // namespace pv::test
