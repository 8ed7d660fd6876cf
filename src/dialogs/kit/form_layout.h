// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <initializer_list>

#include "dialogs/kit/control.h"

namespace pv {

/// Distances that all forms keep.
inline constexpr Twips kFormMargin = 180;
inline constexpr Twips kFormGap = 120;

/// The width that the widest of these controls needs.
Twips widest(std::initializer_list<const Control*> controls);

/// Where the rows of a form stand.
struct Column {
  Twips left = kFormMargin;
  Twips width = 0;
  Twips label_width = 0;  // of the labels before the fields

  Twips right() const { return left + width; }
};

/// Places a text over the whole width; returns where the next row begins.
Twips place_text(Control& text, const Column& column, Twips top);

/// Places a field with its label before it, on one base line; returns where the next row begins.
Twips place_field(Control& label, Control& field, const Column& column, Twips top);

/// The width of a row of buttons, all as wide as the widest.
Twips row_width(std::initializer_list<Control*> buttons);

/// Places buttons of one width at the right end of a row; returns the bottom of the row.
Twips place_buttons(std::initializer_list<Control*> buttons, const Column& column, Twips top);

}  // namespace pv
