// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

#include "core/symbols/symbol_drawing.h"
#include "dialogs/kit/canvas.h"

namespace pv {

/// The pixels of a drawing, enlarged. Arrow keys move a cursor, the space bar draws there.
class PixelGrid : public Canvas {
 public:
  PixelGrid(Form& form, int id, SymbolDrawing& drawing, std::function<void()> changed);

  /// What is drawn with, by the first and the second button.
  struct Pen {
    SymbolTool tool = SymbolTool::kPencil;
    std::uint8_t first = 0;
    std::uint8_t second = 0;
  };
  void set_pen(const Pen& pen) { pen_ = pen; }
  /// Takes a stroke back that is not ended yet; false when there is none.
  bool give_up_stroke();
  /// The cursor returns to its corner.
  void reset();

 protected:
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  AccessibleDescription describe() const override;
  void paint(HDC device, const SIZE& size) override;
  void pointer_down(POINT at, bool second) override;
  void pointer_moved(POINT at) override;
  void pointer_up() override;
  bool key_down(WPARAM key) override;

 private:
  int cell(const SIZE& size) const;
  SymbolPoint point_of(POINT at) const;
  void paint_lines(HDC device, int cell) const;
  void draw_at_cursor();
  void show_change();

  SymbolDrawing& drawing_;
  std::function<void()> changed_;
  Pen pen_;
  SymbolPoint cursor_;
  bool pointing_ = false;
};

}  // namespace pv
