// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

#include "com/automation.h"

namespace pv::test {

/// ASCII text as automation has it.
inline std::wstring widened(std::string_view text) { return {text.begin(), text.end()}; }

/// Case does not matter to scripts.
inline bool is_same_name(std::wstring_view left, std::wstring_view right) {
  return CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                              static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

}  // namespace pv::test
