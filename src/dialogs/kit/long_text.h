// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/kit/control.h"

namespace pv {

struct Column;

/// A text of the host to read, of any length: in full where there is space, else in a box that
/// scrolls, so that what stands below it never leaves the screen.
class LongText {
 public:
  /// Two window ids: of the full text and of the box.
  LongText(Form& form, int id, int scrolled_id);

  void set_text(const std::wstring& text);
  const std::wstring& text() const { return full_.text(); }
  /// Whether the user marked a part of it, to copy it.
  bool has_selection() const { return scrolled_.visible() && scrolled_.has_selection(); }
  /// The size of the text in full; lines break at `width`, or with 0 where the text says so.
  TwipSize natural_size(Twips width = 0) const { return full_.natural_size(width); }
  void place(const TwipBox& box, bool scrolls);

 private:
  Label full_;
  TextBox scrolled_;
};

/// Places the text over the whole width, at most `highest` high; returns where the next row begins.
Twips place_long_text(LongText& text, const Column& column, Twips top, Twips highest);

}  // namespace pv
