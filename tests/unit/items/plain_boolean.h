// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

#include "core/text/number_text.h"

namespace pv {

/// Stands in for the platform's conversion: a whole number, in either notation, that is not 0.
inline bool plain_boolean(std::wstring_view text) {
  return parse_number(text).value_or(0.0) != 0.0;
}

}  // namespace pv
