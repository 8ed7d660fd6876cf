// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/object.h"

namespace pv::test {

using Texts = std::vector<std::wstring>;

/// Members of a collection, as its enumerator gives them.
std::vector<Object> members_of(const Object& collection);
/// A text property of each of them.
Texts texts_of(const Object& collection, std::wstring_view property = L"Key");

}  // namespace pv::test
