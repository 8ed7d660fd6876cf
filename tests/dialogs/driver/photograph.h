// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <windows.h>

#include <vector>

namespace pv::dialogs_test {

/// The colours of a rectangle of the screen, 24 bits each, bottom row first.
struct Picture {
  LONG width = 0;
  LONG height = 0;
  std::vector<char> bits;

  bool operator==(const Picture&) const = default;
  /// Counted from the upper left corner.
  COLORREF at(LONG x, LONG y) const;
};

BITMAPINFOHEADER header_of(const Picture& picture);

/// What is seen there now.
Picture photograph(const RECT& place);

}  // namespace pv::dialogs_test
