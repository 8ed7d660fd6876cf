// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Collections with a few members, whose texts are too long for a string's internal buffer.
#pragma once

#include "tests/memory/portrait.h"

namespace pv::test {

inline constexpr const wchar_t* kLongText = L"a text that takes memory of its own";

Object two_items();
Object a_version();
Object a_list();
Object a_dimension();

}  // namespace pv::test
