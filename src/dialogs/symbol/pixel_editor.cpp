// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/symbol/pixel_editor.h"

#include <algorithm>

#include "dialogs/kit/form_layout.h"
#include "platform/symbol_picture.h"
#include "resources/text_ids.h"

namespace pv {

PixelEditor::PixelEditor(Form& form)
    : optPencil_(form, 1100, true, [this] { choose(Tool::kPencil); }),
      optLine_(form, 1101, false, [this] { choose(Tool::kLine); }),
      optRectangle_(form, 1102, false, [this] { choose(Tool::kRectangle); }),
      optFill_(form, 1103, false, [this] { choose(Tool::kFill); }),
      optEraser_(form, 1104, false, [this] { choose(Tool::kEraser); }),
      lblGrid_(form, 1105),
      grid_(form, 1106, drawing_, [this] { show_drawing(); }),
      lblPalette_(form, 1107),
      palette_(form, 1108, [this] { update_pen(); }),
      lblPreview_(form, 1109),
      preview_(form, 1110, drawing_),
      cmdUndo_(form, 1111, [this] { undo(); }),
      cmdClear_(form, 1112, [this] { change(&SymbolDrawing::clear); }),
      cmdMirrorAcross_(form, 1113, [this] { change(&SymbolDrawing::mirror_left_right); }),
      cmdMirrorUpright_(form, 1114, [this] { change(&SymbolDrawing::mirror_top_bottom); }) {
  optPencil_.set_caption(TEXT_SYMBOL_PENCIL);
  optLine_.set_caption(TEXT_SYMBOL_LINE);
  optRectangle_.set_caption(TEXT_SYMBOL_RECTANGLE);
  optFill_.set_caption(TEXT_SYMBOL_FILL);
  optEraser_.set_caption(TEXT_SYMBOL_ERASER);
  lblPalette_.set_caption(TEXT_SYMBOL_COLORS);
  palette_.set_caption(TEXT_SYMBOL_COLORS);
  lblPreview_.set_caption(TEXT_SYMBOL_PREVIEW);
  preview_.set_caption(TEXT_SYMBOL_PREVIEW);
  cmdUndo_.set_caption(TEXT_SYMBOL_UNDO);
  cmdClear_.set_caption(TEXT_SYMBOL_CLEAR);
  cmdMirrorAcross_.set_caption(TEXT_SYMBOL_MIRROR_ACROSS);
  cmdMirrorUpright_.set_caption(TEXT_SYMBOL_MIRROR_UPRIGHT);
  choose(Tool::kPencil);
}

void PixelEditor::start_empty() { open(SymbolDrawing()); }

// An empty drawing is no symbol.
std::wstring PixelEditor::symbol() const {
  if (drawing_.is_unreadable()) return loaded_;
  return drawing_.symbol() == Symbol() ? std::wstring() : format_symbol(drawing_.symbol());
}

void PixelEditor::load(const std::wstring& symbol) {
  if (symbol.empty()) return start_empty();
  loaded_ = symbol;
  const auto readable = parse_symbol(symbol);
  open(readable ? SymbolDrawing(*readable) : SymbolDrawing::unreadable());
}

void PixelEditor::open(const SymbolDrawing& drawing) {
  drawing_ = drawing;
  grid_.reset();
  show_drawing();
}

void PixelEditor::apply(const EditorSettings& settings) { palette_.choose(settings); }

Ref<IPictureDisp> PixelEditor::picture(const std::wstring& symbol, long size) {
  const auto readable = parse_symbol(symbol);
  return readable ? symbol_picture(*readable, size) : Ref<IPictureDisp>();
}

void PixelEditor::choose(Tool tool) {
  tool_ = tool;
  ChoiceButton* const buttons[] = {&optPencil_, &optLine_, &optRectangle_, &optFill_, &optEraser_};
  for (std::size_t i = 0; i < std::size(buttons); ++i)
    buttons[i]->set_chosen(i == static_cast<std::size_t>(tool));
  update_pen();
}

// The eraser is a pencil with the second colour.
void PixelEditor::update_pen() {
  const auto first = static_cast<std::uint8_t>(palette_.colours().first);
  const auto second = static_cast<std::uint8_t>(palette_.colours().second);
  switch (tool_) {
    case Tool::kPencil:
      return grid_.set_pen({SymbolTool::kPencil, first, second});
    case Tool::kLine:
      return grid_.set_pen({SymbolTool::kLine, first, second});
    case Tool::kRectangle:
      return grid_.set_pen({SymbolTool::kRectangle, first, second});
    case Tool::kFill:
      return grid_.set_pen({SymbolTool::kFill, first, second});
    case Tool::kEraser:
      return grid_.set_pen({SymbolTool::kPencil, second, second});
  }
}

void PixelEditor::show_drawing() {
  grid_.repaint();
  preview_.repaint();
  cmdUndo_.set_enabled(drawing_.can_undo());
  for (Control* const control : std::initializer_list<Control*>{&lblGrid_, &grid_})
    control->set_caption(drawing_.is_unreadable() ? TEXT_SYMBOL_FOREIGN : TEXT_SYMBOL_DRAWING);
}

void PixelEditor::change(void (SymbolDrawing::*operation)()) {
  (drawing_.*operation)();
  show_drawing();
}

void PixelEditor::undo() {
  drawing_.undo();
  if (!drawing_.can_undo()) grid_.focus();  // a disabled button must not keep the focus
  show_drawing();
}

bool PixelEditor::translate(MSG& message) {
  if (message.message != WM_KEYDOWN) return false;
  if (message.wParam == VK_ESCAPE) return grid_.give_up_stroke();
  if (message.wParam != 'Z' || GetKeyState(VK_CONTROL) >= 0) return false;
  undo();
  return true;
}

Twips PixelEditor::tool_width() const {
  return widest({&optPencil_, &optLine_, &optRectangle_, &optFill_, &optEraser_, &cmdUndo_,
                 &cmdClear_, &cmdMirrorAcross_, &cmdMirrorUpright_});
}

Twips PixelEditor::side_width() const {
  return widest({&lblPalette_, &palette_, &lblPreview_, &preview_});
}

TwipSize PixelEditor::smallest_size() const {
  const TwipSize grid = grid_.natural_size();
  const Twips label = lblGrid_.natural_size().height + kFormGap / 2;
  return {tool_width() + kFormGap + grid.width + kFormGap + side_width(), label + grid.height};
}

void PixelEditor::place(const TwipBox& box) {
  const Twips label = lblGrid_.natural_size().height;
  const Twips below_label = box.top + label + kFormGap / 2;

  const Twips tools = tool_width();
  Twips top = below_label;
  for (Control* tool : std::initializer_list<Control*>{
           &optPencil_, &optLine_, &optRectangle_, &optFill_, &optEraser_, &cmdUndo_, &cmdClear_,
           &cmdMirrorAcross_, &cmdMirrorUpright_}) {
    if (tool == &cmdUndo_) top += kFormGap;
    const Twips height = tool->natural_size().height;
    tool->place({box.left, top, tools, height});
    top += height + kFormGap / 2;
  }

  const Twips side = side_width();
  const Twips side_left = box.right() - side;
  const Twips grid_left = box.left + tools + kFormGap;
  lblGrid_.place({grid_left, box.top, side_left - kFormGap - grid_left, label});
  grid_.place(
      {grid_left, below_label, side_left - kFormGap - grid_left, box.bottom() - below_label});

  top = box.top;
  for (const auto& [heading, field] :
       {std::pair<Control*, Control*>{&lblPalette_, &palette_}, {&lblPreview_, &preview_}}) {
    heading->place({side_left, top, side, label});
    const TwipSize size = field->natural_size();
    field->place({side_left, top + label + kFormGap / 2, size.width, size.height});
    top += label + kFormGap / 2 + size.height + kFormGap;
  }
}

}  // namespace pv
