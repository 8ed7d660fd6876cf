// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"
#include "com/ref.h"
#include "core/symbols/symbol_text.h"

namespace pv {

COLORREF symbol_colour_ref(std::uint8_t number);

/// Paints a symbol into the square at (left, top) of a device.
void paint_symbol(HDC device, const Symbol& symbol, int left, int top, int size);

/// A bitmap picture of a symbol, `size` pixels wide and high. Error: kInvalidCall for a size that
/// no symbol is shown in.
Ref<IPictureDisp> symbol_picture(const Symbol& symbol, long size);

}  // namespace pv
