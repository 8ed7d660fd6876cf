#pragma once

#include <optional>
#include <string>

namespace pv {

/// What a technician entered for the audit log.
struct TechnicianNote {
  std::wstring name;
  std::wstring comment;
};

/// Asks for name and comment, modally; `item_label` names the item that is to be written. Nothing
/// when the user cancels.
std::optional<TechnicianNote> ask_technician(const std::wstring& item_label);

}  // namespace pv
