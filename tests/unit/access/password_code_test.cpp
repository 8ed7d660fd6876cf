// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/access/password_code.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace pv {
namespace {

// The encoding once more, straight from its byte formulas.
std::wstring reference_encoding(const std::string& text) {
  const std::wstring alphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::wstring out;
  const std::size_t length = (text.size() + 2) / 3 * 4;
  for (std::size_t i = 0; i < text.size(); i += 3) {
    const int b1 = static_cast<unsigned char>(text[i]);
    const bool has2 = i + 1 < text.size();
    const bool has3 = i + 2 < text.size();
    const int b2 = has2 ? static_cast<unsigned char>(text[i + 1]) : 0;
    const int b3 = has3 ? static_cast<unsigned char>(text[i + 2]) : 0;
    out += alphabet[static_cast<std::size_t>(b1 & 63)];
    if (!has2) {
      out += alphabet[static_cast<std::size_t>((b1 & 192) / 64)];
      break;
    }
    out += alphabet[static_cast<std::size_t>((b2 & 15) * 4 + (b1 & 192) / 64)];
    if (!has3) {
      out += alphabet[static_cast<std::size_t>((b2 & 240) / 16)];
      break;
    }
    out += alphabet[static_cast<std::size_t>((b3 & 3) * 16 + (b2 & 240) / 16)];
    out += alphabet[static_cast<std::size_t>((b3 & 252) / 4)];
  }
  out.resize(length, L'*');
  return out;
}

TEST(PasswordCode, WritesTheLowestBitsFirst) {
  EXPECT_EQ(encode_password("\x01\x02\x03"), L"BIwA");
}

TEST(PasswordCode, FillsTheLastGroupWithStars) {
  EXPECT_EQ(encode_password(""), L"");
  EXPECT_EQ(encode_password("a"), reference_encoding("a"));
  EXPECT_EQ(encode_password("a").substr(2), L"**");
  EXPECT_EQ(encode_password("ab").substr(3), L"*");
  EXPECT_EQ(encode_password("abc").find(L'*'), std::wstring::npos);
}

TEST(PasswordCode, AgreesWithTheFormulasForAllTextsOfUpToTwoCharacters) {
  for (int a = 0; a < 256; ++a) {
    const std::string one(1, static_cast<char>(a));
    ASSERT_EQ(encode_password(one), reference_encoding(one));
    ASSERT_EQ(decode_password(encode_password(one)), one);
    for (int b = 0; b < 256; ++b) {
      const std::string two = one + static_cast<char>(b);
      ASSERT_EQ(encode_password(two), reference_encoding(two));
      ASSERT_EQ(decode_password(encode_password(two)), two);
    }
  }
}

// The four digits of three bytes, each from a table of its own formula.
struct DigitTables {
  DigitTables() {
    const std::wstring alphabet =
        L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t high = 0; high < 256; ++high) {
      first[high] = alphabet[high & 63];
      fourth[high] = alphabet[(high & 252) / 4];
      for (std::size_t low = 0; low < 256; ++low) {
        second[high][low] = alphabet[(high & 15) * 4 + (low & 192) / 64];
        third[high][low] = alphabet[(high & 3) * 16 + (low & 240) / 16];
      }
    }
  }
  wchar_t first[256], second[256][256], third[256][256], fourth[256];
};

bool is_coded(const std::string& text, const DigitTables& tables) {
  const auto b1 = static_cast<unsigned char>(text[0]);
  const auto b2 = static_cast<unsigned char>(text[1]);
  const auto b3 = static_cast<unsigned char>(text[2]);
  const std::wstring digits = encode_password(text);
  return digits.size() == 4 && digits[0] == tables.first[b1] &&
         digits[1] == tables.second[b2][b1] && digits[2] == tables.third[b3][b2] &&
         digits[3] == tables.fourth[b3] && decode_password(digits) == text;
}

TEST(PasswordCode, AgreesWithTheFormulasForAllTextsOfThreeCharacters) {
  const auto tables = std::make_unique<DigitTables>();
  std::string text(3, '\0');
  for (int number = 0; number < 1 << 24; ++number) {
    text[0] = static_cast<char>(number);
    text[1] = static_cast<char>(number >> 8);
    text[2] = static_cast<char>(number >> 16);
    if (!is_coded(text, *tables)) FAIL() << "characters of number " << number;
  }
}

// All sixteen million groups, many to a text: each is coded by itself.
TEST(PasswordCode, AgreesWithTheFormulasForEveryGroupOfThreeCharacters) {
  std::string text(3 * 256 * 256, '\0');
  for (int a = 0; a < 256; ++a) {
    for (std::size_t i = 0; i < text.size(); i += 3) {
      const std::size_t group = i / 3;
      text[i] = static_cast<char>(a);
      text[i + 1] = static_cast<char>(group / 256);
      text[i + 2] = static_cast<char>(group % 256);
    }
    const std::wstring digits = encode_password(text);
    ASSERT_TRUE(digits == reference_encoding(text)) << a;
    ASSERT_TRUE(decode_password(digits) == text) << a;
  }
}

TEST(PasswordCode, TurnsLongerTextsBack) {
  std::mt19937 random(20);
  for (int round = 0; round < 10000; ++round) {
    std::string text(random() % 80, '\0');
    for (char& c : text) c = static_cast<char>(random());
    ASSERT_EQ(encode_password(text), reference_encoding(text));
    ASSERT_EQ(decode_password(encode_password(text)), text);
  }
}

TEST(PasswordCode, PassesOverFillCharactersAnywhere) {
  EXPECT_EQ(decode_password(L"B*Iw*A"), "\x01\x02\x03");
  EXPECT_EQ(decode_password(L"****"), "");
  EXPECT_EQ(decode_password(L""), "");
}

TEST(PasswordCode, EmitsOnlyCharactersWhoseDigitsAreThere) {
  EXPECT_EQ(decode_password(L"B"), "");
  EXPECT_EQ(decode_password(L"BI"), "\x01");
  EXPECT_EQ(decode_password(L"BIw"), "\x01\x02");
}

}  // namespace
}  // namespace pv
