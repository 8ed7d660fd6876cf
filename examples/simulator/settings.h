// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "parameter.h"

namespace fluxor {

/// Reads the parameters that a device with a software version has from <folder>/fluxor.itm,
/// fluxor.ver and fluxor.val. Throws std::runtime_error when a file cannot be read or does not know
/// the version.
Parameters load_parameters(const std::string& folder, const std::string& software);

}  // namespace fluxor
