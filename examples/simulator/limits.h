// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "parameter.h"

namespace fluxor {

/// False when the device refuses these values for an item.
bool is_within_limits(int item, const std::vector<Field>& fields);

/// True for values that the device finds itself and that nobody can set.
bool is_measured(int item);

}  // namespace fluxor
