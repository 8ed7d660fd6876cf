// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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

}  // namespace pv
