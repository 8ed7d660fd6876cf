// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"

namespace pv {

/// The window of a host form, which answers to hWnd by name; none for Nothing. Errors of the form
/// pass to the caller.
HWND owner_window(IDispatch* form);

}  // namespace pv
