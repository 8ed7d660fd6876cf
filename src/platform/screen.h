// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv {

struct ScreenSize {
  double width = 0;
  double height = 0;
};

/// Size of the primary screen in twips (1440 to the inch).
ScreenSize screen_size_in_twips();

}  // namespace pv
