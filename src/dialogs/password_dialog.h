// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/variant.h"
#include "pvItems32.h"

namespace pv {

/// Lets the user enter, close or change one password of a store. True when that ended with OK.
/// False, without a dialog, for an index that the store does not have.
bool edit_password(_CPasswords* passwords, const VARIANT& index);

}  // namespace pv
