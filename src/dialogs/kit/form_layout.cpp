// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/form_layout.h"

#include <algorithm>

namespace pv {

Twips widest(std::initializer_list<const Control*> controls) {
  Twips width = 0;
  for (const Control* control : controls) width = std::max(width, control->natural_size().width);
  return width;
}

Twips place_text(Control& text, const Column& column, Twips top) {
  const Twips height = text.natural_size(column.width).height;
  text.place({column.left, top, column.width, height});
  return top + height + kFormGap;
}

Twips place_field(Control& label, Control& field, const Column& column, Twips top) {
  const Twips field_height = field.natural_size().height;
  const Twips label_height = label.natural_size().height;
  const Twips label_top = field.text_top(top);
  const Twips field_left = column.left + column.label_width + kFormGap;
  label.place({column.left, label_top, column.label_width, label_height});
  field.place({field_left, top, column.right() - field_left, field_height});
  return std::max(top + field_height, label_top + label_height) + kFormGap;
}

namespace {

TwipSize common_size(std::initializer_list<Control*> buttons) {
  TwipSize common;
  for (const Control* button : buttons) {
    const TwipSize size = button->natural_size();
    common.width = std::max(common.width, size.width);
    common.height = std::max(common.height, size.height);
  }
  return common;
}

}  // namespace

Twips row_width(std::initializer_list<Control*> buttons) {
  const auto count = static_cast<Twips>(buttons.size());
  return count * common_size(buttons).width + (count - 1) * kFormGap;
}

Twips place_buttons(std::initializer_list<Control*> buttons, const Column& column, Twips top) {
  const TwipSize size = common_size(buttons);
  Twips left = column.right() - row_width(buttons);
  for (Control* button : buttons) {
    button->place({left, top, size.width, size.height});
    left += size.width + kFormGap;
  }
  return top + size.height;
}

}  // namespace pv
