// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Keeps the first file open as Windows keeps a loaded library, until the second one, which it
// makes, is gone. The test platform lets others write to a library that is loaded.

#include <windows.h>

int wmain(int count, wchar_t** arguments) {
  if (count != 3) return 2;
  const HANDLE held = CreateFileW(arguments[1], GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, 0, nullptr);
  const HANDLE sign = CreateFileW(arguments[2], GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                  nullptr, CREATE_ALWAYS, 0, nullptr);
  if (held == INVALID_HANDLE_VALUE || sign == INVALID_HANDLE_VALUE) return 1;
  CloseHandle(sign);
  while (GetFileAttributesW(arguments[2]) != INVALID_FILE_ATTRIBUTES) Sleep(20);
  return 0;
}
