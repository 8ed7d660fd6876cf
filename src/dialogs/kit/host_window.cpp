// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/host_window.h"

namespace pv {
namespace {

bool can_own(HWND window) {
  return IsWindowVisible(window) && IsWindowEnabled(window) && !IsIconic(window) &&
         !(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
}

BOOL CALLBACK find(HWND window, LPARAM found) {
  if (!can_own(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

}  // namespace

HWND host_window() {
  const HWND active = GetActiveWindow();
  if (active && can_own(active)) return active;
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), find, reinterpret_cast<LPARAM>(&found));
  return found;
}

}  // namespace pv
