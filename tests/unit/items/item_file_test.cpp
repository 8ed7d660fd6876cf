// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/item_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "tests/unit/items/plain_boolean.h"

namespace pv {
namespace {

const TextCodec& kCodec = latin1_codec();
const FileStamp kStamp{L"1.02.03", L"a build"};

std::optional<std::vector<LoadedItem>> parsed(std::string_view bytes) {
  return parse_item_file(bytes, kCodec, plain_boolean);
}

std::vector<LoadedItem> some_items() {
  return {{{L"7", 7, true, 513, true, false, 0.5F, 4},
           {{L"1", L"Flow", L"Flow rate", 0, 11, 2, 3, L"0", 4, L"FLOW"},
            {L"2", L"Status", L"", 1, 17, 1, 0, L"12", 3, L""}}},
          {{L"8", 8, false, 0, false, true, 0.25F, 16}, {}},
          {{L"A9", 9, false, -1, false, false, 0, 1},
           {{L"1", L"H\xF6he", L"", 0, 1, 1, 2, L"0", 1, L""}}}};
}

TEST(ItemFile, IsWrittenInItsExactForm) {
  EXPECT_EQ(format_item_file(some_items(), kStamp, kCodec, L','),
            "[Items]\r\n"
            "Count=3\r\n"
            "Version=1.02.03\r\n"
            "Date=a build\r\n"
            "\r\n"
            "[ITEM1]\r\n"
            "Count=2\r\n"
            "Settings=7|7|-1|513|-1|0|0,5|4|\r\n"
            "VAR1=1|Flow|Flow rate|0|11|2|3||0|4|FLOW|\r\n"
            "VAR2=2|Status||1|17|1|0||12|3||\r\n"
            "\r\n"
            "[ITEM2]\r\n"
            "Count=0\r\n"
            "Settings=8|8|0|0|0|-1|0,25|16|\r\n"
            "\r\n"
            "[ITEM3]\r\n"
            "Count=1\r\n"
            "Settings=A9|9|0|-1|0|0|0|1|\r\n"
            "VAR1=1|H\xF6he||0|1|1|2||0|1||\r\n");
}

TEST(ItemFile, OfNoItemsHoldsItsHeadOnly) {
  const std::string bytes = format_item_file({}, kStamp, kCodec, L'.');
  EXPECT_EQ(bytes, "[Items]\r\nCount=0\r\nVersion=1.02.03\r\nDate=a build\r\n");
  EXPECT_FALSE(parsed(bytes));
}

TEST(ItemFile, ComesBackAsWritten) {
  for (const wchar_t decimal : {L'.', L','}) {
    const std::string bytes = format_item_file(some_items(), kStamp, kCodec, decimal);
    const auto items = parsed(bytes);
    ASSERT_TRUE(items);
    ASSERT_EQ(items->size(), 3U);
    EXPECT_EQ((*items)[0].variables.size(), 2U);
    EXPECT_EQ((*items)[2].variables[0].caption, L"H\xF6he");
    EXPECT_EQ(format_item_file(*items, kStamp, kCodec, decimal), bytes);
  }
}

TEST(ItemFile, WithoutItemsIsNoItemFile) {
  for (const char* bytes :
       {"", "[Items]\n", "[Items]\nCount=0\n", "[Items]\nCount=-3\n", "[Items]\nCount=x\n",
        "[Items]\nCount=32768\n", "Count=3\n", "Count=3\n[Items]\n", "[items]\nCount=1\n"}) {
    EXPECT_FALSE(parsed(bytes)) << bytes;
  }
}

TEST(ItemFile, GivesDefaultsForMissingLines) {
  const auto items = parsed("[Items]\nCount=1\n");
  ASSERT_TRUE(items);
  ASSERT_EQ(items->size(), 1U);
  EXPECT_EQ(format_item_record((*items)[0].item, L'.'), L"59|59|-1|0|0|-1|0|0|");
  ASSERT_EQ((*items)[0].variables.size(), 1U);
  EXPECT_EQ(format_variable_record((*items)[0].variables[0]), L"1|||0|3|6|2||0|0||");
}

TEST(ItemFile, LooksForNoSectionOfAnItem) {
  const auto items = parsed("[Items]\nCount=2\nCount=0\nSettings=5|5\n[X]\nCount=0\nSettings=6|6");
  ASSERT_TRUE(items);
  ASSERT_EQ(items->size(), 2U);
  EXPECT_EQ((*items)[0].item.key, L"5");
  EXPECT_EQ((*items)[1].item.key, L"6");
}

TEST(ItemFile, TakesAMissingLineFromTheNextItemThatHasIt) {
  const auto items = parsed(
      "[Items]\nCount=2\n"
      "[ITEM1]\nCount=1\nVAR1=1|lost\n"
      "[ITEM2]\nCount=0\nSettings=6|6\nVAR1=1|taken\n");
  ASSERT_TRUE(items);
  ASSERT_EQ(items->size(), 2U);
  EXPECT_EQ((*items)[0].item.key, L"6");
  ASSERT_EQ((*items)[0].variables.size(), 1U);
  EXPECT_EQ((*items)[0].variables[0].caption, L"taken");
  EXPECT_EQ((*items)[1].item.key, L"59");
}

TEST(ItemFile, RepeatsTheDefaultVariableForEveryMissingOne) {
  const auto items = parsed("[Items]\nCount=1\nCount=3\nSettings=5|5\nVAR1=1|a|\n");
  ASSERT_TRUE(items);
  const auto& variables = (*items)[0].variables;
  ASSERT_EQ(variables.size(), 3U);
  EXPECT_EQ(variables[0].caption, L"a");
  EXPECT_EQ(variables[1].key, L"1");
  EXPECT_EQ(variables[1].unit_id, 6);
  EXPECT_EQ(variables[2].key, L"1");
}

TEST(ItemFile, TakesMissingFieldsOfAVariableAsEmptyText) {
  const auto items = parsed("[Items]\nCount=1\nCount=1\nSettings=5\nVAR1=k|c\n");
  ASSERT_TRUE(items);
  EXPECT_EQ(format_variable_record((*items)[0].variables[0]), L"k|c||0|0|0|0|||0||");
}

TEST(ItemFile, TakesNegativeVariableCountsAsNone) {
  const auto items = parsed("[Items]\nCount=1\nCount=-5\nSettings=5\n");
  ASSERT_TRUE(items);
  EXPECT_TRUE((*items)[0].variables.empty());
}

TEST(ItemFile, KeepsRepeatedKeysForTheCollectionsToJudge) {
  const auto items = parsed("[Items]\nCount=2\nCount=0\nSettings=5|1\nCount=0\nSettings=5|2\n");
  ASSERT_TRUE(items);
  ASSERT_EQ(items->size(), 2U);
  EXPECT_EQ((*items)[1].item.item_id, 2);
}

TEST(ItemFileReader, PassesOverVariablesThatAreNotRead) {
  const std::string bytes = format_item_file(some_items(), kStamp, kCodec, L',');
  ItemFileReader file(bytes, kCodec, plain_boolean);
  ItemRecord item;
  VariableRecordView variable;
  EXPECT_FALSE(file.next_variable(variable));
  ASSERT_TRUE(file.next(item));
  EXPECT_EQ(file.variables_left(), 2);
  ASSERT_TRUE(file.next_variable(variable));
  EXPECT_EQ(variable.caption, L"Flow");
  EXPECT_EQ(file.variables_left(), 1);
  ASSERT_TRUE(file.next(item));
  EXPECT_EQ(item.key, L"8");
  EXPECT_EQ(file.variables_left(), 0);
  EXPECT_FALSE(file.next_variable(variable));
  ASSERT_TRUE(file.next(item));
  ASSERT_TRUE(file.next_variable(variable));
  EXPECT_EQ(variable.caption, L"H\xF6he");
  EXPECT_FALSE(file.next_variable(variable));
  EXPECT_FALSE(file.next(item));
}

// An item whose variable lines are missing reads on into the next one, read or not.
TEST(ItemFileReader, PassesOverAsFarAsReadingWouldHaveCome) {
  const std::string bytes =
      "[Items]\nCount=2\nCount=2\nSettings=5\nVAR1=1|a\n"
      "Count=0\nSettings=6\nVAR2=2|b\n";
  ItemFileReader file(bytes, kCodec, plain_boolean);
  ItemRecord item;
  ASSERT_TRUE(file.next(item));
  EXPECT_EQ(item.key, L"5");
  ASSERT_TRUE(file.next(item));
  EXPECT_EQ(item.key, L"59");
}

TEST(ItemFile, ReadsLineFeedsAndAMissingLastLineEnd) {
  std::string bytes = format_item_file(some_items(), kStamp, kCodec, L'.');
  const std::string whole = bytes;
  bytes.erase(std::remove(bytes.begin(), bytes.end(), '\r'), bytes.end());
  bytes.pop_back();
  const auto items = parsed(bytes);
  ASSERT_TRUE(items);
  EXPECT_EQ(format_item_file(*items, kStamp, kCodec, L'.'), whole);
}

std::size_t variable_count(const std::vector<LoadedItem>& items) {
  std::size_t count = 0;
  for (const LoadedItem& item : items) count += item.variables.size();
  return count;
}

TEST(ItemFile, CannotBeMadeToFillMemoryByCountsAlone) {
  std::string bytes = "[Items]\nCount=32767\n";
  for (int i = 0; i < 32767; ++i) bytes += "Count=32767\n";
  const auto items = parsed(bytes);
  ASSERT_TRUE(items);
  EXPECT_EQ(items->size(), 32767U);
  EXPECT_EQ((*items)[0].variables.size(), 32767U);
  EXPECT_EQ(variable_count(*items), 32767U + 32766U);
}

TEST(ItemFile, CannotBeMadeToFillMemoryByItemsWithoutVariableLines) {
  std::string bytes = "[Items]\nCount=32767\n";
  for (int i = 0; i < 32767; ++i) bytes += "Count=32767\nSettings=\nVAR1=\n";
  const auto items = parsed(bytes);
  ASSERT_TRUE(items);
  EXPECT_EQ(items->size(), 32767U);
  EXPECT_EQ(variable_count(*items), 32767U + 32766U);
}

TEST(ItemFile, SurvivesRandomBytes) {
  std::mt19937 random(4);
  static const std::vector<std::string> kPieces = {
      "[Items]\n", "Count=2\n", "Count=3\n",   "Settings=5|5|True|1|0|-1|0.5|3\n",
      "VAR1=",     "VAR2=1|a",  "\n",          "|",
      "[ITEM1]\n", "=",         "Count=99999", std::string(1, '\0'),
      "\xFF",      "\r"};
  int read = 0;
  for (int round = 0; round < 2000; ++round) {
    std::string bytes = "[Items]\n";
    const int count = std::uniform_int_distribution<int>(0, 30)(random);
    for (int i = 0; i < count; ++i) {
      bytes += kPieces[std::uniform_int_distribution<std::size_t>(0, kPieces.size() - 1)(random)];
    }
    const auto items = parsed(bytes);
    if (!items) continue;
    ++read;
    ASSERT_LE(items->size(), 3U) << bytes;
    // No text of a record can hold a separator or a line end, so what was read is stable.
    const std::string written = format_item_file(*items, kStamp, kCodec, L'.');
    const auto again = parsed(written);
    ASSERT_TRUE(again);
    ASSERT_EQ(format_item_file(*again, kStamp, kCodec, L'.'), written) << bytes;
  }
  EXPECT_GT(read, 500);
}

}  // namespace
}  // namespace pv
