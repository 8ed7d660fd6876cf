// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// Conversions between values and the texts of telegrams. Where a text holds bytes of a telegram,
// each character is the byte's value.
namespace pv {

/// Empty gives 0; eight digits with the top bit set are negative. Errors: kTypeMismatch for other
/// characters, kOverflow for more than 32 bits.
std::int32_t hex_to_integer(std::wstring_view digits);

/// The lowest `count` hexadecimal digits, filled with zeros. Error: kInvalidCall below 0.
std::wstring integer_to_hex(std::int32_t value, int count);

/// Single precision, lowest byte first; the mantissa is truncated. Error: kOverflow for values
/// that are not finite.
std::wstring single_to_hex(double value);

/// The inverse. Fewer than eight digits and the two marks of "not a number" give 0.
double hex_to_single(std::wstring_view digits);

/// Cuts the first `count` characters off `data` and returns them.
std::wstring take_chunk(std::wstring& data, int count);

/// `data` brought to a length: filled or cut at its end, or with `before` at its start. Throws
/// std::bad_alloc for what is longer than a text of automation can be.
std::wstring padded(std::wstring_view data, long length, std::wstring_view filler, bool before);

/// "[CR]" for a carriage return, "[NULL]" for no character; other characters as they are.
std::wstring ascii_name(std::wstring_view character);

/// The eighth bit of each character cleared, control characters named if wanted.
std::wstring seven_bit(std::wstring_view bytes, bool name_controls);

/// Seven characters that stand for no record.
std::wstring empty_pack();

/// A packed record as text: six two-digit fields of the time stamp, then error codes with the text
/// that `error_text` gives for their number.
std::wstring pack_to_text(std::wstring_view bytes,
                          const std::function<std::wstring(int)>& error_text);

/// Number of the error that a byte of an error record at variable `variable` shows; 0 for none.
std::int16_t error_code(std::int16_t byte, std::int16_t variable);

}  // namespace pv
