// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/list/key_case.h"

#include <algorithm>

#include "core/text/ascii.h"

namespace pv {

std::wstring KeyCase::fold(std::wstring_view key) const {
  std::wstring folded(key);
  if (!is_ascii(key)) {
    lower_(folded);
    return folded;
  }
  for (wchar_t& c : folded) c = lower_ascii(c);
  return folded;
}

// Keys are mostly plain ASCII: those are folded on the way, without a copy.
std::size_t KeyCase::hash(std::wstring_view key) const {
  return is_ascii(key) ? hash_ascii(key) : hash_ascii(fold(key));
}

bool KeyCase::folds_to(std::wstring_view key, std::wstring_view folded) const {
  if (!is_ascii(key)) return fold(key) == folded;
  return std::equal(key.begin(), key.end(), folded.begin(), folded.end(),
                    [](wchar_t c, wchar_t wanted) { return lower_ascii(c) == wanted; });
}

}  // namespace pv
