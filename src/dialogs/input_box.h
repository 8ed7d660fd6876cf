// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"
#include "com/variant.h"

namespace pv {

enum class InputKind { kText, kMasked, kDateTime };

/// What an input box asks for.
struct InputRequest {
  InputKind kind = InputKind::kText;
  std::wstring prompt;
  std::wstring title;  // empty: the form's own
  Variant initial;     // empty text or Empty for none
  std::wstring unit;
  HWND owner = nullptr;
};

/// Shows the input form of this thread modally; True when the user confirmed. The form stays loaded
/// for its value until it is closed.
bool show_input_box(const InputRequest& request);

/// The value entered last: a text, or a date-time number. Empty when no form is loaded.
Variant input_box_value();

void close_input_box();

}  // namespace pv
