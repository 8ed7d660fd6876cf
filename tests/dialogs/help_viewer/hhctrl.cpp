// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Stands in for the platform's help viewer: notes in the environment what it was asked to show.

#include <windows.h>

#include <string>

extern "C" __declspec(dllexport) HWND WINAPI
    HtmlHelpW(HWND, LPCWSTR file, UINT command, DWORD_PTR data) {
  const std::wstring call =
      std::to_wstring(command) + L" " + std::to_wstring(data) + L" " + (file ? file : L"");
  SetEnvironmentVariableW(L"PV_HELP_CALL", call.c_str());
  return nullptr;
}

/// Tells the stand-in from the real one.
extern "C" __declspec(dllexport) void NotesCalls() {}
