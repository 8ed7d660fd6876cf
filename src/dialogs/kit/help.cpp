// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/help.h"

#include "apartment/thread_state.h"

namespace pv {
namespace {

constexpr UINT kShowTopicNumber = 0x000F;  // HH_HELP_CONTEXT

bool is_file(const std::wstring& name) {
  const DWORD attributes = GetFileAttributesW(name.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace

void show_help_topic(HWND window, int topic) {
  const std::wstring& file = thread_state().help_file;
  if (topic == 0 || !is_file(file)) return;
  // Never unloaded: the viewer keeps a thread of its own.
  const HMODULE viewer = LoadLibraryW(L"hhctrl.ocx");
  if (!viewer) return;
  using HtmlHelp = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);
  const auto html_help =
      reinterpret_cast<HtmlHelp>(reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpW")));
  if (html_help) html_help(window, file.c_str(), kShowTopicNumber, static_cast<DWORD_PTR>(topic));
}

}  // namespace pv
