// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

namespace pv {

/// The encoding in which passwords are kept in settings: the alphabet of Base64, but the lowest
/// bits first and "*" as fill character; three bytes become four digits. Not interchangeable with
/// Base64.
std::wstring encode_password(std::string_view bytes);

/// The inverse. Fill characters may stand anywhere; characters that are no digits are passed over.
std::string decode_password(std::wstring_view digits);

}  // namespace pv
