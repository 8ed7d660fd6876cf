// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/list/key_case.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/list/latin_case.h"

namespace pv {
namespace {

const KeyCase& keys = test::latin_case();

TEST(KeyCase, LowersAsciiLetters) {
  EXPECT_EQ(keys.fold(L"AbcXYZ-09_[]@`{}"), L"abcxyz-09_[]@`{}");
  EXPECT_EQ(keys.fold(L""), L"");
}

TEST(KeyCase, KeepsEmbeddedNulAndWhatFollows) {
  using namespace std::string_literals;
  EXPECT_EQ(keys.fold(L"A\0B"s), L"a\0b"s);
  EXPECT_NE(keys.fold(L"A\0B"s), keys.fold(L"A\0C"s));
}

TEST(KeyCase, HashIsTheSameWhateverTheCase) {
  using namespace std::string_literals;
  EXPECT_EQ(keys.hash(L"FlowRate"), keys.hash(L"fLOWrATE"));
  EXPECT_EQ(keys.hash(L"\u20acA"), keys.hash(L"\u20aca"));
  EXPECT_EQ(keys.hash(L"A\0B"s), keys.hash(L"a\0b"s));
  EXPECT_NE(keys.hash(L"A\0B"s), keys.hash(L"A\0C"s));
}

TEST(KeyCase, ComparesAKeyWithAFoldedOne) {
  using namespace std::string_literals;
  EXPECT_TRUE(keys.folds_to(L"FlowRate", L"flowrate"));
  EXPECT_TRUE(keys.folds_to(L"A \u20ac", L"a \u20ac"));
  EXPECT_TRUE(keys.folds_to(L"", L""));
  EXPECT_FALSE(keys.folds_to(L"flowrate", L"flowrates"));
  EXPECT_FALSE(keys.folds_to(L"flowrates", L"flowrate"));
  EXPECT_FALSE(keys.folds_to(L"[", L"{"));
  EXPECT_FALSE(keys.folds_to(L"A \u20ac", L"b \u20ac"));
  EXPECT_FALSE(keys.folds_to(L"\u20ac", L""));
  EXPECT_FALSE(keys.folds_to(L"A\0B"s, L"a\0c"s));
}

TEST(KeyCase, LowersLettersBeyondAsciiByTheMappingThatItIsGiven) {
  EXPECT_EQ(keys.fold(L"\u00c9RT\u00c9K"), L"\u00e9rt\u00e9k");
  EXPECT_EQ(keys.hash(L"\u00c9RT\u00c9K"), keys.hash(L"\u00e9rt\u00e9k"));
  EXPECT_TRUE(keys.folds_to(L"\u00c9rt\u00c9k", L"\u00e9rt\u00e9k"));
  EXPECT_TRUE(keys.same(L"\u00c9RT\u00c9K", L"\u00e9rt\u00e9k"));
  EXPECT_FALSE(keys.same(L"\u00c9RTEK", L"\u00e9rt\u00e9k"));
}

TEST(KeyCase, LeavesTextWithoutCaseAlone) {
  EXPECT_EQ(keys.fold(L"12.5 %\u20ac"), L"12.5 %\u20ac");
}

}  // namespace
}  // namespace pv
