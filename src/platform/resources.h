// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "com/automation.h"
#include "com/ref.h"

namespace pv {

/// The text with this number in the library's string table, or nothing.
std::optional<std::wstring> resource_text(std::uint16_t id);
/// The text of the library's resource LABEL with this number, or nothing.
std::optional<std::wstring> resource_label(std::uint16_t id);

/// A picture object that owns the bitmap from now on; on failure the bitmap is destroyed.
Ref<IPictureDisp> bitmap_picture(HBITMAP bitmap);

/// Picture objects of the library's own bitmaps and icons. Error: kInvalidCall for an unknown one.
Ref<IPictureDisp> resource_bitmap(short id);
Ref<IPictureDisp> resource_icon(short id);

}  // namespace pv
