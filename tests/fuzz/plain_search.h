// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The search of the settings files as it is described, without any care for speed: what the
// library's readers are compared with.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pv::fuzz {

class PlainSearch {
 public:
  explicit PlainSearch(std::string_view bytes);

  /// Reads on to the section's header; at the end when there is none.
  bool find_section(const std::wstring& name);

  /// Reads on to the first line that begins with key "=": the text behind the line's first "=".
  std::optional<std::wstring> find_key(const std::wstring& key);

  /// From the top: the section, then the key.
  std::optional<std::wstring> find(const std::wstring& section, const std::wstring& key);

  std::size_t line_count() const { return lines_.size(); }

 private:
  const std::wstring* next_that_begins_with(const std::wstring& start);

  std::vector<std::wstring> lines_;
  std::size_t next_ = 0;
};

}  // namespace pv::fuzz
