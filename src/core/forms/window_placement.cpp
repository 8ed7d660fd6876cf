// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/forms/window_placement.h"

#include <cstddef>
#include <vector>

#include "core/text/number_text.h"
#include "core/text/settings_text.h"

namespace pv {

std::optional<WindowPlacement> parse_placement(std::wstring_view text, wchar_t decimal) {
  constexpr std::size_t kFieldCount = 5;
  const std::vector<std::wstring> fields = split_record(text, kRecordSeparator, kFieldCount);
  if (fields.size() < kFieldCount) return std::nullopt;
  std::array<double, 4> bounds{};
  for (std::size_t i = 0; i < bounds.size(); ++i) {
    const std::optional<float> bound = single_of(lenient_number(fields[i], decimal));
    if (!bound) return std::nullopt;
    bounds[i] = *bound;
  }
  return WindowPlacement{bounds[0], bounds[1], bounds[2], bounds[3],
                         lenient_integer<short>(fields[4])};
}

std::wstring format_placement(const std::array<std::wstring, 4>& bounds, short state) {
  std::wstring record;
  for (const std::wstring& bound : bounds) record += bound + L"|";
  return record + format_integer(state) + L"|";
}

std::wstring format_placement(const WindowPlacement& placement, wchar_t decimal) {
  const auto text = [decimal](double bound) {
    return format_number(single_of(bound).value_or(0.0F), decimal);
  };
  return format_placement(
      {text(placement.left), text(placement.top), text(placement.width), text(placement.height)},
      placement.state);
}

WindowPlacement fitted(WindowPlacement placement, double screen_width, double screen_height) {
  if (placement.left + placement.width > screen_width) {
    placement.left = 0;
    placement.width = 0.9 * screen_width;
  }
  if (placement.top + placement.height > screen_height) {
    placement.top = 0;
    placement.height = 0.8 * screen_height;
  }
  return placement;
}

}  // namespace pv
