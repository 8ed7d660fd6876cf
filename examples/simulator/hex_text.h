// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace fluxor {

/// `digits` upper-case hexadecimal digits of the low end of a number.
std::string int_to_hex(std::uint32_t number, std::size_t digits);

/// Nothing unless the text is all hexadecimal digits, one to eight of them.
std::optional<std::uint32_t> hex_to_int(std::string_view text);

/// A single-precision number as eight digits, lowest byte first: 1.0 is 0000803F.
std::string float_to_hex(float number);
std::optional<float> hex_to_float(std::string_view text);

}  // namespace fluxor
