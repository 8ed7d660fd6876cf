// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The record that remembers where a window stood.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace pv {

/// Bounds in the form's own unit, single precision; state 0 normal, 1 minimised, 2 maximised.
struct WindowPlacement {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
  short state = 0;
};

/// nullopt for a text of fewer than five fields (the empty one included) and for bounds beyond
/// single precision. `decimal` is the symbol that the writer may have used.
std::optional<WindowPlacement> parse_placement(std::wstring_view text, wchar_t decimal = L',');

/// left|top|width|height|state|
std::wstring format_placement(const std::array<std::wstring, 4>& bounds, short state);

/// The same with the bounds as single-precision numbers.
std::wstring format_placement(const WindowPlacement& placement, wchar_t decimal);

/// A placement that would leave the screen to the right starts at its left edge with 0.9 of its
/// width; one that would leave it at the bottom starts at the top with 0.8 of its height. The
/// factors differ on purpose.
WindowPlacement fitted(WindowPlacement placement, double screen_width, double screen_height);

}  // namespace pv
