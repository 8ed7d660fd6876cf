// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"

namespace pv {

/// The window whose handle automation gives as a Long. That is enough in 64-bit programs, too: only
/// the lower 32 bits of a window handle are significant there, and it is sign-extended.
inline HWND window_of(long handle) { return static_cast<HWND>(LongToHandle(handle)); }

}  // namespace pv
