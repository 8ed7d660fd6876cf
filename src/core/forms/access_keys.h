// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Access keys of captions: the letters that Alt reaches in a form.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/list/key_case.h"

namespace pv {

/// A caption that is shown literally by a control which reads '&' as the mark of an access key.
std::wstring without_access_key(std::wstring_view caption);

/// The captions of one form, each with '&' before its access key; every key occurs once. Initials
/// of the caption are preferred, then initials of its words, then any letter; letters that reach
/// below the line come after those that do not. A caption for which no letter or digit is left gets
/// none.
std::vector<std::wstring> with_access_keys(const std::vector<std::wstring>& captions,
                                           const KeyCase& keys);

}  // namespace pv
