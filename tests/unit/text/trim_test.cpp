// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/trim.h"

#include <gtest/gtest.h>

namespace pv {
namespace {

TEST(Trimmed, KeepsLeadingBlanksAndDropsTheOthers) {
  EXPECT_EQ(trim(L"  a b c "), L"  abc");
  EXPECT_EQ(trim(L"a  b"), L"ab");
  EXPECT_EQ(trim(L"abc   "), L"abc");
  EXPECT_EQ(trim(L" x"), L" x");
}

TEST(Trimmed, KeepsATextOfBlanks) {
  EXPECT_EQ(trim(L""), L"");
  EXPECT_EQ(trim(L"   "), L"   ");
}

TEST(Trimmed, KnowsNoOtherBlankThanTheSpace) {
  EXPECT_EQ(trim(L"\ta\t b\n c\x00A0"), L"\ta\tb\nc\x00A0");
  EXPECT_EQ(trim(L"\t a"), L"\ta");
}

}  // namespace
}  // namespace pv
