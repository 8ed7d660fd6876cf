// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "pvItems32.h"

namespace pv {

/// Lets the user edit the access word of an item, modally. True when the user confirmed: the item
/// has the new word then.
bool edit_access(_CTxm* txm, _CItem* item);

}  // namespace pv
