// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/txm/telegram_text.h"

#include <array>
#include <bit>
#include <cmath>
#include <new>

#include "core/errors/automation_error.h"
#include "core/text/number_text.h"

namespace pv {
namespace {

constexpr int kPackBase = 28;
constexpr std::size_t kPackLength = 7;

int digit_value(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return -1;
}

std::wstring two_digits(int value) {
  const std::wstring text = L"00" + format_integer(value);
  return text.substr(text.size() - 2);
}

// Separators behind the six fields of the time stamp.
constexpr std::array<wchar_t, 6> kStampSeparators = {L'\\', L'\\', L' ', L':', L':', L' '};

}  // namespace

std::int32_t hex_to_integer(std::wstring_view digits) {
  std::uint64_t value = 0;
  for (wchar_t c : digits) {
    const int digit = digit_value(c);
    if (digit < 0) {
      throw automation_error(ErrorCode::kTypeMismatch, L"\"" + std::wstring(digits) + L"\"");
    }
    value = value * 16 + static_cast<std::uint64_t>(digit);
    if (value > 0xFFFFFFFFu) throw automation_error(ErrorCode::kOverflow, std::wstring(digits));
  }
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::wstring integer_to_hex(std::int32_t value, int count) {
  if (count < 0)
    throw automation_error(ErrorCode::kInvalidCall, L"digits " + format_integer(count));
  std::wstring digits(static_cast<std::size_t>(count), L'0');
  auto rest = static_cast<std::uint32_t>(value);
  for (auto digit = digits.rbegin(); digit != digits.rend() && rest != 0; ++digit, rest /= 16) {
    *digit = L"0123456789ABCDEF"[rest % 16];
  }
  return digits;
}

std::wstring single_to_hex(double value) {
  if (value == 0) return L"00000000";
  if (!std::isfinite(value)) throw automation_error(ErrorCode::kOverflow, L"not a finite number");
  const int sign = value < 0 ? 128 : 0;
  double magnitude = std::fabs(value);
  int exponent = 127;
  for (; magnitude < 1; magnitude *= 2) --exponent;
  for (; magnitude >= 2; magnitude /= 2) ++exponent;
  magnitude /= 2;
  std::array<int, 3> mantissa{};
  for (int& byte : mantissa) {
    magnitude *= 256;
    byte = static_cast<int>(magnitude);
    magnitude -= byte;
  }
  return integer_to_hex(mantissa[2], 2) + integer_to_hex(mantissa[1], 2) +
         integer_to_hex((exponent & 1) * 128 + (mantissa[0] & 127), 2) +
         integer_to_hex(sign + exponent / 2, 2);
}

double hex_to_single(std::wstring_view digits) {
  constexpr std::size_t kDigits = 8;
  if (digits.size() < kDigits) return 0;
  std::uint32_t pattern = 0;
  for (std::size_t byte = 0; byte < 4; ++byte) {
    const auto value = static_cast<std::uint32_t>(hex_to_integer(digits.substr(byte * 2, 2)));
    pattern |= value << (8 * byte);
  }
  if (pattern == 0x7FFFFFFFu || pattern == 0xFFFFFFFFu) return 0;
  return std::bit_cast<float>(pattern);
}

std::wstring take_chunk(std::wstring& data, int count) {
  if (count < 1) return {};
  std::wstring chunk = data.substr(0, static_cast<std::size_t>(count));
  data.erase(0, chunk.size());
  return chunk;
}

std::wstring padded(std::wstring_view data, long length, std::wstring_view filler, bool before) {
  if (length < 0)
    throw automation_error(ErrorCode::kInvalidCall, L"length " + format_integer(length));
  const auto wanted = static_cast<std::size_t>(length);
  const std::size_t missing = wanted > data.size() ? wanted - data.size() : 0;
  // Automation counts the bytes of a text in 31 bits, whatever memory a 64-bit program can have.
  constexpr std::size_t kMostCharacters = 0x3FFFFFFF;
  if (!filler.empty() && missing > kMostCharacters) throw std::bad_alloc();
  std::wstring fill;
  // As if the filler were added once for each missing character: what is too much is cut off.
  while (!filler.empty() && fill.size() < missing) fill += filler;
  if (!before) return (std::wstring(data) + fill).substr(0, wanted);
  const std::wstring whole = fill + std::wstring(data);
  return whole.size() > wanted ? whole.substr(whole.size() - wanted) : whole;
}

std::wstring ascii_name(std::wstring_view character) {
  constexpr std::array kNames = {L"SOH", L"STX", L"ETX", L"EOT", L"ENQ", L"ACK", L"BEL", L"BS",
                                 L"HT",  L"LF",  L"VT",  L"FF",  L"CR",  L"SO",  L"SI",  L"DLE",
                                 L"DC1", L"DC2", L"DC3", L"DC4", L"NAK", L"SYN", L"ETB", L"CAN",
                                 L"EM",  L"SUB", L"ESC", L"FS",  L"GS",  L"RS",  L"US"};
  const auto bracketed = [](const wchar_t* name) { return L"[" + std::wstring(name) + L"]"; };
  if (character.empty()) return bracketed(L"NULL");
  const auto code = static_cast<std::size_t>(character.front());
  if (code >= 1 && code <= kNames.size()) return bracketed(kNames[code - 1]);
  return code == 127 ? bracketed(L"DEL") : std::wstring(character);
}

std::wstring seven_bit(std::wstring_view bytes, bool name_controls) {
  std::wstring result;
  for (wchar_t byte : bytes) {
    const auto low = static_cast<wchar_t>(byte & 127);
    result += name_controls ? ascii_name({&low, 1}) : std::wstring(1, low);
  }
  return result;
}

std::wstring empty_pack() { return std::wstring(kPackLength, static_cast<wchar_t>(kPackBase)); }

std::wstring pack_to_text(std::wstring_view bytes,
                          const std::function<std::wstring(int)>& error_text) {
  if (bytes == empty_pack()) return L"-";
  std::wstring text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const int code = static_cast<int>(bytes[i]);
    const int field = code < kPackBase ? 0 : code - kPackBase;
    if (i < kStampSeparators.size()) {
      text += two_digits(field) + kStampSeparators[i];
    } else {
      text += two_digits(field + 1) + L", " + error_text(field + 1);
    }
  }
  return text;
}

std::int16_t error_code(std::int16_t byte, std::int16_t variable) {
  if (byte < 1) return 0;
  const auto bit = lenient_integer<std::int16_t>(std::log(byte) / std::log(2.0) + 1);
  if (bit < 1) return 0;
  return lenient_integer<std::int16_t>((variable - 2) * 8.0 + bit);
}

}  // namespace pv
