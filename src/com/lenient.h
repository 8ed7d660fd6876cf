// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <limits>
#include <string>

#include "com/variant.h"
#include "core/text/number_text.h"

namespace pv {

/// Number text of any value: empty is "0", True is "-1", text is read up to the first character
/// that cannot continue a number, in either decimal notation. "0" when all fails. Written with
/// the given decimal separator.
std::wstring lenient_number_text(const VARIANT& value, wchar_t decimal);

/// The number that the number text stands for.
double lenient_number(const VARIANT& value);

/// The tolerant integer conversion: rounded half to even, 0 when it does not fit.
template <class Int>
Int lenient_integer(const VARIANT& value) {
  return lenient_integer<Int>(lenient_number(value));
}

/// The tolerant Boolean conversion: False when the platform's conversion fails.
bool lenient_boolean(const VARIANT& value);

}  // namespace pv
