// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

#include "tests/support/value.h"

// Values for the tests that call members by the types of their parameters.
namespace pv::test {

/// The number as a value of this type; zero when the type cannot hold it.
Value with_type(VARTYPE type, double number);

/// A new array of default elements.
Value array_of(VARTYPE element, ULONG length);

/// A value that most members accept, of a type that is no VARIANT and no object.
Value usual_value(VARTYPE type);

/// Values at the limits of such a type; the first is harmless to any member.
std::vector<Value> limit_values(VARTYPE type);

/// Values of every type for a VARIANT; the first is Empty. `object` is one of them.
std::vector<Value> values_of_all_types(const Ref<IDispatch>& object);

}  // namespace pv::test
