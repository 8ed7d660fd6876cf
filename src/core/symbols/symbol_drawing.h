// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Drawing on a symbol, stroke by stroke.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/symbols/symbol_text.h"

namespace pv {

enum class SymbolTool { kPencil, kLine, kRectangle, kFill };

struct SymbolPoint {
  int x = 0;
  int y = 0;
  bool operator==(const SymbolPoint&) const = default;
};

/// A symbol that is being drawn. A stroke begins where the pen goes down, follows it and ends;
/// lines and rectangles span between both ends until the stroke ends. Points outside the symbol
/// are allowed everywhere; what would be drawn there is lost.
class SymbolDrawing {
 public:
  SymbolDrawing() = default;
  explicit SymbolDrawing(const Symbol& symbol) : now_{symbol, false} {}
  /// In the place of a symbol that cannot be read: empty, and known as such until something is
  /// drawn or the drawing is cleared.
  static SymbolDrawing unreadable();

  /// As it looks now, an open stroke included.
  const Symbol& symbol() const { return now_.symbol; }
  bool is_unreadable() const { return now_.unreadable; }
  bool is_drawing() const { return stroke_.has_value(); }

  /// A stroke that is still open ends first. The colour must be one of the palette.
  void begin(SymbolTool tool, SymbolPoint at, std::uint8_t colour);
  void move_to(SymbolPoint at);
  void end();
  /// Takes an open stroke back.
  void cancel();

  void clear();
  void mirror_left_right();
  void mirror_top_bottom();

  /// Takes an open stroke or else the last change back; false when there is none.
  bool undo();
  bool can_undo() const { return stroke_ || !former_.empty(); }

 private:
  struct State {
    Symbol symbol;
    bool unreadable = false;
    bool operator==(const State&) const = default;
  };
  struct Stroke {
    SymbolTool tool;
    SymbolPoint start;
    SymbolPoint last;
    std::uint8_t colour;
    State before;
  };

  void draw_to(SymbolPoint at);
  void plot(SymbolPoint at, std::uint8_t colour);
  void draw_line(SymbolPoint from, SymbolPoint to, std::uint8_t colour);
  void draw_rectangle(SymbolPoint from, SymbolPoint to, std::uint8_t colour);
  void fill(SymbolPoint from, std::uint8_t colour);
  void change_to(const State& changed);
  void remember(const State& before);

  State now_;
  std::optional<Stroke> stroke_;
  std::vector<State> former_;
};

}  // namespace pv
