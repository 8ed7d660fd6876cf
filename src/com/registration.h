// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"

namespace pv {

/// Where classes are registered: for every user of the machine, or for the current user.
enum class Registration { kMachine, kUser };

/// Both are complete or fail with the first error; unregistering what is not there succeeds. The
/// library with the other number of bits stays registered as it is.
HRESULT register_classes(Registration scope) noexcept;
HRESULT unregister_classes(Registration scope) noexcept;

}  // namespace pv
