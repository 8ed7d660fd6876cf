// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"

namespace pv {

/// The class name of an object as its own type information says; empty when it says nothing.
std::wstring type_name_of(IDispatch* object);

}  // namespace pv
