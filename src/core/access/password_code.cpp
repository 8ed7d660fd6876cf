// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/access/password_code.h"

#include <algorithm>
#include <cstdint>

namespace pv {
namespace {

constexpr std::wstring_view kAlphabet =
    L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr wchar_t kFill = L'*';
constexpr std::size_t kBytesPerGroup = 3;
constexpr std::size_t kDigitsPerGroup = 4;
constexpr unsigned kBitsPerDigit = 6;

}  // namespace

std::wstring encode_password(std::string_view bytes) {
  std::wstring digits;
  for (std::size_t at = 0; at < bytes.size(); at += kBytesPerGroup) {
    const std::string_view group = bytes.substr(at, kBytesPerGroup);
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < group.size(); ++i) {
      number |= static_cast<std::uint32_t>(static_cast<unsigned char>(group[i])) << (8 * i);
    }
    for (std::size_t i = 0; i < kDigitsPerGroup; ++i, number >>= kBitsPerDigit) {
      digits += i <= group.size() ? kAlphabet[number & 63] : kFill;
    }
  }
  return digits;
}

std::string decode_password(std::wstring_view digits) {
  std::string bytes;
  std::uint32_t number = 0;
  unsigned bits = 0;
  for (wchar_t c : digits) {
    const auto digit = kAlphabet.find(c);
    if (digit == std::wstring_view::npos) continue;
    number |= static_cast<std::uint32_t>(digit) << bits;
    bits += kBitsPerDigit;
    if (bits < 8) continue;
    bytes += static_cast<char>(number & 255);
    number >>= 8;
    bits -= 8;
  }
  return bytes;
}

}  // namespace pv
