// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"
#include "com/ref.h"

namespace pv {

/// Lets the user draw a symbol, modally, beginning with `symbol` (empty: a new one). True when the
/// user confirmed: `symbol` is the new text then; it is left alone otherwise.
bool edit_symbol(std::wstring& symbol);

/// The picture that the symbol editor makes of a symbol text, or none when the text is of another
/// editor; no window is shown. Errors of an editor that is not ours pass to the caller.
Ref<IPictureDisp> picture_of_symbol(const std::wstring& symbol);

}  // namespace pv
