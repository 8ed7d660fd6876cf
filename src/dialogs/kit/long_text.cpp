// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/long_text.h"

#include <algorithm>

#include "dialogs/kit/form_layout.h"

namespace pv {

LongText::LongText(Form& form, int id, int scrolled_id)
    : full_(form, id), scrolled_(form, scrolled_id, TextBox::Kind::kScrolledReading) {}

void LongText::set_text(const std::wstring& text) {
  full_.set_text(text);
  scrolled_.set_text(text);
}

void LongText::place(const TwipBox& box, bool scrolls) {
  full_.place(box);
  full_.set_visible(!scrolls);
  scrolled_.place(box);
  scrolled_.set_visible(scrolls);
}

Twips place_long_text(LongText& text, const Column& column, Twips top, Twips highest) {
  const Twips needed = text.natural_size(column.width).height;
  const Twips height = std::min(needed, highest);
  text.place({column.left, top, column.width, height}, needed > highest);
  return top + height + kFormGap;
}

}  // namespace pv
