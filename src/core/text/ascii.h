// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// ASCII letters and texts that differ only by their case. Case beyond ASCII is the platform's: see
// core/list/key_case.h.

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace pv {

constexpr wchar_t lower_ascii(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

constexpr wchar_t upper_ascii(wchar_t c) {
  return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
}

inline std::wstring widen_ascii(std::string_view text) {
  return std::wstring(text.begin(), text.end());
}

/// The first character that is none of ASCII.
constexpr std::uint32_t kAsciiEnd = 0x80;

/// Without a branch per character, which lets the compiler take many at once.
template <class Text>
bool is_ascii(const Text& text) {
  std::uint32_t seen = 0;
  for (const auto c : text) seen |= static_cast<std::uint32_t>(c);
  return seen < kAsciiEnd;
}

/// Whether two texts differ at most by the case of their ASCII letters.
inline bool same_ascii(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return lower_ascii(x) == lower_ascii(y); });
}

/// A number that is the same for texts that differ only by the case of their ASCII letters, in one
/// pass over the characters. What each of them adds is quick; the end spreads it over all bits.
class HashAscii {
 public:
  void add(wchar_t c) { hash_ = std::rotl(hash_, 5) ^ static_cast<std::uint32_t>(lower_ascii(c)); }
  std::size_t value() const {
    const std::uint32_t spread = hash_ * 0x9E3779B1u;
    return spread ^ spread >> 16;
  }

 private:
  std::uint32_t hash_ = 0;
};

inline std::size_t hash_ascii(std::wstring_view text) {
  HashAscii hash;
  for (const wchar_t c : text) hash.add(c);
  return hash.value();
}

}  // namespace pv
