// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv {

struct BitmapSize {
  long width = 0;
  long height = 0;
};

/// Size in pixels of a bitmap handle; `dc` is the device context that its bits belong to. Zero for
/// a handle that is no bitmap.
BitmapSize bitmap_size(long bitmap, long dc);

}  // namespace pv
