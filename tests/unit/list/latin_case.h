// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "core/list/key_case.h"
#include "core/text/ascii.h"

namespace pv::test {

/// Keys with the small letters of Latin-1, in the place of the platform's lower case.
inline const KeyCase& latin_case() {
  static constexpr KeyCase keys([](std::wstring& text) {
    for (wchar_t& c : text) {
      const bool accented = c >= L'\u00c0' && c <= L'\u00de' && c != L'\u00d7';
      c = accented ? static_cast<wchar_t>(c + 0x20) : lower_ascii(c);
    }
  });
  return keys;
}

}  // namespace pv::test
