// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

#include "core/forms/window_placement.h"
#include "host/late_bound.h"

namespace pv {

/// Where a form's placement is kept: an initialisation file, a section and a key.
struct PlacementSlot {
  std::wstring file;
  std::wstring section;
  std::wstring key;
};

/// Writes the placement of a host form; a form that is not in the normal state is left in it.
bool save_placement(const LateBound& form, const PlacementSlot& slot);

/// Places a host form as it stood; False when there is no usable record.
bool restore_placement(const LateBound& form, const PlacementSlot& slot);

/// The record itself, in twips; what is read fits on the screen.
bool store_placement(const WindowPlacement& placement, const PlacementSlot& slot);
std::optional<WindowPlacement> stored_placement(const PlacementSlot& slot);

}  // namespace pv
