// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "examples/simulator/telegram.h"

#include <gtest/gtest.h>

#include "examples/simulator/hex_text.h"

namespace fluxor {
namespace {

TEST(SimulatorHex, KeepsTheLowDigitsOfANumber) {
  EXPECT_EQ(int_to_hex(10, 2), "0A");
  EXPECT_EQ(int_to_hex(300, 2), "2C");
  EXPECT_EQ(int_to_hex(0xFFFFFFFF, 4), "FFFF");
}

TEST(SimulatorHex, ReadsNothingButHexadecimalDigits) {
  EXPECT_EQ(hex_to_int("00fF"), 255u);
  EXPECT_EQ(hex_to_int("FFFFFFFF"), 0xFFFFFFFFu);
  for (const char* text : {"", "G1", "-1", "+1", " 1", "1 ", "0x1", "123456789"}) {
    EXPECT_EQ(hex_to_int(text), std::nullopt) << text;
  }
}

TEST(SimulatorHex, WritesARealNumberWithItsLowestByteFirst) {
  EXPECT_EQ(float_to_hex(1.0F), "0000803F");
  EXPECT_EQ(float_to_hex(-2.0F), "000000C0");
  EXPECT_EQ(float_to_hex(0.0F), "00000000");
}

TEST(SimulatorHex, ReadsBackEveryRealNumberItWrote) {
  for (const float number : {0.0F, 1.0F, -2.0F, 3.5F, 1e-30F, -1e30F, 18309733.0F}) {
    EXPECT_EQ(hex_to_float(float_to_hex(number)), number);
  }
  EXPECT_EQ(hex_to_float("0000803"), std::nullopt);
  EXPECT_EQ(hex_to_float("0000803G"), std::nullopt);
}

TEST(SimulatorTelegram, ChecksumNoticesChangedAndSwappedCharacters) {
  const std::string right = checksum("01R0001");
  EXPECT_EQ(right, "05AF");
  EXPECT_NE(checksum("01R0002"), right);
  EXPECT_NE(checksum("10R0001"), right);
}

TEST(SimulatorTelegram, AnswerIsFramed) {
  const Answer answer{1, 'r', AnswerError::kNone, 0x8C, "0A"};
  const std::string body = "01r00008C0A";
  EXPECT_EQ(to_text(answer), "\x02" + body + checksum(body) + "\x03");
}

TEST(SimulatorTelegram, CommandIsTakenApart) {
  const std::string body = "63W008C1111    ";
  const auto command = parse_command(body + checksum(body));
  ASSERT_TRUE(command);
  EXPECT_EQ(command->address, 99);
  EXPECT_EQ(command->letter, 'W');
  EXPECT_EQ(command->item, 140);
  EXPECT_EQ(command->data, "1111    ");
  EXPECT_TRUE(command->checksum_is_right);
}

TEST(SimulatorTelegram, DamagedCommandIsKnownByItsChecksum) {
  const auto command = parse_command("01R0001" + checksum("01R0002"));
  ASSERT_TRUE(command);
  EXPECT_FALSE(command->checksum_is_right);
}

TEST(SimulatorTelegram, TooShortOrWithoutNumbersIsNoCommand) {
  for (const char* content : {"", "01R0001", "01R00010BD", "xxR00010BD5", "01Rxxxx0BD5"}) {
    EXPECT_FALSE(parse_command(content)) << content;
  }
}

std::vector<std::string> contents_of(std::string_view received) {
  TelegramReader reader;
  std::vector<std::string> contents;
  for (const char character : received) {
    if (const auto content = reader.take(character)) contents.push_back(*content);
  }
  return contents;
}

using Contents = std::vector<std::string>;

TEST(SimulatorTelegramReader, FindsTelegramsBetweenGarbage) {
  EXPECT_EQ(contents_of("xx\x02one\x03\x03yy\x02two\x03"), (Contents{"one", "two"}));
}

TEST(SimulatorTelegramReader, BeginsAnewWhereATelegramBrokeOff) {
  EXPECT_EQ(contents_of("\x02half\x02whole\x03"), Contents{"whole"});
}

TEST(SimulatorTelegramReader, GivesUpEndlessTelegrams) {
  const std::string endless(TelegramReader::kLongest + 1, 'x');
  EXPECT_EQ(contents_of("\x02" + endless + "\x03\x02good\x03"), Contents{"good"});
}

}  // namespace
}  // namespace fluxor
