// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace pv {

/// The platform's pattern match: "*" any characters, "?" one, "#" one digit, "[a-c]" one of a list,
/// "[!a-c]" one not in it. The whole text must match; case counts. A list that is not closed
/// matches nothing.
bool matches(std::wstring_view text, std::wstring_view pattern);

}  // namespace pv
