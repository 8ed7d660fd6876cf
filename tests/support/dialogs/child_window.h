// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <windows.h>

namespace pv::test {

/// The control of a form that belongs to another thread; null for none. Wine 10 has no end of
/// GetDlgItem when that thread destroys the form's first control in the middle of it.
HWND child_window(HWND form, int id);

}  // namespace pv::test
