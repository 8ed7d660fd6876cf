// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/wildcard.h"

#include <optional>

namespace pv {
namespace {

constexpr auto kEnd = std::wstring_view::npos;

struct Step {
  bool matched = false;
  std::size_t length = 1;  // of the pattern element
};

bool list_has(std::wstring_view list, wchar_t c) {
  for (std::size_t i = 0; i < list.size(); ++i) {
    if (i + 2 < list.size() && list[i + 1] == L'-') {
      if (c >= list[i] && c <= list[i + 2]) return true;
      i += 2;
    } else if (list[i] == c) {
      return true;
    }
  }
  return false;
}

// The element at the start of `pattern` against one character; nothing for a list without end.
std::optional<Step> match_list(std::wstring_view pattern, wchar_t c) {
  const auto close = pattern.find(L']', 1);
  if (close == kEnd) return std::nullopt;
  std::wstring_view list = pattern.substr(1, close - 1);
  const bool negated = list.size() > 1 && list.front() == L'!';
  if (negated) list.remove_prefix(1);
  // An empty list stands for no character at all, which is the caller's matter.
  return Step{list_has(list, c) != negated, close + 1};
}

std::optional<Step> match_one(std::wstring_view pattern, wchar_t c) {
  switch (pattern.front()) {
    case L'?':
      return Step{true};
    case L'#':
      return Step{c >= L'0' && c <= L'9'};
    case L'[':
      return match_list(pattern, c);
    default:
      return Step{pattern.front() == c};
  }
}

}  // namespace

bool matches(std::wstring_view text, std::wstring_view pattern) {
  std::size_t t = 0;
  std::size_t p = 0;
  std::size_t star = kEnd;    // pattern position behind the last "*"
  std::size_t star_text = 0;  // text position that it is tried from
  for (;;) {
    if (pattern.substr(p).starts_with(L"[]")) {
      p += 2;
      continue;
    }
    if (p < pattern.size() && pattern[p] == L'*') {
      star = ++p;
      star_text = t;
      continue;
    }
    if (t == text.size() && p == pattern.size()) return true;
    if (t < text.size() && p < pattern.size()) {
      const auto step = match_one(pattern.substr(p), text[t]);
      if (!step) return false;
      if (step->matched) {
        ++t;
        p += step->length;
        continue;
      }
    }
    if (star == kEnd || star_text == text.size()) return false;
    p = star;
    t = ++star_text;
  }
}

}  // namespace pv
