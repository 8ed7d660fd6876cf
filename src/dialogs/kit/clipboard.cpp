// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/clipboard.h"

#include <cstring>

namespace pv {
namespace {

HGLOBAL global_copy(const std::wstring& text) {
  const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
  if (!memory) return nullptr;
  if (void* const place = GlobalLock(memory)) std::memcpy(place, text.c_str(), size);
  GlobalUnlock(memory);
  return memory;
}

}  // namespace

void copy_to_clipboard(HWND owner, const std::wstring& text) {
  const HGLOBAL memory = global_copy(text);
  if (!memory) return;
  bool taken = false;
  if (OpenClipboard(owner)) {
    EmptyClipboard();
    taken = SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
    CloseClipboard();
  }
  // What is taken belongs to the clipboard, which cppcheck takes for a release in any case.
  // cppcheck-suppress doubleFree
  if (!taken) GlobalFree(memory);
}

}  // namespace pv
