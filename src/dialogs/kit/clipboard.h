// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"

namespace pv {

/// Puts a text on the clipboard in the place of what is there. Nothing happens while another
/// program uses the clipboard, or when out of memory.
void copy_to_clipboard(HWND owner, const std::wstring& text);

}  // namespace pv
