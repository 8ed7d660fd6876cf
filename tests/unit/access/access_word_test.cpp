// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Access words: what their bits mean, and how rules become a word.

#include "core/access/access_word.h"

#include <gtest/gtest.h>

#include "core/errors/automation_error.h"

namespace pv {
namespace {

TEST(AccessWord, EveryWordIsReadBitByBit) {
  for (int number = -32768; number <= 32767; ++number) {
    const auto word = static_cast<std::int16_t>(number);
    const auto bits = static_cast<std::uint16_t>(word);
    const AccessRules rules = access_rules(word);
    ASSERT_EQ(rules.write_level, bits % 8) << word;
    ASSERT_EQ(rules.read_level, bits / 8 % 8) << word;
    ASSERT_EQ(rules.updates_password, bits / 64 % 2 == 1) << word;
    ASSERT_EQ(rules.is_masked, bits / 128 % 2 == 1) << word;
  }
}

TEST(AccessWord, EveryWordOfOneByteSurvivesTheRoundTrip) {
  for (std::int16_t word = 0; word < 256; ++word) {
    ASSERT_EQ(access_word(access_rules(word)), word);
  }
}

TEST(AccessWord, BitsAboveTheFlagsAreNotInterpreted) {
  const AccessRules rules = access_rules(0x5500);
  EXPECT_EQ(rules.read_level, 0);
  EXPECT_EQ(rules.write_level, 0);
  EXPECT_FALSE(rules.updates_password);
  EXPECT_FALSE(rules.is_masked);
}

TEST(AccessWord, LevelsAndFlagsOfKnownWords) {
  EXPECT_EQ(access_rules(19).read_level, 2);
  EXPECT_EQ(access_rules(19).write_level, 3);
  EXPECT_TRUE(access_rules(192).updates_password);
  EXPECT_TRUE(access_rules(192).is_masked);
  EXPECT_EQ(access_rules(7).write_level, kClosedLevel);
  EXPECT_EQ(access_rules(56).read_level, kClosedLevel);
}

TEST(AccessWord, ComposesReadLevelTimesEight) {
  EXPECT_EQ(access_word({.read_level = 2, .write_level = 3}), 19);
  EXPECT_EQ(access_word({.updates_password = true}), 64);
  EXPECT_EQ(access_word({.is_masked = true}), 128);
  EXPECT_EQ(
      access_word({.read_level = 4, .write_level = 4, .updates_password = true, .is_masked = true}),
      32 + 4 + 64 + 128);
}

TEST(AccessWord, AMissingChoiceCountsAsItStands) {
  EXPECT_EQ(access_word({.read_level = -1}), -8);
  EXPECT_EQ(access_word({.write_level = -1}), -1);
  EXPECT_EQ(access_word({.read_level = -1, .write_level = -1}), -9);
}

TEST(AccessWord, RulesBeyondSixteenBitsOverflow) {
  EXPECT_EQ(access_word({.read_level = 4095, .write_level = 7}), 32767);
  try {
    access_word({.read_level = 4096});
    FAIL() << "no error";
  } catch (const automation_error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kOverflow);
  }
}

}  // namespace
}  // namespace pv
