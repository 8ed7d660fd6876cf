// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The text form of symbols.

#include "core/symbols/symbol_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace pv {
namespace {

constexpr std::size_t kPixels = 1024;

Symbol random_symbol(std::mt19937& random, unsigned longest_run) {
  Symbol symbol;
  std::size_t next = 0;
  while (next < kPixels) {
    const auto colour = static_cast<std::uint8_t>(random() % Symbol::kColours);
    for (auto left = random() % longest_run + 1; left > 0 && next < kPixels; --left)
      symbol.pixels[next++] = colour;
  }
  return symbol;
}

TEST(SymbolText, AnEmptySymbolIsOneRun) {
  EXPECT_EQ(format_symbol(Symbol()), L"S1:P1024");
  EXPECT_EQ(parse_symbol(L"S1:P1024"), Symbol());
}

TEST(SymbolText, AColourIsToldByItsParts) {
  EXPECT_EQ(colour_code(0), L"#000000");
  EXPECT_EQ(colour_code(3), L"#008080");
  EXPECT_EQ(colour_code(7), L"#C0C0C0");
  EXPECT_EQ(colour_code(12), L"#FF0000");
  EXPECT_EQ(colour_code(15), L"#FFFFFF");
}

TEST(SymbolText, RunsGoThroughTheRowsFromTheTopLeft) {
  Symbol symbol;
  symbol.at(0, 0) = 0;
  symbol.at(31, 0) = 12;
  symbol.at(0, 1) = 12;
  symbol.at(31, 31) = 1;
  EXPECT_EQ(format_symbol(symbol), L"S1:AP30M2P990B");
  EXPECT_EQ(parse_symbol(L"S1:AP30M2P990B"), symbol);
}

TEST(SymbolText, EverySymbolComesBack) {
  std::mt19937 random(1);
  for (int i = 0; i < 2000; ++i) {
    const Symbol symbol = random_symbol(random, 1u << (random() % 11));
    const std::wstring text = format_symbol(symbol);
    ASSERT_EQ(parse_symbol(text), symbol);
    ASSERT_LE(text.size(), 3 + kPixels);
    for (const wchar_t c : text) {
      ASSERT_TRUE(c > L' ' && c < 0x7F && c != L'|') << static_cast<int>(c);
    }
  }
}

TEST(SymbolText, SmallLettersCountAsCapitals) {
  EXPECT_EQ(parse_symbol(L"s1:ap1023"), parse_symbol(L"S1:AP1023"));
  EXPECT_TRUE(parse_symbol(L"s1:ap1023"));
}

TEST(SymbolText, RunsMayBeSplitAndZerosMayLead) {
  EXPECT_EQ(parse_symbol(L"S1:P1000P0024"), Symbol());
  EXPECT_EQ(parse_symbol(L"S1:P1P1P1022"), Symbol());
}

TEST(SymbolText, OtherTextsAreNoSymbol) {
  for (const wchar_t* text : {L"",
                              L"S",
                              L"S1",
                              L"S1:",
                              L"S2:P1024",
                              L"P1024",
                              L"FLOW",
                              L"S1:P1023",
                              L"S1:P1025",
                              L"S1:P1024A",
                              L"S1:P1024A0",
                              L"S1:P0P1024",
                              L"S1:Q1024",
                              L"S1:@1024",
                              L"S1:1024",
                              L"S1:P1024 ",
                              L" S1:P1024",
                              L"S1:P 1024",
                              L"S1:P-1024",
                              L"S1:P99999999999999999999",
                              L"S1:P18446744073709552640",
                              L"S1:P1024|",
                              L"S1:P10\r\n24",
                              L"S1:\u0130A1023",
                              L"S1:P\uFF11024"}) {
    EXPECT_FALSE(parse_symbol(text)) << testing::PrintToString(std::wstring(text));
  }
  EXPECT_FALSE(parse_symbol(std::wstring_view(L"S1:P1024\0", 9)));
}

TEST(SymbolText, RandomTextsAreReadOrRefusedButNeverHarm) {
  const std::wstring letters = L"S1:ABPQ0123456789|\r\n abp";
  std::mt19937 random(2);
  for (int i = 0; i < 100000; ++i) {
    std::wstring text = i % 2 ? L"S1:" : L"";
    for (auto left = random() % 40; left > 0; --left)
      text += i % 3 ? letters[random() % letters.size()] : static_cast<wchar_t>(random() & 0xFFFF);
    const auto symbol = parse_symbol(text);
    if (symbol) {
      ASSERT_EQ(parse_symbol(format_symbol(*symbol)), symbol);
    }
  }
}

TEST(SymbolText, ThePaletteHasSixteenDifferentColoursFromBlackToWhite) {
  std::vector<int> colours;
  for (std::uint8_t i = 0; i < Symbol::kColours; ++i) {
    const Rgb colour = symbol_colour(i);
    colours.push_back(colour.red * 65536 + colour.green * 256 + colour.blue);
  }
  EXPECT_EQ(colours.front(), 0);
  EXPECT_EQ(colours[Symbol::kEmpty], 0xFFFFFF);
  std::sort(colours.begin(), colours.end());
  EXPECT_EQ(std::unique(colours.begin(), colours.end()), colours.end());
}

}  // namespace
}  // namespace pv
