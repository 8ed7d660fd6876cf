// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The library's own way of trimming a text.
#pragma once

#include <string>
#include <string_view>

namespace pv {

/// Keeps leading blanks (U+0020) and the first other character, drops every blank behind it: "  a b
/// c " gives "  abc".
std::wstring trim(std::wstring_view text);

}  // namespace pv
