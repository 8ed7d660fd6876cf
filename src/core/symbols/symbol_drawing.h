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
  explicit SymbolDrawing(const Symbol& symbol) : symbol_(symbol) {}

  /// As it looks now, an open stroke included.
  const Symbol& symbol() const { return symbol_; }
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
  struct Stroke {
    SymbolTool tool;
    SymbolPoint start;
    SymbolPoint last;
    std::uint8_t colour;
    Symbol before;
  };

  void draw_to(SymbolPoint at);
  void plot(SymbolPoint at, std::uint8_t colour);
  void draw_line(SymbolPoint from, SymbolPoint to, std::uint8_t colour);
  void draw_rectangle(SymbolPoint from, SymbolPoint to, std::uint8_t colour);
  void fill(SymbolPoint from, std::uint8_t colour);
  void change_to(const Symbol& changed);
  void remember(const Symbol& before);

  Symbol symbol_;
  std::optional<Stroke> stroke_;
  std::vector<Symbol> former_;
};

}  // namespace pv
