// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The codecs of telegrams as automation clients reach them.

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

struct Codec : testing::Test {
  Object codec = Object::create(L"pvItems32.CComUtility");

  static Object error_lists(int count = 70) {
    const Object members = Object::create(L"pvItems32.CDListMembers");
    for (int i = 0; i < count; ++i) {
      const std::wstring key = std::to_wstring(i);
      members.call(L"Add", key, L"error " + key, L"");
    }
    const Object lists = Object::create(L"pvItems32.CDLists");
    lists.call(L"Add", L"ERROR_TEXT", members, L"Errors");
    return lists;
  }
};

TEST_F(Codec, HexadecimalNumbersBothWays) {
  EXPECT_EQ(codec.call(L"CHexToInt", L""), 0);
  EXPECT_EQ(codec.call(L"CHexToInt", L"FFFF"), 65535);
  EXPECT_EQ(codec.call(L"CHexToInt", L"FFFFFFFF"), -1);
  EXPECT_EQ(codec.try_call(L"CHexToInt", L"xyz").number(), 13);
  EXPECT_EQ(codec.try_call(L"CHexToInt", L"123456789").number(), 6);
  EXPECT_EQ(codec.call(L"CIntToHex", 10), L"0A");
  EXPECT_EQ(codec.call(L"CIntToHex", L"300"), L"2C");
  EXPECT_EQ(codec.call(L"CIntToHex", -1, 4), L"FFFF");
  EXPECT_EQ(codec.call(L"CIntToHex", 2.5), L"02");  // half to even
  EXPECT_EQ(codec.call(L"CIntToHex", Value()), L"00");
  EXPECT_EQ(codec.try_call(L"CIntToHex", L"x").number(), 13);
  EXPECT_EQ(codec.try_call(L"CIntToHex", 3e9).number(), 6);
  EXPECT_EQ(codec.try_call(L"CIntToHex", 1, -1).number(), 5);
  Value number(255);
  EXPECT_EQ(codec.call(L"CIntToHex", by_ref(number)), L"FF");
}

TEST_F(Codec, SinglesBothWays) {
  EXPECT_EQ(codec.call(L"CSngToHex", 0), L"00000000");
  EXPECT_EQ(codec.call(L"CSngToHex", 0.1), L"CCCCCC3D");
  EXPECT_EQ(codec.call(L"CSngToHex", 0.1f), L"CDCCCC3D");
  EXPECT_EQ(codec.call(L"CSngToHex", -2), L"000000C0");
  EXPECT_EQ(codec.call(L"CHexToSng", L"0000803F"), 1.0);
  EXPECT_EQ(codec.call(L"CHexToSng", L"FFFFFFFF"), 0.0);
  EXPECT_EQ(codec.call(L"CHexToSng", L"0000"), 0.0);
  EXPECT_EQ(codec.call(L"CHexToSng", L"0000803F").vt, VT_R8);
  EXPECT_EQ(codec.try_call(L"CSngToHex", L"x").number(), 13);
}

TEST_F(Codec, NumberTextsMeanTheSameInEveryLocale) {
  for (const wchar_t* text : {L"2.5", L"2,5", L" 2.5 "}) {
    EXPECT_EQ(codec.call(L"CIntToHex", text), L"02") << printable(text);
    EXPECT_EQ(codec.call(L"CSngToHex", text), L"00002040") << printable(text);
    EXPECT_EQ(codec.call(L"Pad", L"a", text, L"x"), L"ax") << printable(text);
  }
  EXPECT_EQ(codec.call(L"CIntToHex", L"&HFF"), L"FF");
}

TEST_F(Codec, AChunkIsCutOffTheVariable) {
  Value data(L"abcdef");
  EXPECT_EQ(codec.call(L"GetChunk", by_ref(data), 2), L"ab");
  EXPECT_EQ(data, L"cdef");
  EXPECT_EQ(codec.call(L"GetChunk", by_ref(data), 0), L"");
  EXPECT_EQ(codec.call(L"GetChunk", by_ref(data), -1), L"");
  EXPECT_EQ(data, L"cdef");
  EXPECT_EQ(codec.call(L"GetChunk", by_ref(data), 4), L"cdef");
  EXPECT_EQ(data, L"");
}

TEST_F(Codec, ChunksOfOtherVariables) {
  Value number(1234);
  EXPECT_EQ(codec.call(L"GetChunk", by_ref(number), 1), L"1");
  EXPECT_EQ(number, L"234");
  Value same(1234);
  EXPECT_EQ(codec.call(L"GetChunk", by_ref(same), 0), L"");
  EXPECT_EQ(same, 1234);
  BSTR typed = SysAllocString(L"xyz");
  EXPECT_EQ(codec.call(L"GetChunk", by_ref(typed), 1), L"x");
  EXPECT_EQ(std::wstring(typed), L"yz");
  SysFreeString(typed);
  EXPECT_EQ(codec.call(L"GetChunk", L"literal", 3), L"lit");
}

TEST_F(Codec, PadsAtEitherSide) {
  EXPECT_EQ(codec.call(L"Pad", L"ab", 4), L"ab  ");
  EXPECT_EQ(codec.call(L"Pad", L"ab", 4, L"0"), L"ab00");
  EXPECT_EQ(codec.call(L"Pad", L"ab", 4, L"0", true), L"00ab");
  EXPECT_EQ(codec.call(L"Pad", L"ab", L"4", L"0", 1), L"00ab");
  EXPECT_EQ(codec.call(L"Pad", L"abcd", 2, L"0", false), L"ab");
  EXPECT_EQ(codec.call(L"Pad", L"abcd", 2, L"0", true), L"cd");
  EXPECT_EQ(codec.try_call(L"Pad", L"a", -1).number(), 5);
  EXPECT_EQ(codec.try_call(L"Pad", L"a", L"x").number(), 13);
  EXPECT_EQ(codec.try_call(L"Pad", L"a", 2'000'000'000, L"x").number(), 7);
}

TEST_F(Codec, CharactersAndTheirNames) {
  EXPECT_EQ(codec.call(L"GetAsciiCharName", L""), L"[NULL]");
  EXPECT_EQ(codec.call(L"GetAsciiCharName", L"A"), L"A");
  EXPECT_EQ(codec.call(L"GetAsciiCharName", L"\r"), L"[CR]");
  EXPECT_EQ(codec.call(L"GetAsciiCharName", std::wstring(1, L'\0')), std::wstring(1, L'\0'));
  EXPECT_EQ(codec.call(L"pvC7Bit",
                       L"\x02"
                       L"A\r",
                       true),
            L"[STX]A[CR]");
  EXPECT_EQ(codec.call(L"pvC7Bit",
                       L"\x02"
                       L"A\r",
                       false),
            L"\x02"
            L"A\r");
}

TEST_F(Codec, PackedRecords) {
  const Object lists = error_lists();
  EXPECT_EQ(codec.call(L"CStrToPack", L"anything"), std::wstring(7, wchar_t{28}));
  EXPECT_EQ(codec.call(L"CPackToStr", L"", Value::nothing(), Value::nothing()), L"");
  EXPECT_EQ(
      codec.call(L"CPackToStr", std::wstring(7, wchar_t{28}), Value::nothing(), Value::nothing()),
      L"-");
  EXPECT_EQ(codec.call(L"CPackToStr", L"\x1d\x1e\x1f !\"", Value::nothing(), Value::nothing()),
            L"01\\02\\03 04:05:06 ");
  EXPECT_EQ(codec.call(L"CPackToStr", L"\x1d\x1e\x1f !\"\x1c\x25", Value::nothing(), lists),
            L"01\\02\\03 04:05:06 01, error 110, error 10");
}

TEST_F(Codec, AMissingErrorTextOfAPackReachesTheCaller) {
  const std::wstring pack(L"\x1d\x1d\x1d\x1d\x1d\x1d\x7e");
  EXPECT_EQ(codec.try_call(L"CPackToStr", pack, Value::nothing(), Value::nothing()).number(), 91);
  EXPECT_FALSE(codec.try_call(L"CPackToStr", pack, Value::nothing(), error_lists(1)).worked());
  EXPECT_FALSE(
      codec.try_call(L"CPackToStr", pack, Value::nothing(), Object::create(L"pvItems32.CDLists"))
          .worked());
}

TEST_F(Codec, ErrorBytes) {
  const Object lists = error_lists();
  const auto text = [&](const wchar_t* byte, int variable) {
    return codec.call(L"CErrorToStr", byte, Value::nothing(), variable, lists).text();
  };
  EXPECT_EQ(text(L"00", 2), L"0, error 0");
  EXPECT_EQ(text(L"01", 2), L"1, error 1");
  EXPECT_EQ(text(L"80", 3), L"16, error 16");
  EXPECT_EQ(text(L"03", 2), L"3, error 3");
  EXPECT_EQ(text(L"80", 9), L"64, error 64");
  EXPECT_EQ(text(L"01", 10), L"65, ???");
  EXPECT_EQ(text(L"01", 1), L"-7, ???");
  EXPECT_EQ(text(L"no", 5), L"0, error 0");
  EXPECT_EQ(text(L"FFFF", 5), L"0, error 0");
  EXPECT_EQ(text(L"", 5), L"0, error 0");
  EXPECT_EQ(codec.call(L"CErrorToStr", L"01", Value::nothing(), 2, Value::nothing()), L"1, ");
  EXPECT_EQ(codec.call(L"CErrorToStr", L"02", Value::nothing(), 2, error_lists(1)), L"2, ");
}

TEST_F(Codec, ErrorNumbersToHexadecimal) {
  EXPECT_EQ(codec.call(L"CStrToError", L"10"), L"0A");
  EXPECT_EQ(codec.call(L"CStrToError", L"10, short"), L"0A");
  EXPECT_EQ(codec.call(L"CStrToError", L"-1"), L"FF");
  EXPECT_EQ(codec.call(L"CStrToError", L"text"), L"00");
  EXPECT_EQ(codec.call(L"CStrToError", L"99999"), L"00");
}

}  // namespace
}  // namespace pv::test
