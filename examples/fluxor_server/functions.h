// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "library.h"

namespace fluxor {

/// Fills the function bar of a Fluxor: a list of tools that a host shows as buttons.
void add_functions(const ComPtr<_CFunctions>& functions);

/// Title of the function at a position counted from 1; empty for a separator or an unknown one.
std::wstring function_title(short position);

}  // namespace fluxor
