// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The encoding of password texts in settings, through the store, against the formulas of its
// digits.

#include <gtest/gtest.h>

#include <random>

#include "tests/support/object.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

/// The character of a code in the system code page.
std::wstring character(int code) {
  const char byte = static_cast<char>(code);
  wchar_t text[2];
  return {text, static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, &byte, 1, text, 2))};
}

/// The encoding from the formulas of its digits.
std::wstring encoding_of(const std::vector<int>& codes) {
  const std::wstring alphabet = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::wstring digits;
  const auto append = [&](int digit) { digits += alphabet[static_cast<std::size_t>(digit)]; };
  for (std::size_t i = 0; i < codes.size(); i += 3) {
    const int b1 = codes[i];
    append(b1 & 63);
    if (i + 1 == codes.size()) {
      append((b1 & 192) / 64);
      break;
    }
    const int b2 = codes[i + 1];
    append((b2 & 15) * 4 + (b1 & 192) / 64);
    if (i + 2 == codes.size()) {
      append((b2 & 240) / 16);
      break;
    }
    const int b3 = codes[i + 2];
    append((b3 & 3) * 16 + (b2 & 240) / 16);
    append((b3 & 252) / 4);
  }
  digits.resize((codes.size() + 2) / 3 * 4, L'*');
  return digits;
}

std::wstring text_of(const std::vector<int>& codes) {
  std::wstring text;
  for (const int code : codes) text += character(code);
  return text;
}

struct PasswordEncoding : testing::Test {
  std::wstring encoded(std::wstring_view text) const {
    return store.call(L"Encode64", text).text();
  }
  std::wstring decoded(std::wstring_view digits) const {
    return store.call(L"Decode64", digits).text();
  }
  const Object store = Object::create(L"pvItems32.CPasswords");
};

TEST_F(PasswordEncoding, EncodesTheLowestBitsFirst) {
  EXPECT_EQ(encoded(L"\x01\x02\x03"), L"BIwA");
  EXPECT_EQ(encoded(L""), L"");
  EXPECT_EQ(encoded(L"a").substr(2), L"**");
  EXPECT_EQ(encoded(L"ab").substr(3), L"*");
  EXPECT_EQ(encoded(L"abc").find(L'*'), std::wstring::npos);
  EXPECT_EQ(encoded(L"\0\0\0"s), L"AAAA");
}

TEST_F(PasswordEncoding, EncodesAndDecodesAllTextsOfOneAndTwoCharacters) {
  for (int a = 0; a < 256; ++a) {
    const std::wstring one = character(a), digits = encoding_of({a});
    ASSERT_EQ(encoded(one), digits) << a;
    ASSERT_EQ(decoded(digits), one) << a;
    for (int b = 0; b < 256; ++b) {
      const std::wstring two = one + character(b), more = encoding_of({a, b});
      ASSERT_EQ(encoded(two), more) << a << ' ' << b;
      ASSERT_EQ(decoded(more), two) << a << ' ' << b;
    }
  }
}

TEST_F(PasswordEncoding, EncodesAndDecodesLongerTexts) {
  std::mt19937 random(4);
  for (int round = 0; round < 10'000; ++round) {
    std::vector<int> codes(3 + random() % 60);
    for (int& code : codes) code = static_cast<int>(random() & 255);
    const std::wstring text = text_of(codes), digits = encoding_of(codes);
    ASSERT_EQ(encoded(text), digits) << round;
    ASSERT_EQ(decoded(digits), text) << round;
  }
}

TEST_F(PasswordEncoding, EncodesCharactersOutsideTheCodePageAsQuestionMarks) {
  EXPECT_EQ(encoded(L"a\u8A9E"), encoded(L"a?"));
}

TEST_F(PasswordEncoding, DecodesWhatIsIncomplete) {
  EXPECT_EQ(decoded(L""), L"");
  EXPECT_EQ(decoded(L"*"), L"");
  EXPECT_EQ(decoded(L"B"), L"");
  EXPECT_EQ(decoded(L"BI"), L"\x01");
  EXPECT_EQ(decoded(L"BIw"), L"\x01\x02");
  EXPECT_EQ(decoded(L"BIwAB"), L"\x01\x02\x03");
}

TEST_F(PasswordEncoding, DecodesPastFillCharactersAnywhere) {
  EXPECT_EQ(decoded(L"B*Iw*A"), L"\x01\x02\x03");
  EXPECT_EQ(decoded(L"****BIwA"), L"\x01\x02\x03");
  EXPECT_EQ(decoded(L"BA**BA**"), decoded(L"BABA"));
}

TEST_F(PasswordEncoding, DecodingLeavesItsArgumentAlone) {
  Value digits(L"BIw");
  EXPECT_EQ(store.call(L"Decode64", by_ref(digits)), L"\x01\x02");
  EXPECT_EQ(digits, L"BIw");
  Value text(L"abc");
  store.call(L"Encode64", by_ref(text));
  EXPECT_EQ(text, L"abc");
}

}  // namespace
}  // namespace pv::test
