// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "com/automation.h"

namespace pv {

/// Blocks the owner's window and the other windows of this thread while a dialog is open. Ends by
/// unblocking exactly those that it blocked and that still live.
class ModalScope {
 public:
  explicit ModalScope(HWND owner);
  ~ModalScope();
  ModalScope(const ModalScope&) = delete;
  ModalScope& operator=(const ModalScope&) = delete;

 private:
  static BOOL CALLBACK block_each(HWND window, LPARAM scope);
  void block(HWND window);

  HWND active_;
  std::vector<HWND> blocked_;
};

/// Gives the windows that this thread creates the look of the user's visual style.
class VisualStyles {
 public:
  VisualStyles();
  ~VisualStyles();
  VisualStyles(const VisualStyles&) = delete;
  VisualStyles& operator=(const VisualStyles&) = delete;

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
};

}  // namespace pv
