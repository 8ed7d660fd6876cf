// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"

namespace pv::test {

/// What a type library publishes, as lines of text: everything that clients are compiled against,
/// in a fixed order. Help texts are left out, they may be improved.
std::string dump_of(ITypeLib* library);

/// A comparison line by line, with the lines that differ and a few around them.
std::string difference_between(const std::string& expected, const std::string& actual);

}  // namespace pv::test
