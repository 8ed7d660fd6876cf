// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "hex_text.h"

#include <bit>
#include <charconv>

namespace fluxor {
namespace {

std::uint32_t swap_bytes(std::uint32_t value) {
  return value << 24 | (value & 0xFF00) << 8 | (value >> 8 & 0xFF00) | value >> 24;
}

}  // namespace

std::string int_to_hex(std::uint32_t number, std::size_t digits) {
  std::string text(digits, '0');
  for (std::size_t i = digits; i > 0; --i, number >>= 4)
    text[i - 1] = "0123456789ABCDEF"[number & 15];
  return text;
}

std::optional<std::uint32_t> hex_to_int(std::string_view text) {
  if (text.empty() || text.size() > 8) return std::nullopt;
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return number;
}

std::string float_to_hex(float number) {
  return int_to_hex(swap_bytes(std::bit_cast<std::uint32_t>(number)), 8);
}

std::optional<float> hex_to_float(std::string_view text) {
  if (text.size() != 8) return std::nullopt;
  const auto bits = hex_to_int(text);
  if (!bits) return std::nullopt;
  return std::bit_cast<float>(swap_bytes(*bits));
}

}  // namespace fluxor
