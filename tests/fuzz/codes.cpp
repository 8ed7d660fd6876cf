// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The encoding of passwords, and the conversions of telegrams.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include "core/access/password_code.h"
#include "core/errors/automation_error.h"
#include "core/text/number_text.h"
#include "core/txm/telegram_text.h"
#include "tests/fuzz/target.h"

namespace pv::fuzz {
namespace {

bool is_hex(std::wstring_view text) {
  return text.find_first_not_of(L"0123456789ABCDEFabcdef") == std::wstring_view::npos;
}

std::wstring upper(std::wstring text) {
  for (wchar_t& c : text) {
    if (c >= L'a' && c <= L'f') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  return text;
}

// --- Hexadecimal numbers

void require_hex(const std::wstring& text) {
  const std::size_t zeros = std::min(text.find_first_not_of(L'0'), text.size());
  const bool reads = is_hex(text) && text.size() - zeros <= 8;
  std::int32_t value = 0;
  bool failed = false;
  try {
    value = hex_to_integer(text);
  } catch (const automation_error&) {
    failed = true;
  }
  require(failed != reads, "up to 32 bits of hexadecimal digits are a number");
  if (failed) return;
  const std::wstring digits = integer_to_hex(value, 8);
  require(hex_to_integer(digits) == value, "eight digits hold every number");
  require(std::wstring(8, L'0') + upper(text.substr(zeros)) ==
              std::wstring(std::max<std::size_t>(text.size() - zeros, 0), L'0') + digits,
          "the digits of a number are those that were read");
  for (int count = 0; count < 8; ++count) {
    require(integer_to_hex(value, count) == digits.substr(8 - static_cast<std::size_t>(count)),
            "fewer digits are the low ones");
  }
}

void require_single(double value) {
  if (!std::isfinite(value)) return;
  const std::wstring digits = single_to_hex(value);
  require(digits.size() == 8 && is_hex(digits), "a single has eight digits");
  const double magnitude = std::fabs(value);
  if (value == 0) require(hex_to_single(digits) == 0, "zero comes back");
  if (magnitude < 0x1p-126 || magnitude >= 0x1p128) return;
  const double read = hex_to_single(digits);
  require(std::signbit(read) == std::signbit(value), "the sign comes back");
  const double lost = magnitude - std::fabs(read);
  require(lost >= 0 && lost < magnitude * 0x1p-23, "the mantissa is cut, not rounded");
}

void require_single_text(const std::wstring& text) {
  double value = 0;
  try {
    value = hex_to_single(text);
  } catch (const automation_error&) {
    require(!is_hex(text.substr(0, 8)), "only other characters are refused");
    return;
  }
  if (text.size() < 8) require(value == 0, "fewer digits are no number");
  if (std::isnormal(value) && std::fabs(value) >= 0x1p-126) {
    require(single_to_hex(value) == upper(text.substr(0, 8)), "eight digits come back");
  }
}

// --- Pieces of telegrams

void require_chunks(const std::wstring& text, int count) {
  std::wstring rest = text;
  std::wstring joined;
  while (count > 0 && !rest.empty()) {
    const std::wstring chunk = take_chunk(rest, count);
    require(chunk.size() == static_cast<std::size_t>(count) || rest.empty(), "whole chunks first");
    joined += chunk;
  }
  if (count > 0) require(joined == text, "the chunks make up the text");
  require(take_chunk(rest, 0).empty() && take_chunk(rest, -count).empty(), "no count, no chunk");
}

/// As it is described: the filler once for each missing character, then cut.
std::wstring plainly_padded(const std::wstring& data, std::size_t length,
                            const std::wstring& filler, bool before) {
  std::wstring fill;
  for (std::size_t i = data.size(); i < length; ++i) fill += filler;
  const std::wstring whole = before ? fill + data : data + fill;
  if (whole.size() <= length) return whole;
  return before ? whole.substr(whole.size() - length) : whole.substr(0, length);
}

void require_padding(const std::wstring& text, int length) {
  for (const std::wstring& filler :
       {std::wstring(), std::wstring(L" "), text.substr(0, 3), text.substr(0, 8)}) {
    for (const bool before : {false, true}) {
      require(padded(text, length, filler, before) ==
                  plainly_padded(text, static_cast<std::size_t>(length), filler, before),
              "filled and cut as described");
    }
  }
}

void require_seven_bit(const std::wstring& text, std::size_t at) {
  for (const bool named : {false, true}) {
    const std::wstring whole = seven_bit(text, named);
    require(whole == seven_bit(text.substr(0, at), named) + seven_bit(text.substr(at), named),
            "whole and split texts agree");
    require(seven_bit(whole, named) == whole || !named, "names stay as they are");
    require(std::all_of(whole.begin(), whole.end(), [](wchar_t c) { return (c & ~127) == 0; }),
            "seven bits are left");
  }
  require(seven_bit(text, false).size() == text.size(), "one character for each");
}

void require_pack(const std::wstring& text) {
  std::size_t errors = 0;
  const std::wstring shown = pack_to_text(text, [&](int number) {
    require(number >= 1, "errors count from 1");
    ++errors;
    return std::wstring(L"<") + format_integer(number) + L">";
  });
  if (text == empty_pack()) {
    require(shown == L"-", "the empty record is a dash");
    return;
  }
  const std::size_t stamp = std::min<std::size_t>(text.size(), 6);
  require(errors == text.size() - stamp, "an error for each character behind the time stamp");
  for (std::size_t i = 0; i < stamp; ++i) {
    const int value = std::max(static_cast<int>(text[i]) - 28, 0) % 100;
    require(shown.substr(i * 3, 2) == format_padded(value, 2), "two digits for each field");
  }
}

void require_error_code(std::int16_t byte, std::int16_t variable) {
  const std::int16_t code = error_code(byte, variable);
  if (byte < 1) require(code == 0, "no error, no code");
  for (int bit = 0; bit < 8; ++bit) {
    if (byte == (1 << bit) && variable >= 2 && variable < 1000) {
      require(code == (variable - 2) * 8 + bit + 1, "a bit is its number");
    }
  }
}

}  // namespace

void passwords(std::string_view bytes) {
  const std::wstring digits = encode_password(bytes);
  require(decode_password(digits) == bytes, "a decoded password is the encoded one");
  require(digits.size() == (bytes.size() + 2) / 3 * 4, "four digits for three characters");
  require(digits.find(L'|') == std::wstring::npos, "no digit is a separator");
  const std::size_t groups = bytes.size() / 3 / 2 * 3;
  require(
      encode_password(bytes.substr(0, groups)) + encode_password(bytes.substr(groups)) == digits,
      "whole and split passwords agree");

  // Any text as digits: what it decodes to is kept.
  const std::wstring text = wide(bytes);
  const std::string decoded = decode_password(text);
  require(decode_password(encode_password(decoded)) == decoded, "what is decoded is kept");
  require(decode_password(text + L"****") == decoded, "fill characters say nothing");
  require(decoded.size() <= text.size() / 4 * 3 + 2, "three characters for four digits");
}

void telegrams(std::string_view bytes) {
  const std::wstring text = wide(bytes);
  require_hex(text);
  require_single_text(text);
  double value = 0;
  std::memcpy(&value, bytes.data(), std::min(sizeof value, bytes.size()));
  require_single(value);
  require_single(static_cast<float>(std::clamp(value, -0x1p127, 0x1p127)));

  const int number = bytes.empty() ? 0 : static_cast<unsigned char>(bytes[0]);
  require_chunks(text, number);
  require_padding(text, number);
  require_seven_bit(text, std::min<std::size_t>(text.size(), static_cast<std::size_t>(number)));
  require_pack(text);
  std::int16_t error[2] = {};
  std::memcpy(error, bytes.data(), std::min(sizeof error, bytes.size()));
  require_error_code(error[0], error[1]);
}

}  // namespace pv::fuzz
