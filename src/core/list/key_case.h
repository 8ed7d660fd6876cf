// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/text/ascii.h"

namespace pv {

/// How keys are compared: without regard to case. The rule for ASCII is here; lower case beyond it
/// is the platform's, which supplies its mapping as it supplies its code page.
class KeyCase {
 public:
  /// Replaces every letter by its small one; the number of characters stays.
  using Lower = void (*)(std::wstring& text);

  constexpr explicit KeyCase(Lower lower) : lower_(lower) {}

  /// The form of a key in which keys that differ only by case are equal.
  std::wstring fold(std::wstring_view key) const;

  /// A number that is the same for keys that differ only by case.
  std::size_t hash(std::wstring_view key) const;

  /// Whether fold(key) is `folded`.
  bool folds_to(std::wstring_view key, std::wstring_view folded) const;

  bool same(std::wstring_view key, std::wstring_view other) const {
    return fold(key) == fold(other);
  }

 private:
  Lower lower_;
};

// Keys are mostly plain ASCII: one pass folds them on the way and sees whether they are. Here for
// the sake of searches: a call would cost as much as a short key.
inline std::size_t KeyCase::hash(std::wstring_view key) const {
  HashAscii hash;
  std::uint32_t seen = 0;
  for (const wchar_t c : key) {
    seen |= static_cast<std::uint32_t>(c);
    hash.add(c);
  }
  return seen < kAsciiEnd ? hash.value() : hash_ascii(fold(key));
}

inline bool KeyCase::folds_to(std::wstring_view key, std::wstring_view folded) const {
  if (key.size() != folded.size()) return false;
  std::uint32_t seen = 0, different = 0;
  for (std::size_t i = 0; i < key.size(); ++i) {
    seen |= static_cast<std::uint32_t>(key[i]);
    different |= static_cast<std::uint32_t>(lower_ascii(key[i]) ^ folded[i]);
  }
  return seen < kAsciiEnd ? different == 0 : fold(key) == folded;
}

}  // namespace pv
