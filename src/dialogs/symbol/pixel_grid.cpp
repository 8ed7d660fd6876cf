// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/symbol/pixel_grid.h"

#include <algorithm>
#include <utility>

#include "platform/symbol_picture.h"

namespace pv {
namespace {

constexpr Twips kSmallestCell = 150;  // ten pixels at 96 dpi
constexpr int kCellWithLines = 5;     // smaller cells would be all lines
constexpr COLORREF kLineColour = RGB(208, 208, 208);

// Inverted, so that it is seen on every colour.
void paint_frame(HDC device, SymbolPoint at, int cell) {
  const RECT edge{at.x * cell, at.y * cell, (at.x + 1) * cell + 1, (at.y + 1) * cell + 1};
  for (int i = 1; i <= 2; ++i) {
    RECT frame = edge;
    InflateRect(&frame, -i, -i);
    InvertRect(device, &frame);
  }
}

}  // namespace

PixelGrid::PixelGrid(Form& form, int id, SymbolDrawing& drawing, std::function<void()> changed)
    : Canvas(form, id, true), drawing_(drawing), changed_(std::move(changed)) {}

bool PixelGrid::give_up_stroke() {
  if (!drawing_.is_drawing()) return false;
  drawing_.cancel();
  show_change();
  return true;
}

void PixelGrid::reset() {
  cursor_ = {};
  pointing_ = false;
}

TwipSize PixelGrid::measure(const Metrics& metrics, Twips) const {
  const Twips side = Symbol::kSide * kSmallestCell + metrics.twips(1);
  return {side, side};
}

// "column, row: colour" of the cursor, counted from 1.
AccessibleDescription PixelGrid::describe() const {
  AccessibleDescription description = Canvas::describe();
  description.value = std::to_wstring(cursor_.x + 1) + L", " + std::to_wstring(cursor_.y + 1);
  if (!drawing_.is_unreadable())
    description.value += L": " + colour_code(drawing_.symbol().at(cursor_.x, cursor_.y));
  return description;
}

int PixelGrid::cell(const SIZE& size) const {
  return std::max(1, static_cast<int>(std::min(size.cx, size.cy) - 1) / Symbol::kSide);
}

// Rounds down left of and above the grid, too.
SymbolPoint PixelGrid::point_of(POINT at) const {
  const int side = cell(inner_size());
  const auto step = [side](LONG pixel) {
    return static_cast<int>(pixel < 0 ? (pixel - side + 1) / side : pixel / side);
  };
  return {step(at.x), step(at.y)};
}

void PixelGrid::paint_lines(HDC device, int cell) const {
  const int side = Symbol::kSide * cell;
  const HBRUSH brush = CreateSolidBrush(kLineColour);
  for (int i = 0; i <= Symbol::kSide; ++i) {
    const RECT across{0, i * cell, side + 1, i * cell + 1};
    const RECT down{i * cell, 0, i * cell + 1, side + 1};
    FillRect(device, &across, brush);
    FillRect(device, &down, brush);
  }
  DeleteObject(brush);
}

void PixelGrid::paint(HDC device, const SIZE& size) {
  const int side = cell(size);
  const int all = Symbol::kSide * side;
  if (drawing_.is_unreadable()) {
    paint_hatch(device, {0, 0, all, all});
  } else {
    paint_symbol(device, drawing_.symbol(), 0, 0, all);
  }
  if (side >= kCellWithLines) paint_lines(device, side);
  if (has_focus()) paint_frame(device, cursor_, side);
}

void PixelGrid::pointer_down(POINT at, bool second) {
  const SymbolPoint point = point_of(at);
  if (!Symbol::contains(point.x, point.y)) return;
  pointing_ = true;
  cursor_ = point;
  drawing_.begin(pen_.tool, point, second ? pen_.second : pen_.first);
  show_change();
}

void PixelGrid::pointer_moved(POINT at) {
  if (!pointing_) return;
  drawing_.move_to(point_of(at));
  show_change();
}

void PixelGrid::pointer_up() {
  if (!std::exchange(pointing_, false)) return;
  drawing_.end();
  show_change();
}

// Dots and fills are done at once; lines and rectangles wait for the second press.
void PixelGrid::draw_at_cursor() {
  const bool spans = pen_.tool == SymbolTool::kLine || pen_.tool == SymbolTool::kRectangle;
  if (drawing_.is_drawing()) {
    drawing_.end();
  } else {
    drawing_.begin(pen_.tool, cursor_, pen_.first);
    if (!spans) drawing_.end();
  }
  show_change();
}

bool PixelGrid::key_down(WPARAM key) {
  constexpr int kLast = Symbol::kSide - 1;
  switch (key) {
    case VK_LEFT:
      cursor_.x = std::max(cursor_.x - 1, 0);
      break;
    case VK_RIGHT:
      cursor_.x = std::min(cursor_.x + 1, kLast);
      break;
    case VK_UP:
      cursor_.y = std::max(cursor_.y - 1, 0);
      break;
    case VK_DOWN:
      cursor_.y = std::min(cursor_.y + 1, kLast);
      break;
    case VK_HOME:
      cursor_.x = 0;
      break;
    case VK_END:
      cursor_.x = kLast;
      break;
    case VK_SPACE:
      draw_at_cursor();
      return true;
    default:
      return false;
  }
  drawing_.move_to(cursor_);
  show_change();
  return true;
}

void PixelGrid::show_change() {
  repaint();
  changed_();
  tell_value();
}

}  // namespace pv
