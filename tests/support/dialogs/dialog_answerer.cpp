// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/dialogs/dialog_answerer.h"

#include "tests/support/dialogs/child_window.h"

namespace pv::test {
namespace {

constexpr DWORD kPause = 5;       // milliseconds between two looks
constexpr DWORD kPatience = 500;  // milliseconds after which a button is pressed again
constexpr wchar_t kAnswered[] = L"pv.answered";  // property of a window that was noted: the time

constexpr int kFirstButton = 1000;
constexpr int kButtons = 3;
constexpr int kPrompt = 1010;
constexpr int kLongPrompt = 1011;
constexpr int kFirstIcon = 1020;
constexpr int kIcons = 4;

BOOL CALLBACK take_message_box(HWND window, LPARAM result) {
  const HWND button = child_window(window, kFirstButton);
  if (!button || !IsWindowVisible(button) || !IsWindowEnabled(window)) return TRUE;
  *reinterpret_cast<HWND*>(result) = window;
  return FALSE;
}

HWND open_box_of(DWORD thread) {
  HWND found = nullptr;
  EnumThreadWindows(thread, &take_message_box, reinterpret_cast<LPARAM>(&found));
  return found;
}

std::wstring text_of(HWND window) {
  wchar_t text[1024] = L"";
  DWORD_PTR length = 0;
  SendMessageTimeoutW(window, WM_GETTEXT, ARRAYSIZE(text), reinterpret_cast<LPARAM>(text),
                      SMTO_NORMAL, 1000, &length);
  return {text, static_cast<std::size_t>(length)};
}

int visible_icon(HWND box) {
  for (int i = 0; i < kIcons; ++i) {
    if (IsWindowVisible(child_window(box, kFirstIcon + i))) return (i + 1) * 16;
  }
  return 0;
}

ShownBox read_box(HWND box) {
  const HWND long_prompt = child_window(box, kLongPrompt);
  const bool is_long = long_prompt && IsWindowVisible(long_prompt);
  ShownBox shown{text_of(box),
                 text_of(is_long ? long_prompt : child_window(box, kPrompt)),
                 visible_icon(box),
                 {}};
  for (int i = 0; i < kButtons; ++i) {
    const HWND button = child_window(box, kFirstButton + i);
    if (button && IsWindowVisible(button)) shown.buttons.push_back(text_of(button));
  }
  return shown;
}

}  // namespace

DialogAnswerer::DialogAnswerer()
    : watched_thread_(GetCurrentThreadId()),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      answerer_([this] { answer_until_stopped(); }) {}

DialogAnswerer::~DialogAnswerer() {
  SetEvent(stop_);
  answerer_.join();
  CloseHandle(stop_);
}

std::vector<ShownBox> DialogAnswerer::boxes() const {
  const std::lock_guard lock(mutex_);
  return boxes_;
}

void DialogAnswerer::answer_until_stopped() {
  while (WaitForSingleObject(stop_, kPause) == WAIT_TIMEOUT) {
    if (const HWND box = open_box_of(watched_thread_)) answer(box);
  }
}

void DialogAnswerer::answer(HWND box) {
  const auto now = static_cast<std::intptr_t>(GetTickCount() | 1);
  const auto pressed = reinterpret_cast<std::intptr_t>(GetPropW(box, kAnswered));
  if (pressed && static_cast<DWORD>(now - pressed) < kPatience) return;
  if (!pressed) {
    ShownBox shown = read_box(box);
    const std::lock_guard lock(mutex_);
    boxes_.push_back(std::move(shown));
  }
  SetPropW(box, kAnswered, reinterpret_cast<HANDLE>(now));
  PostMessageW(child_window(box, kFirstButton), BM_CLICK, 0, 0);
}

}  // namespace pv::test
