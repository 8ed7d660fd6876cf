// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

namespace pv {

/// What a technician entered for the audit log.
struct TechnicianNote {
  std::wstring name;
  std::wstring comment;
};

/// Whether the prompt is open on this thread. It asks about one item at a time.
bool is_technician_prompt_open();

/// Asks for name and comment, modally; `item_label` names the item that is to be written. Nothing
/// when the user cancels. Not to be called while the prompt is open.
std::optional<TechnicianNote> ask_technician(const std::wstring& item_label);

}  // namespace pv
