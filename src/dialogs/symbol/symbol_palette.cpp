// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/symbol/symbol_palette.h"

#include <oleacc.h>

#include <algorithm>
#include <utility>

#include "platform/symbol_picture.h"

namespace pv {
namespace {

constexpr int kColumns = 4;
constexpr int kRows = Symbol::kColours / kColumns;
constexpr Twips kSwatch = 330;

constexpr bool is_colour(long number) { return number >= 0 && number < Symbol::kColours; }

void fill(HDC device, const RECT& area, COLORREF colour) {
  const HBRUSH brush = CreateSolidBrush(colour);
  FillRect(device, &area, brush);
  DeleteObject(brush);
}

void frame(HDC device, const RECT& area) {
  FrameRect(device, &area, GetSysColorBrush(COLOR_BTNSHADOW));
}

// Black or white, whichever is seen better on a colour.
COLORREF contrast(COLORREF colour) {
  const int brightness = GetRValue(colour) * 3 + GetGValue(colour) * 6 + GetBValue(colour);
  return brightness > 5 * 255 ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

}  // namespace

Palette::Palette(Form& form, int id, std::function<void()> changed)
    : Canvas(form, id, true), changed_(std::move(changed)) {}

void Palette::choose(const EditorSettings& colours) {
  constexpr EditorSettings kDefault;
  colours_.first = is_colour(colours.first) ? colours.first : kDefault.first;
  colours_.second = is_colour(colours.second) ? colours.second : kDefault.second;
  repaint();
  changed_();
  tell_value();
}

// "first colour, second colour"; arrow keys change it as they do in a spin button.
AccessibleDescription Palette::describe() const {
  const auto code = [](long number) { return colour_code(static_cast<std::uint8_t>(number)); };
  return {text(), ROLE_SYSTEM_SPINBUTTON, code(colours_.first) + L", " + code(colours_.second)};
}

// Below the colours lie the two chosen ones, as large as two swatches.
TwipSize Palette::measure(const Metrics& metrics, Twips) const {
  const Twips side = metrics.twips(metrics.pixels(kSwatch));
  return {kColumns * side, (kRows + 2) * side};
}

void Palette::paint_swatch(HDC device, int colour, int side) const {
  RECT area{0, 0, side, side};
  OffsetRect(&area, colour % kColumns * side, colour / kColumns * side);
  InflateRect(&area, -1, -1);
  const COLORREF shown = symbol_colour_ref(static_cast<std::uint8_t>(colour));
  fill(device, area, shown);
  frame(device, area);
  if (colour != colours_.first && colour != colours_.second) return;
  InflateRect(&area, -side / 3, -side / 3);
  if (colour == colours_.first) {
    fill(device, area, contrast(shown));
  } else {
    const HBRUSH brush = CreateSolidBrush(contrast(shown));
    FrameRect(device, &area, brush);
    DeleteObject(brush);
  }
}

void Palette::paint(HDC device, const SIZE& size) {
  const int side = static_cast<int>(size.cx) / kColumns;
  for (int colour = 0; colour < Symbol::kColours; ++colour) paint_swatch(device, colour, side);
  const int top = kRows * side + side / 4;
  const RECT second{side, top + side / 2, 2 * side + side / 2, top + side / 2 + side};
  const RECT first{side / 2, top, 2 * side, top + side};
  for (const auto& [area, colour] : {std::pair{second, colours_.second}, {first, colours_.first}}) {
    fill(device, area, symbol_colour_ref(static_cast<std::uint8_t>(colour)));
    frame(device, area);
  }
  if (!has_focus()) return;
  const RECT all{0, 0, size.cx, kRows * side};
  DrawFocusRect(device, &all);
}

void Palette::pointer_down(POINT at, bool second) {
  const LONG side = inner_size().cx / kColumns;
  const LONG column = at.x / side;
  const LONG row = at.y / side;
  if (column < kColumns && row < kRows) change(second, row * kColumns + column);
}

bool Palette::key_down(WPARAM key) {
  const bool second = GetKeyState(VK_SHIFT) < 0;
  const long current = second ? colours_.second : colours_.first;
  switch (key) {
    case VK_LEFT:
      change(second, current - 1);
      return true;
    case VK_RIGHT:
      change(second, current + 1);
      return true;
    case VK_UP:
      change(second, current - kColumns);
      return true;
    case VK_DOWN:
      change(second, current + kColumns);
      return true;
    default:
      return false;
  }
}

void Palette::change(bool second, long colour) {
  if (!is_colour(colour)) return;
  EditorSettings changed = colours_;
  (second ? changed.second : changed.first) = colour;
  choose(changed);
}

}  // namespace pv
