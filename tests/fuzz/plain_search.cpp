// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/fuzz/plain_search.h"

namespace pv::fuzz {

PlainSearch::PlainSearch(std::string_view bytes) {
  std::wstring line;
  bool begun = false;
  const auto end_line = [&] {
    if (!line.empty() && line.back() == L'\r') line.pop_back();
    lines_.push_back(line);
    line.clear();
    begun = false;
  };
  for (const char byte : bytes) {
    if (byte == '\n') {
      end_line();
    } else {
      line += static_cast<wchar_t>(static_cast<unsigned char>(byte));
      begun = true;
    }
  }
  if (begun) end_line();
}

const std::wstring* PlainSearch::next_that_begins_with(const std::wstring& start) {
  while (next_ < lines_.size()) {
    const std::wstring& line = lines_[next_++];
    if (line.compare(0, start.size(), start) == 0) return &line;
  }
  return nullptr;
}

bool PlainSearch::find_section(const std::wstring& name) {
  return next_that_begins_with(L"[" + name + L"]") != nullptr;
}

std::optional<std::wstring> PlainSearch::find_key(const std::wstring& key) {
  const std::wstring* line = next_that_begins_with(key + L"=");
  if (line == nullptr) return std::nullopt;
  return line->substr(line->find(L'=') + 1);
}

std::optional<std::wstring> PlainSearch::find(const std::wstring& section,
                                              const std::wstring& key) {
  next_ = 0;
  if (!find_section(section)) return std::nullopt;
  return find_key(key);
}

}  // namespace pv::fuzz
