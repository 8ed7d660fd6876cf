// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/txm/history_text.h"

#include <algorithm>

#include "core/text/number_text.h"

namespace pv {

std::wstring history_value(std::wstring text) {
  if (parse_number(text)) std::ranges::replace(text, L',', L'.');
  return text;
}

std::wstring history_line(const std::vector<std::wstring>& fields) {
  std::wstring line;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) line += L',';
    line += fields[i];
  }
  return line;
}

std::vector<std::wstring> history_lines(const HistoryEntry& entry) {
  const HistoryVariable first = entry.variables.empty() ? HistoryVariable{} : entry.variables[0];
  const bool is_single = entry.variables.size() < 2;
  std::vector<std::wstring> lines = {
      history_line({entry.date, entry.time, entry.signature, entry.txm_type, entry.txm_address,
                    entry.txm_name, entry.item_id, first.caption, is_single ? first.value : L"",
                    is_single ? first.unit : L"", entry.comment})};
  for (std::size_t i = 1; i < entry.variables.size(); ++i) {
    const HistoryVariable& variable = entry.variables[i];
    lines.push_back(history_line(
        {L"", L"", L"", L"", L"", L"", L"", variable.caption, variable.value, variable.unit}));
  }
  return lines;
}

}  // namespace pv
