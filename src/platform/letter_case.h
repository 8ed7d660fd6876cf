// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "core/list/key_case.h"

namespace pv {

/// Comparison of keys with the platform's lower case of the invariant locale.
const KeyCase& key_case();

/// The text in capitals, as the platform writes them for the user.
std::wstring upper_case(std::wstring text);

}  // namespace pv
