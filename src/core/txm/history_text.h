// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace pv {

/// One variable of an item in the audit file.
struct HistoryVariable {
  std::wstring caption;
  std::wstring value;
  std::wstring unit;
};

/// One entry of the audit file, in the order of its columns.
struct HistoryEntry {
  std::wstring date, time, signature;
  std::wstring txm_type, txm_address, txm_name;
  std::wstring item_id;
  std::vector<HistoryVariable> variables;  // the first one's caption names the item
  std::wstring comment;
};

/// A value as the file holds it: a number has the period, as a comma would split its column.
std::wstring history_value(std::wstring text);

/// Fields joined by ",", without quoting and without a line end.
std::wstring history_line(const std::vector<std::wstring>& fields);

/// The lines of an entry. The entry line of an item with several variables has no value; a line
/// each follows for the second and later ones.
std::vector<std::wstring> history_lines(const HistoryEntry& entry);

}  // namespace pv
