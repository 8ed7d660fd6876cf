#include "dialogs/form_layout.h"

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
  const Twips height = std::max(field_height, label_height);
  const Twips field_left = column.left + column.label_width + kFormGap;
  label.place({column.left, top + (height - label_height) / 2, column.label_width, label_height});
  field.place(
      {field_left, top + (height - field_height) / 2, column.right() - field_left, field_height});
  return top + height + kFormGap;
}

Twips place_buttons(std::initializer_list<Control*> buttons, const Column& column, Twips top) {
  Twips width = 0;
  Twips height = 0;
  for (const Control* button : buttons) {
    const TwipSize size = button->natural_size();
    width = std::max(width, size.width);
    height = std::max(height, size.height);
  }
  const auto count = static_cast<Twips>(buttons.size());
  Twips left = column.right() - count * width - (count - 1) * kFormGap;
  for (Control* button : buttons) {
    button->place({left, top, width, height});
    left += width + kFormGap;
  }
  return top + height;
}

}  // namespace pv
