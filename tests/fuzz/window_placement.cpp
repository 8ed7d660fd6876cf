// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The record of a window's place. The first line is the record, the second the size of the screen.

#include "core/forms/window_placement.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/text/number_text.h"
#include "tests/fuzz/target.h"

namespace pv::fuzz {
namespace {

bool equal(const WindowPlacement& a, const WindowPlacement& b) {
  return a.left == b.left && a.top == b.top && a.width == b.width && a.height == b.height &&
         a.state == b.state;
}

void require_fits(const WindowPlacement& placement, double width, double height) {
  const WindowPlacement fit = fitted(placement, width, height);
  require(fit.left + fit.width <= width, "nothing leaves the screen to the right");
  require(fit.top + fit.height <= height, "nothing leaves the screen at the bottom");
  require(fit.state == placement.state, "the state stays");
  require(equal(fitted(fit, width, height), fit), "what fits stays");
}

}  // namespace

void window_placement(std::string_view bytes) {
  const std::wstring record = wide(take_line(bytes));
  const auto placement = parse_placement(record);
  const auto separators = std::count(record.begin(), record.end(), L'|');
  require(!placement || separators >= 4, "a record has five fields");
  if (!placement) return;
  for (const double bound :
       {placement->left, placement->top, placement->width, placement->height}) {
    require(std::isfinite(static_cast<float>(bound)), "bounds are single numbers");
  }
  const std::wstring written = format_placement(*placement, L',');
  const auto again = parse_placement(written);
  require(again.has_value(), "a written record is read");
  require(format_placement(*again, L',') == written, "a written record reads the same");
  require(again->state == placement->state, "the state comes back");

  const double side = std::fabs(lenient_number(wide(bytes)));
  if (side < 1e9) require_fits(*placement, side, side * 0.75);
}

}  // namespace pv::fuzz
