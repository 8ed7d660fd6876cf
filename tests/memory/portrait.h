// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "tests/support/object.h"

namespace pv::test {

/// A new object of the library that is a part of this program.
Object create(std::wstring_view class_name);

/// All that can be read of an object of the library, in words: each property that takes no
/// arguments, the members of a collection, and the same of the objects that these are.
std::wstring portrait_of(const Object& object);

/// A value in words; an object of the library by its portrait.
std::wstring portrait_of(const VARIANT& value);

}  // namespace pv::test
