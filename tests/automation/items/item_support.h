// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the tests of items, versions and display lists share.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/members.h"
#include "tests/support/own_file.h"
#include "tests/support/user_locale.h"

namespace pv::test {

std::wstring example_file(std::wstring_view name);

/// A variable under a key; caption "Caption <key>", type edtFloat, everything else plain.
Object add_variable(const Object& variables, std::wstring_view key);
/// An item under a key, with as many variables ("1", "2", ...) as told.
Object add_item(const Object& items, std::wstring_view key, int item_id, int variables = 0);

/// The member at an index that stands in a script variable.
Outcome item_by_variable(const Object& collection, Value index);

}  // namespace pv::test
