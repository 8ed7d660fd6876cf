// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "com/variant.h"

namespace pv {

/// How a client names a member of a collection: a number of any type is a 1-based position, text
/// is always a key, even numeric text.
using IndexKey = std::variant<long, std::wstring_view>;

/// A key views the text in `value`. Errors: kTypeMismatch for a value that is neither, kInvalidNull
/// for Null.
IndexKey index_key_of(const VARIANT& value);

/// The text of an optional argument; empty when none is given.
std::wstring optional_text(const VARIANT& value);

}  // namespace pv
