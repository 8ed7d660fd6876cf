// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The formatted name of a transmitter, in every combination of its parts.

#include "core/txm/txm_name.h"

#include <gtest/gtest.h>

namespace pv {
namespace {

const TxmName kThird{3, L"Boiler", L"Fluxor"};

TEST(TxmName, EveryCombinationOfParts) {
  EXPECT_EQ(formatted_name(kThird, 0), L"");
  EXPECT_EQ(formatted_name(kThird, 1), L"TXM#3");
  EXPECT_EQ(formatted_name(kThird, 2), L"Boiler");
  EXPECT_EQ(formatted_name(kThird, 3), L"TXM#3:Boiler");
  EXPECT_EQ(formatted_name(kThird, 4), L"Fluxor");
  EXPECT_EQ(formatted_name(kThird, 5), L"TXM#3 (Fluxor)");
  EXPECT_EQ(formatted_name(kThird, 6), L"Boiler (Fluxor)");
  EXPECT_EQ(formatted_name(kThird, 7), L"TXM#3:Boiler (Fluxor)");
}

TEST(TxmName, BitsBeyondTheThreePartsMeanNothing) {
  EXPECT_EQ(formatted_name(kThird, 8), L"");
  EXPECT_EQ(formatted_name(kThird, 8 + 2), L"Boiler");
  EXPECT_EQ(formatted_name(kThird, -1), L"TXM#3:Boiler (Fluxor)");
}

TEST(TxmName, AnEmptyTitleLeavesItsSeparator) {
  EXPECT_EQ(formatted_name({1, L"", L"Fluxor"}, 7), L"TXM#1: (Fluxor)");
  EXPECT_EQ(formatted_name({1, L"", L"Fluxor"}, 6), L"Fluxor");
  EXPECT_EQ(formatted_name({1, L"", L""}, 7), L"TXM#1: ()");
  EXPECT_EQ(formatted_name({1, L"", L""}, 6), L"");
}

TEST(TxmName, TheIndexIsWrittenWithItsSign) {
  EXPECT_EQ(formatted_name({-32768, L"", L""}, 1), L"TXM#-32768");
  EXPECT_EQ(formatted_name({32767, L"", L""}, 1), L"TXM#32767");
}

TEST(TxmName, KeepsTextsAsTheyAre) {
  const std::wstring title(L"a\0b", 3);
  EXPECT_EQ(formatted_name({1, title, L"(x)"}, 6), title + L" ((x))");
}

}  // namespace
}  // namespace pv
