// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Conversions between values and the texts of telegrams, against references of their own.

#include "core/txm/telegram_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <new>
#include <random>

#include "core/errors/automation_error.h"

namespace pv {
namespace {

template <class Action>
ErrorCode error_of(Action&& action) {
  try {
    action();
  } catch (const automation_error& error) {
    return error.code();
  }
  ADD_FAILURE() << "no error";
  return ErrorCode{};
}

std::wstring printed(const char* format, unsigned value) {
  char text[32];
  std::snprintf(text, sizeof text, format, value);
  const std::string narrow(text);
  return {narrow.begin(), narrow.end()};
}

// The pattern of the single nearest to zero from the value, lowest byte first.
std::wstring truncated_single(double value) {
  auto single = static_cast<float>(value);
  if (std::fabs(static_cast<double>(single)) > std::fabs(value)) {
    single = std::nextafter(single, 0.0f);
  }
  const std::uint32_t pattern = std::bit_cast<std::uint32_t>(single);
  return printed("%08X", __builtin_bswap32(pattern));
}

// --- Hexadecimal integers ---------------------------------------------------------------------

TEST(HexToInteger, TheEmptyTextIsZero) { EXPECT_EQ(hex_to_integer(L""), 0); }

TEST(HexToInteger, ReadsBothCases) {
  EXPECT_EQ(hex_to_integer(L"0A"), 10);
  EXPECT_EQ(hex_to_integer(L"aBcD"), 0xABCD);
  EXPECT_EQ(hex_to_integer(L"0"), 0);
}

TEST(HexToInteger, OnlyEightDigitsCanBeNegative) {
  EXPECT_EQ(hex_to_integer(L"FF"), 255);
  EXPECT_EQ(hex_to_integer(L"FFFF"), 65535);
  EXPECT_EQ(hex_to_integer(L"FFFFFFF"), 0xFFFFFFF);
  EXPECT_EQ(hex_to_integer(L"7FFFFFFF"), 2147483647);
  EXPECT_EQ(hex_to_integer(L"80000000"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(hex_to_integer(L"FFFFFFFF"), -1);
}

TEST(HexToInteger, LeadingZerosDoNotCountAsDigits) {
  EXPECT_EQ(hex_to_integer(L"00000000000000FF"), 255);
  EXPECT_EQ(hex_to_integer(L"0FFFFFFFF"), -1);
}

TEST(HexToInteger, MoreThanThirtyTwoBitsOverflow) {
  EXPECT_EQ(error_of([] { hex_to_integer(L"100000000"); }), ErrorCode::kOverflow);
  EXPECT_EQ(error_of([] { hex_to_integer(std::wstring(1000, L'F')); }), ErrorCode::kOverflow);
}

TEST(HexToInteger, OtherCharactersAreATypeMismatch) {
  for (const wchar_t* text :
       {L"G", L"0x10", L" 1", L"1 ", L"-1", L"1.5", L"ff\u00e9", L"/", L":", L"@", L"`", L"g"}) {
    EXPECT_EQ(error_of([&] { hex_to_integer(text); }), ErrorCode::kTypeMismatch);
  }
}

TEST(IntegerToHex, FillsAndCutsToTheCount) {
  EXPECT_EQ(integer_to_hex(10, 2), L"0A");
  EXPECT_EQ(integer_to_hex(255, 2), L"FF");
  EXPECT_EQ(integer_to_hex(256, 2), L"00");
  EXPECT_EQ(integer_to_hex(300, 2), L"2C");
  EXPECT_EQ(integer_to_hex(-1, 4), L"FFFF");
  EXPECT_EQ(integer_to_hex(-1, 8), L"FFFFFFFF");
  EXPECT_EQ(integer_to_hex(-1, 10), L"00FFFFFFFF");
  EXPECT_EQ(integer_to_hex(5, 0), L"");
  EXPECT_EQ(integer_to_hex(0, 3), L"000");
}

TEST(IntegerToHex, ANegativeCountIsAnInvalidCall) {
  EXPECT_EQ(error_of([] { integer_to_hex(1, -1); }), ErrorCode::kInvalidCall);
}

TEST(IntegerToHex, IsReadBackAsTheSameNumber) {
  std::mt19937 random(1);
  for (int i = 0; i < 10000; ++i) {
    const auto value = static_cast<std::int32_t>(random());
    ASSERT_EQ(integer_to_hex(value, 8), printed("%08X", static_cast<unsigned>(value)));
    ASSERT_EQ(hex_to_integer(integer_to_hex(value, 8)), value);
  }
}

// --- Singles ----------------------------------------------------------------------------------

TEST(SingleToHex, KnownPatterns) {
  EXPECT_EQ(single_to_hex(0), L"00000000");
  EXPECT_EQ(single_to_hex(-0.0), L"00000000");
  EXPECT_EQ(single_to_hex(1), L"0000803F");
  EXPECT_EQ(single_to_hex(-2), L"000000C0");
  EXPECT_EQ(single_to_hex(0.5), L"0000003F");
  EXPECT_EQ(single_to_hex(123.456), truncated_single(123.456));
}

TEST(SingleToHex, TheMantissaIsTruncatedNotRounded) {
  EXPECT_EQ(single_to_hex(0.1), L"CCCCCC3D");
  EXPECT_EQ(single_to_hex(-0.1), L"CCCCCCBD");
  EXPECT_EQ(single_to_hex(static_cast<double>(0.1f)), L"CDCCCC3D");
}

TEST(SingleToHex, EveryNormalNumberAgreesWithTheTruncatedPattern) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> mantissa(1, 2);
  for (int exponent = -126; exponent <= 127; ++exponent) {
    for (int i = 0; i < 50; ++i) {
      double value = std::ldexp(mantissa(random), exponent);
      if (value > static_cast<double>(std::numeric_limits<float>::max())) continue;
      if (i % 2) value = -value;
      ASSERT_EQ(single_to_hex(value), truncated_single(value)) << value;
    }
  }
}

TEST(SingleToHex, PowersOfTwoAreExact) {
  for (int exponent = -126; exponent <= 127; ++exponent) {
    const double value = std::ldexp(1.0, exponent);
    ASSERT_EQ(hex_to_single(single_to_hex(value)), value) << exponent;
    ASSERT_EQ(hex_to_single(single_to_hex(-value)), -value) << exponent;
  }
}

// Denormal numbers and overflow are not treated specially: the exponent simply runs on.
TEST(SingleToHex, SmallAndLargeExponentsRunOn) {
  EXPECT_EQ(single_to_hex(std::ldexp(1.0, -127)), L"00000000");
  EXPECT_EQ(single_to_hex(std::ldexp(1.0, 128)), L"0000807F");
  EXPECT_EQ(single_to_hex(std::ldexp(1.0, 129)), L"00000080");
  EXPECT_EQ(single_to_hex(-std::ldexp(1.0, 129)), L"00000000");
  EXPECT_EQ(single_to_hex(1e300).size(), 8u);
  EXPECT_EQ(single_to_hex(1e-300).size(), 8u);
  EXPECT_EQ(single_to_hex(std::numeric_limits<double>::denorm_min()).size(), 8u);
}

TEST(SingleToHex, NumbersThatAreNotFiniteOverflow) {
  const double infinity = std::numeric_limits<double>::infinity();
  for (double value : {infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(error_of([&] { single_to_hex(value); }), ErrorCode::kOverflow);
  }
}

TEST(HexToSingle, ShortTextsAreNotDecoded) {
  for (const wchar_t* text : {L"", L"3", L"000080", L"0000803", L"xyz"}) {
    EXPECT_EQ(hex_to_single(text), 0.0);
  }
}

TEST(HexToSingle, TheTwoMarksOfNoNumberAreZero) {
  EXPECT_EQ(hex_to_single(L"FFFFFF7F"), 0.0);
  EXPECT_EQ(hex_to_single(L"FFFFFFFF"), 0.0);
  EXPECT_EQ(hex_to_single(L"ffffff7f"), 0.0);
}

TEST(HexToSingle, DecodesTheLowestByteFirst) {
  EXPECT_EQ(hex_to_single(L"00000000"), 0.0);
  EXPECT_EQ(hex_to_single(L"0000803F"), 1.0);
  EXPECT_EQ(hex_to_single(L"000000C0"), -2.0);
  EXPECT_EQ(hex_to_single(L"cdcccc3d"), static_cast<double>(0.1f));
  EXPECT_EQ(hex_to_single(L"CCCCCC3D"), static_cast<double>(std::nextafter(0.1f, 0.0f)));
}

TEST(HexToSingle, CharactersBehindTheEighthDoNotMatter) {
  EXPECT_EQ(hex_to_single(L"0000803FFF"), 1.0);
}

TEST(HexToSingle, ReadsEveryFinitePatternAsTheProcessorDoes) {
  std::mt19937 random(3);
  for (int i = 0; i < 20000; ++i) {
    const auto pattern = static_cast<std::uint32_t>(random());
    const auto single = std::bit_cast<float>(pattern);
    if (!std::isnormal(single)) continue;
    const std::wstring text = printed("%08X", __builtin_bswap32(pattern));
    ASSERT_EQ(hex_to_single(text), static_cast<double>(single));
    ASSERT_EQ(single_to_hex(hex_to_single(text)), text);
  }
}

TEST(HexToSingle, OtherCharactersAreATypeMismatch) {
  EXPECT_EQ(error_of([] { hex_to_single(L"0000803G"); }), ErrorCode::kTypeMismatch);
}

// --- Chunks and padding -----------------------------------------------------------------------

TEST(TakeChunk, CutsTheFirstCharactersOff) {
  std::wstring data = L"abcdef";
  EXPECT_EQ(take_chunk(data, 2), L"ab");
  EXPECT_EQ(data, L"cdef");
}

TEST(TakeChunk, ACountBelowOneTakesNothing) {
  std::wstring data = L"abc";
  EXPECT_EQ(take_chunk(data, 0), L"");
  EXPECT_EQ(take_chunk(data, -5), L"");
  EXPECT_EQ(data, L"abc");
}

TEST(TakeChunk, ACountFromTheLengthOnTakesAll) {
  for (int count : {3, 4, 32767}) {
    std::wstring data = L"abc";
    EXPECT_EQ(take_chunk(data, count), L"abc");
    EXPECT_EQ(data, L"");
  }
  std::wstring empty;
  EXPECT_EQ(take_chunk(empty, 1), L"");
}

TEST(TakeChunk, KeepsZeroCharacters) {
  std::wstring data(L"a\0b\0", 4);
  EXPECT_EQ(take_chunk(data, 2), std::wstring(L"a\0", 2));
  EXPECT_EQ(data, std::wstring(L"b\0", 2));
}

TEST(Padded, FillsAtTheEndOrAtTheStart) {
  EXPECT_EQ(padded(L"ab", 5, L" ", false), L"ab   ");
  EXPECT_EQ(padded(L"ab", 5, L"0", true), L"000ab");
  EXPECT_EQ(padded(L"", 3, L"x", false), L"xxx");
  EXPECT_EQ(padded(L"", 3, L"x", true), L"xxx");
}

TEST(Padded, CutsLongDataAtTheEndOrAtTheStart) {
  EXPECT_EQ(padded(L"abcdef", 3, L" ", false), L"abc");
  EXPECT_EQ(padded(L"abcdef", 3, L" ", true), L"def");
  EXPECT_EQ(padded(L"abc", 0, L" ", false), L"");
  EXPECT_EQ(padded(L"abc", 0, L" ", true), L"");
}

TEST(Padded, DoesNotFillMoreThanATextCanHold) {
  EXPECT_THROW(padded(L"abc", 2'000'000'000, L"x", false), std::bad_alloc);
  EXPECT_EQ(padded(L"abc", 2'000'000'000, L"", false), L"abc");
}

TEST(Padded, LeavesDataOfTheLengthAlone) {
  EXPECT_EQ(padded(L"abc", 3, L"x", false), L"abc");
  EXPECT_EQ(padded(L"abc", 3, L"x", true), L"abc");
}

TEST(Padded, ALongFillerIsRepeatedThenCut) {
  EXPECT_EQ(padded(L"a", 4, L"xy", false), L"axyx");
  EXPECT_EQ(padded(L"a", 4, L"xy", true), L"yxya");
}

TEST(Padded, WithoutAFillerNothingIsFilled) {
  EXPECT_EQ(padded(L"ab", 5, L"", false), L"ab");
  EXPECT_EQ(padded(L"ab", 5, L"", true), L"ab");
}

TEST(Padded, ANegativeLengthIsAnInvalidCall) {
  EXPECT_EQ(error_of([] { padded(L"a", -1, L" ", false); }), ErrorCode::kInvalidCall);
}

// --- Characters -------------------------------------------------------------------------------

TEST(AsciiName, NamesEveryControlCharacter) {
  const wchar_t* const names[] = {L"SOH", L"STX", L"ETX", L"EOT", L"ENQ", L"ACK", L"BEL", L"BS",
                                  L"HT",  L"LF",  L"VT",  L"FF",  L"CR",  L"SO",  L"SI",  L"DLE",
                                  L"DC1", L"DC2", L"DC3", L"DC4", L"NAK", L"SYN", L"ETB", L"CAN",
                                  L"EM",  L"SUB", L"ESC", L"FS",  L"GS",  L"RS",  L"US"};
  static_assert(std::size(names) == 31);
  for (wchar_t code = 1; code <= 31; ++code) {
    EXPECT_EQ(ascii_name({&code, 1}), L"[" + std::wstring(names[code - 1]) + L"]");
  }
  EXPECT_EQ(ascii_name(L"\x7f"), L"[DEL]");
}

TEST(AsciiName, NoCharacterIsNull) { EXPECT_EQ(ascii_name(L""), L"[NULL]"); }

TEST(AsciiName, OtherCharactersStayAsTheyAre) {
  EXPECT_EQ(ascii_name({L"\0", 1}), std::wstring(1, L'\0'));
  for (wchar_t code = 32; code < 300; ++code) {
    if (code == 127) continue;
    EXPECT_EQ(ascii_name({&code, 1}), std::wstring(1, code));
  }
}

TEST(SevenBit, ClearsTheEighthBit) {
  for (wchar_t byte = 0; byte < 256; ++byte) {
    EXPECT_EQ(seven_bit({&byte, 1}, false), std::wstring(1, static_cast<wchar_t>(byte % 128)));
  }
  EXPECT_EQ(seven_bit(L"", true), L"");
}

TEST(SevenBit, NamesControlsAfterTheBitIsCleared) {
  EXPECT_EQ(seven_bit(L"\x02\x41\xC1\x8D\xFF", true), L"[STX]AA[CR][DEL]");
  EXPECT_EQ(seven_bit(L"\x02\x41\xC1\x8D\xFF", false),
            L"\x02"
            L"AA\r\x7f");
  EXPECT_EQ(seven_bit({L"\0\x80", 2}, true), std::wstring(2, L'\0'));
}

// --- Packed records and errors ----------------------------------------------------------------

std::wstring pack(std::initializer_list<int> fields) {
  std::wstring bytes;
  for (int field : fields) bytes += static_cast<wchar_t>(field + 28);
  return bytes;
}
std::wstring text_of_error(int code) { return L"<" + std::to_wstring(code) + L">"; }
std::wstring no_error_text(int) { throw automation_error(ErrorCode::kObjectNotSet); }

TEST(PackToText, TheEmptyPackHasNoText) { EXPECT_EQ(pack_to_text(L"", no_error_text), L""); }

TEST(PackToText, TheEmptyRecordIsADash) {
  EXPECT_EQ(empty_pack(), std::wstring(7, wchar_t{28}));
  EXPECT_EQ(pack_to_text(empty_pack(), no_error_text), L"-");
}

TEST(PackToText, SixFieldsAreATimeStamp) {
  EXPECT_EQ(pack_to_text(pack({1, 2, 3, 4, 5, 6}), no_error_text), L"01\\02\\03 04:05:06 ");
}

TEST(PackToText, EachLengthEndsBehindItsSeparator) {
  EXPECT_EQ(pack_to_text(pack({1}), no_error_text), L"01\\");
  EXPECT_EQ(pack_to_text(pack({1, 2}), no_error_text), L"01\\02\\");
  EXPECT_EQ(pack_to_text(pack({1, 2, 3}), no_error_text), L"01\\02\\03 ");
  EXPECT_EQ(pack_to_text(pack({1, 2, 3, 4}), no_error_text), L"01\\02\\03 04:");
  EXPECT_EQ(pack_to_text(pack({1, 2, 3, 4, 5}), no_error_text), L"01\\02\\03 04:05:");
}

TEST(PackToText, ErrorsFollowWithoutSeparator) {
  EXPECT_EQ(pack_to_text(pack({1, 2, 3, 4, 5, 6, 0, 9}), text_of_error),
            L"01\\02\\03 04:05:06 01, <1>10, <10>");
}

TEST(PackToText, FieldsAreCutToTwoDigits) {
  EXPECT_EQ(pack_to_text(pack({99, 100, 227}), no_error_text), L"99\\00\\27 ");
  EXPECT_EQ(pack_to_text(pack({0, 0, 0, 0, 0, 0, 227}), text_of_error),
            L"00\\00\\00 00:00:00 28, <228>");
}

TEST(PackToText, CodesBelowTheBaseAreZero) {
  EXPECT_EQ(pack_to_text(std::wstring(L"\0\x01\x1b", 3), no_error_text), L"00\\00\\00 ");
  EXPECT_EQ(pack_to_text(std::wstring(7, L'\0'), text_of_error), L"00\\00\\00 00:00:00 01, <1>");
}

TEST(PackToText, OnlySevenCharactersAreTheEmptyRecord) {
  EXPECT_EQ(pack_to_text(std::wstring(6, wchar_t{28}), no_error_text), L"00\\00\\00 00:00:00 ");
  EXPECT_EQ(pack_to_text(std::wstring(8, wchar_t{28}), text_of_error),
            L"00\\00\\00 00:00:00 01, <1>01, <1>");
}

TEST(PackToText, AMissingErrorTextReachesTheCaller) {
  EXPECT_EQ(error_of([] {
              pack_to_text(pack({0, 0, 0, 0, 0, 0, 5}), no_error_text);
            }),
            ErrorCode::kObjectNotSet);
}

TEST(ErrorCodeOfByte, SingleBitsCountFromOne) {
  for (int bit = 1; bit <= 8; ++bit) {
    EXPECT_EQ(error_code(static_cast<std::int16_t>(1 << (bit - 1)), 2), bit);
    EXPECT_EQ(error_code(static_cast<std::int16_t>(1 << (bit - 1)), 3), 8 + bit);
  }
}

TEST(ErrorCodeOfByte, SeveralBitsGiveTheRoundedLogarithm) {
  EXPECT_EQ(error_code(3, 2), 3);    // 2.58
  EXPECT_EQ(error_code(5, 2), 3);    // 3.32
  EXPECT_EQ(error_code(6, 2), 4);    // 3.58
  EXPECT_EQ(error_code(255, 2), 9);  // 8.99
  EXPECT_EQ(error_code(32767, 2), 16);
}

TEST(ErrorCodeOfByte, NothingBelowOneIsAnError) {
  for (int byte : {0, -1, -32768}) {
    EXPECT_EQ(error_code(static_cast<std::int16_t>(byte), 5), 0);
  }
}

TEST(ErrorCodeOfByte, VariablesBeforeTheSecondGiveNegativeCodes) {
  EXPECT_EQ(error_code(1, 1), -7);
  EXPECT_EQ(error_code(128, 1), 0);
  EXPECT_EQ(error_code(1, 0), -15);
}

TEST(ErrorCodeOfByte, ACodeBeyondSixteenBitsIsLost) {
  EXPECT_EQ(error_code(1, 4097), 32761);
  EXPECT_EQ(error_code(128, 4098), 0);
  EXPECT_EQ(error_code(1, 32767), 0);
  EXPECT_EQ(error_code(1, -32768), 0);
}

}  // namespace
}  // namespace pv
