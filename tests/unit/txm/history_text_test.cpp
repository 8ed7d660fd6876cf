// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The lines of the audit file.

#include "core/txm/history_text.h"

#include <gtest/gtest.h>

namespace pv {
namespace {

using Texts = std::vector<std::wstring>;

HistoryEntry entry_of(std::vector<HistoryVariable> variables) {
  return {L"D",  L"T", L"Signed", L"Fluxor", L"1", L"TXM#1:A (Fluxor)", L"7", std::move(variables),
          L"why"};
}

TEST(HistoryText, NumbersHaveThePeriod) {
  for (const wchar_t* number : {L"", L"7", L"2.5", L"1E+20"}) {
    EXPECT_EQ(history_value(number), number);
  }
  EXPECT_EQ(history_value(L"2,5"), L"2.5");
  EXPECT_EQ(history_value(L"-0,25"), L"-0.25");
  EXPECT_EQ(history_value(L"1,5E-05"), L"1.5E-05");
}

TEST(HistoryText, OtherTextIsLeftAsItIs) {
  for (const wchar_t* text : {L"on, slow", L"2,5 m", L"1,2,3", L","}) {
    EXPECT_EQ(history_value(text), text);
  }
}

TEST(HistoryText, JoinsFieldsWithoutQuoting) {
  EXPECT_EQ(history_line({}), L"");
  EXPECT_EQ(history_line({L"one"}), L"one");
  EXPECT_EQ(history_line({L"", L""}), L",");
  EXPECT_EQ(history_line({L"a,b", L"\"c\"", L""}), L"a,b,\"c\",");
}

TEST(HistoryText, OneVariableMakesOneLineWithValueAndUnit) {
  EXPECT_EQ(history_lines(entry_of({{L"Flow", L"1.5", L"m3/h"}})),
            (Texts{L"D,T,Signed,Fluxor,1,TXM#1:A (Fluxor),7,Flow,1.5,m3/h,why"}));
}

TEST(HistoryText, SeveralVariablesLeaveTheFirstValueOut) {
  EXPECT_EQ(history_lines(entry_of({{L"Flow", L"1.5", L"m3/h"}, {L"Two", L"2", L"s"}})),
            (Texts{L"D,T,Signed,Fluxor,1,TXM#1:A (Fluxor),7,Flow,,,why", L",,,,,,,Two,2,s"}));
}

TEST(HistoryText, ThreeVariablesMakeTwoExtraLines) {
  EXPECT_EQ(
      history_lines(entry_of({{L"A", L"1", L"a"}, {L"B", L"2", L"b"}, {L"C", L"3", L"c"}})),
      (Texts{L"D,T,Signed,Fluxor,1,TXM#1:A (Fluxor),7,A,,,why", L",,,,,,,B,2,b", L",,,,,,,C,3,c"}));
}

TEST(HistoryText, AnItemWithoutVariablesKeepsItsColumns) {
  EXPECT_EQ(history_lines(entry_of({})), (Texts{L"D,T,Signed,Fluxor,1,TXM#1:A (Fluxor),7,,,,why"}));
}

}  // namespace
}  // namespace pv
