// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/dialogs/dialog_presser.h"

#include <map>

namespace pv::test {
namespace {

constexpr DWORD kPause = 20;  // milliseconds between two looks

BOOL CALLBACK take_if_open(HWND window, LPARAM result) {
  if (!IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
  *reinterpret_cast<HWND*>(result) = window;
  return FALSE;
}

HWND open_window_of(DWORD thread) {
  HWND found = nullptr;
  EnumThreadWindows(thread, &take_if_open, reinterpret_cast<LPARAM>(&found));
  return found;
}

WPARAM default_button(HWND window) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, DM_GETDEFID, 0, 0, SMTO_NORMAL, 500, &answer);
  return HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : IDOK;
}

void press_key(DWORD thread, HWND window, WPARAM key) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  const bool focused = GetGUIThreadInfo(thread, &info) && info.hwndFocus;
  PostMessageW(focused ? info.hwndFocus : window, WM_KEYDOWN, key, 1);
}

}  // namespace

DialogPresser::DialogPresser()
    : watched_thread_(GetCurrentThreadId()),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      presser_([this] { press_until_stopped(); }) {}

DialogPresser::~DialogPresser() {
  SetEvent(stop_);
  presser_.join();
  CloseHandle(stop_);
}

void DialogPresser::press_until_stopped() {
  std::map<HWND, int> attempts;
  while (WaitForSingleObject(stop_, kPause) == WAIT_TIMEOUT) {
    const HWND window = open_window_of(watched_thread_);
    if (!window) {
      attempts.clear();
      continue;
    }
    const int attempt = attempts[window]++;
    if (attempt == 0) ++seen_;
    press(window, attempt);
  }
}

void DialogPresser::press(HWND window, int attempt) {
  switch (attempt % 10) {  // a window gets some time to react before the next means is tried
    case 1:
      PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
      break;
    case 3:
      PostMessageW(window, WM_COMMAND, default_button(window), 0);
      break;
    case 5:
      press_key(watched_thread_, window, VK_ESCAPE);
      break;
    case 7:
      press_key(watched_thread_, window, VK_RETURN);
      break;
    case 9:
      PostMessageW(window, WM_CLOSE, 0, 0);
      break;
    default:
      break;
  }
}

}  // namespace pv::test
