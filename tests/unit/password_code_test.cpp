#include "access/password_code.h"

#include <gtest/gtest.h>

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

// Every character of a group is decoded from its own bits, so varying two of three covers all
// dependencies; the third runs through every value of a coprime walk.
TEST(PasswordCode, AgreesWithTheFormulasForTextsOfThreeCharacters) {
  int c = 0;
  for (int a = 0; a < 256; ++a) {
    for (int b = 0; b < 256; ++b) {
      c = (c + 37) & 255;
      const std::string text = {static_cast<char>(a), static_cast<char>(b), static_cast<char>(c)};
      ASSERT_EQ(encode_password(text), reference_encoding(text));
      ASSERT_EQ(decode_password(encode_password(text)), text);
    }
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
