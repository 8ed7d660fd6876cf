// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/symbol/picture_editor.h"
#include "dialogs/symbol/pixel_grid.h"
#include "dialogs/symbol/symbol_palette.h"
#include "dialogs/symbol/symbol_preview.h"

namespace pv {

/// The library's own editor. Its control ids: 1100 to 1104 pencil, line, rectangle, fill and
/// eraser; 1105 and 1106 label and grid; 1107 and 1108 label and palette; 1109 and 1110 label and
/// preview; 1111 undo, 1112 clear, 1113 and 1114 mirror left-right and top-bottom. A text that it
/// cannot read is shown as that of another editor and kept until something is drawn.
class PixelEditor final : public PictureEditor {
 public:
  explicit PixelEditor(Form& form);

  void start_empty() override;
  std::wstring symbol() const override;
  void load(const std::wstring& symbol) override;
  EditorSettings settings() const override { return palette_.colours(); }
  void apply(const EditorSettings& settings) override;
  Ref<IPictureDisp> picture(const std::wstring& symbol, long size) override;

  TwipSize smallest_size() const override;
  void place(const TwipBox& box) override;
  Control* main_control() override { return &grid_; }
  bool translate(MSG& message) override;

 private:
  enum class Tool { kPencil, kLine, kRectangle, kFill, kEraser };

  void open(const SymbolDrawing& drawing);
  void choose(Tool tool);
  void update_pen();
  void show_drawing();
  void change(void (SymbolDrawing::*operation)());
  void undo();
  Twips tool_width() const;
  Twips side_width() const;

  std::wstring loaded_;
  SymbolDrawing drawing_;
  Tool tool_ = Tool::kPencil;

  ChoiceButton optPencil_;
  ChoiceButton optLine_;
  ChoiceButton optRectangle_;
  ChoiceButton optFill_;
  ChoiceButton optEraser_;
  FieldLabel lblGrid_;
  PixelGrid grid_;
  FieldLabel lblPalette_;
  Palette palette_;
  Label lblPreview_;
  SymbolPreview preview_;
  Button cmdUndo_;
  Button cmdClear_;
  Button cmdMirrorAcross_;
  Button cmdMirrorUpright_;
};

}  // namespace pv
