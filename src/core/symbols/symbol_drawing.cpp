// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/symbols/symbol_drawing.h"

#include <algorithm>
#include <cstdlib>

namespace pv {
namespace {

constexpr std::size_t kUndoSteps = 200;

// Far enough outside to keep the direction of a line, near enough to walk there.
SymbolPoint kept_near(SymbolPoint at) {
  constexpr int kMargin = 16 * Symbol::kSide;
  return {std::clamp(at.x, -kMargin, kMargin), std::clamp(at.y, -kMargin, kMargin)};
}

}  // namespace

SymbolDrawing SymbolDrawing::unreadable() {
  SymbolDrawing drawing;
  drawing.now_.unreadable = true;
  return drawing;
}

void SymbolDrawing::begin(SymbolTool tool, SymbolPoint at, std::uint8_t colour) {
  end();
  const SymbolPoint start = kept_near(at);
  stroke_ = Stroke{tool, start, start, colour, now_};
  if (tool == SymbolTool::kFill) {
    fill(start, colour);
  } else {
    draw_to(start);
  }
}

void SymbolDrawing::move_to(SymbolPoint at) {
  if (stroke_) draw_to(kept_near(at));
}

void SymbolDrawing::end() {
  if (!stroke_) return;
  remember(stroke_->before);
  stroke_.reset();
}

void SymbolDrawing::cancel() {
  if (!stroke_) return;
  now_ = stroke_->before;
  stroke_.reset();
}

void SymbolDrawing::clear() { change_to(State()); }

// An open stroke is part of what is mirrored.
void SymbolDrawing::mirror_left_right() {
  State mirrored = now_;
  for (int y = 0; y < Symbol::kSide; ++y)
    for (int x = 0; x < Symbol::kSide; ++x)
      mirrored.symbol.at(x, y) = now_.symbol.at(Symbol::kSide - 1 - x, y);
  change_to(mirrored);
}

void SymbolDrawing::mirror_top_bottom() {
  State mirrored = now_;
  for (int y = 0; y < Symbol::kSide; ++y)
    for (int x = 0; x < Symbol::kSide; ++x)
      mirrored.symbol.at(x, y) = now_.symbol.at(x, Symbol::kSide - 1 - y);
  change_to(mirrored);
}

bool SymbolDrawing::undo() {
  if (stroke_) {
    cancel();
    return true;
  }
  if (former_.empty()) return false;
  now_ = former_.back();
  former_.pop_back();
  return true;
}

void SymbolDrawing::draw_to(SymbolPoint at) {
  switch (stroke_->tool) {
    case SymbolTool::kPencil:
      draw_line(stroke_->last, at, stroke_->colour);
      break;
    case SymbolTool::kLine:
      now_ = stroke_->before;
      draw_line(stroke_->start, at, stroke_->colour);
      break;
    case SymbolTool::kRectangle:
      now_ = stroke_->before;
      draw_rectangle(stroke_->start, at, stroke_->colour);
      break;
    case SymbolTool::kFill:
      break;  // all was done where the pen went down
  }
  stroke_->last = at;
}

void SymbolDrawing::plot(SymbolPoint at, std::uint8_t colour) {
  if (!Symbol::contains(at.x, at.y)) return;
  now_.symbol.at(at.x, at.y) = colour;
  now_.unreadable = false;
}

// Bresenham's line: the error tells which axis is due for a step.
void SymbolDrawing::draw_line(SymbolPoint from, SymbolPoint to, std::uint8_t colour) {
  const int width = std::abs(to.x - from.x);
  const int height = std::abs(to.y - from.y);
  const int right = from.x < to.x ? 1 : -1;
  const int down = from.y < to.y ? 1 : -1;
  int error = width - height;
  plot(from, colour);
  while (from != to) {
    const int doubled = 2 * error;
    if (doubled > -height) {
      error -= height;
      from.x += right;
    }
    if (doubled < width) {
      error += width;
      from.y += down;
    }
    plot(from, colour);
  }
}

void SymbolDrawing::draw_rectangle(SymbolPoint from, SymbolPoint to, std::uint8_t colour) {
  draw_line(from, {to.x, from.y}, colour);
  draw_line({to.x, from.y}, to, colour);
  draw_line(to, {from.x, to.y}, colour);
  draw_line({from.x, to.y}, from, colour);
}

void SymbolDrawing::fill(SymbolPoint from, std::uint8_t colour) {
  if (!Symbol::contains(from.x, from.y)) return;
  now_.unreadable = false;
  const std::uint8_t replaced = now_.symbol.at(from.x, from.y);
  if (replaced == colour) return;
  std::vector<SymbolPoint> open{from};
  while (!open.empty()) {
    const SymbolPoint at = open.back();
    open.pop_back();
    if (!Symbol::contains(at.x, at.y) || now_.symbol.at(at.x, at.y) != replaced) continue;
    now_.symbol.at(at.x, at.y) = colour;
    for (const SymbolPoint next : {SymbolPoint{at.x - 1, at.y}, SymbolPoint{at.x + 1, at.y},
                                   SymbolPoint{at.x, at.y - 1}, SymbolPoint{at.x, at.y + 1}})
      open.push_back(next);
  }
}

void SymbolDrawing::change_to(const State& changed) {
  end();
  const State before = now_;
  now_ = changed;
  remember(before);
}

void SymbolDrawing::remember(const State& before) {
  if (before == now_) return;
  if (former_.size() == kUndoSteps) former_.erase(former_.begin());
  former_.push_back(before);
}

}  // namespace pv
