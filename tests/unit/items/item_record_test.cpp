// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/item_record.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/unit/items/plain_boolean.h"

namespace pv {
namespace {

TEST(ItemRecord, ReadsEightFieldsInOrder) {
  const ItemRecord item = parse_item_record(L"A7|17|-1|1234|0|-1|0,5|4|", plain_boolean);
  EXPECT_EQ(item.key, L"A7");
  EXPECT_EQ(item.item_id, 17);
  EXPECT_TRUE(item.by_meaning);
  EXPECT_EQ(item.access, 1234);
  EXPECT_FALSE(item.historian);
  EXPECT_TRUE(item.restore);
  EXPECT_EQ(item.smart_wait, 0.5F);
  EXPECT_EQ(item.length, 4);
}

TEST(ItemRecord, TakesMissingFieldsAsEmptyText) {
  const ItemRecord item = parse_item_record(L"x|3", plain_boolean);
  EXPECT_EQ(item.key, L"x");
  EXPECT_EQ(item.item_id, 3);
  EXPECT_FALSE(item.by_meaning);
  EXPECT_EQ(item.access, 0);
  EXPECT_FALSE(item.historian);
  EXPECT_FALSE(item.restore);
  EXPECT_EQ(item.smart_wait, 0.0F);
  EXPECT_EQ(item.length, 0);
  EXPECT_EQ(parse_item_record(L"", plain_boolean).key, L"");
}

TEST(ItemRecord, ConvertsTextsThatDoNotFitAsTheyStand) {
  const ItemRecord item = parse_item_record(L"59|59|4|True|0|True|False|0|4|", plain_boolean);
  EXPECT_EQ(item.key, L"59");
  EXPECT_EQ(item.item_id, 59);
  EXPECT_TRUE(item.by_meaning);
  EXPECT_EQ(item.access, 0);
  EXPECT_FALSE(item.historian);
  EXPECT_TRUE(item.restore);
  EXPECT_EQ(item.smart_wait, 0.0F);
  EXPECT_EQ(item.length, 0);
}

TEST(ItemRecord, ReadsNumbersOutOfRangeAsZero) {
  const ItemRecord item = parse_item_record(L"k|40000|0|-32769|0|0|1e39|99999|", plain_boolean);
  EXPECT_EQ(item.item_id, 0);
  EXPECT_EQ(item.access, 0);
  EXPECT_EQ(item.smart_wait, 0.0F);
  EXPECT_EQ(item.length, 0);
  EXPECT_EQ(parse_item_record(L"k|1|0|0|0|0|1e999|", plain_boolean).smart_wait, 0.0F);
}

TEST(ItemRecord, RoundsNumbersHalfToEven) {
  EXPECT_EQ(parse_item_record(L"k|2,5", plain_boolean).item_id, 2);
  EXPECT_EQ(parse_item_record(L"k|3.5", plain_boolean).item_id, 4);
}

TEST(ItemRecord, ReadsSmartWaitWithEitherSeparator) {
  EXPECT_EQ(parse_item_record(L"k|1|0|0|0|0|1,25|", plain_boolean).smart_wait, 1.25F);
  EXPECT_EQ(parse_item_record(L"k|1|0|0|0|0|1.25|", plain_boolean).smart_wait, 1.25F);
}

TEST(ItemRecord, WritesBooleansAsIntegersAndEndsEveryField) {
  const ItemRecord item{.key = L"17",
                        .item_id = -17,
                        .by_meaning = true,
                        .access = -32768,
                        .historian = false,
                        .restore = true,
                        .smart_wait = 0.1F,
                        .length = 4};
  EXPECT_EQ(format_item_record(item, L','), L"17|-17|-1|-32768|0|-1|0,1|4|");
  EXPECT_EQ(format_item_record(item, L'.'), L"17|-17|-1|-32768|0|-1|0.1|4|");
  EXPECT_EQ(format_item_record({}, L'.'), L"|0|0|0|0|0|0|0|");
}

TEST(ItemRecord, ComesBackAsWritten) {
  for (const wchar_t decimal : {L'.', L',', L'\''}) {
    for (const float wait : {0.0F, 0.5F, 0.1F, -3.25F, 1e10F, 1e-10F}) {
      const ItemRecord item{L"Key", 5, true, 77, true, false, wait, 9};
      const ItemRecord back =
          parse_item_record(format_item_record(item, decimal), plain_boolean, decimal);
      EXPECT_EQ(format_item_record(back, decimal), format_item_record(item, decimal));
      EXPECT_EQ(back.smart_wait, wait);
    }
  }
}

TEST(ItemRecord, DoesNotEscapeTheSeparator) {
  ItemRecord item;
  item.key = L"a|9";
  const ItemRecord back = parse_item_record(format_item_record(item, L'.'), plain_boolean);
  EXPECT_EQ(back.key, L"a");
  EXPECT_EQ(back.item_id, 9);
}

TEST(VariableRecord, ReadsElevenFieldsInOrder) {
  const VariableFields fields = parse_variable_record(L"1|Cap|Desc|2|3|4|5|123|L6|7|SYM|");
  EXPECT_EQ(fields.present, kVariableFieldCount);
  EXPECT_EQ(fields.record.key, L"1");
  EXPECT_EQ(fields.record.caption, L"Cap");
  EXPECT_EQ(fields.record.description, L"Desc");
  EXPECT_EQ(fields.record.parent_variable, 2);
  EXPECT_EQ(fields.record.dimension_id, 3);
  EXPECT_EQ(fields.record.unit_id, 4);
  EXPECT_EQ(fields.record.decimals, 5);
  EXPECT_EQ(fields.record.list_id, L"L6");
  EXPECT_EQ(fields.record.data_type, 7);
  EXPECT_EQ(fields.record.symbol, L"SYM");
}

TEST(VariableRecord, CountsTheFieldBehindTheLastSeparator) {
  EXPECT_EQ(parse_variable_record(L"").present, 1U);
  EXPECT_EQ(parse_variable_record(L"a").present, 1U);
  EXPECT_EQ(parse_variable_record(L"a|").present, 2U);
  EXPECT_EQ(parse_variable_record(L"1|||0|3|6|2|0|0|").present, 10U);
  EXPECT_EQ(parse_variable_record(L"1|||0|3|6|2|0|0||").present, 11U);
  EXPECT_EQ(parse_variable_record(std::wstring(50, L'|')).present, 11U);
}

TEST(VariableRecord, ReplacesOnlyTheFieldsThatAreThere) {
  const VariableRecordView initial{L"k", L"c", L"d", 1, 2, 3, 4, L"5", 6, L"s"};
  const VariableRecordView some = parse_variable_record(L"K||D|9", initial).record;
  EXPECT_EQ(format_variable_record(some), L"K||D|9|2|3|4||5|6|s|");
  const VariableRecordView all = parse_variable_record(L"||||||||||", initial).record;
  EXPECT_EQ(format_variable_record(all), L"|||0|0|0|0|||0||");
  const VariableRecordView key_only = parse_variable_record(L"", initial).record;
  EXPECT_EQ(format_variable_record(key_only), L"|c|d|1|2|3|4||5|6|s|");
}

TEST(VariableRecord, StopsAtEachFieldInTurn) {
  const VariableRecordView initial{L"k", L"c", L"d", 1, 2, 3, 4, L"5", 6, L"s"};
  const std::wstring full = L"K|C|D|11|12|13|14|x|15|16|S";
  const wchar_t* expected[] = {
      L"K|c|d|1|2|3|4||5|6|s|",       L"K|C|d|1|2|3|4||5|6|s|",      L"K|C|D|1|2|3|4||5|6|s|",
      L"K|C|D|11|2|3|4||5|6|s|",      L"K|C|D|11|12|3|4||5|6|s|",    L"K|C|D|11|12|13|4||5|6|s|",
      L"K|C|D|11|12|13|14||5|6|s|",   L"K|C|D|11|12|13|14||5|6|s|",  L"K|C|D|11|12|13|14||15|6|s|",
      L"K|C|D|11|12|13|14||15|16|s|", L"K|C|D|11|12|13|14||15|16|S|"};
  std::size_t end = 0;
  for (std::size_t count = 1; count <= kVariableFieldCount; ++count) {
    end = full.find(L'|', end + (count > 1 ? 1 : 0));
    const std::wstring text = full.substr(0, end);
    const VariableFields fields = parse_variable_record(text, initial);
    EXPECT_EQ(fields.present, count);
    EXPECT_EQ(format_variable_record(fields.record), expected[count - 1]);
  }
}

TEST(VariableRecord, WritesNumbersOfAnyLength) {
  constexpr std::int16_t kLeast = -32768, kMost = 32767;
  const VariableRecord record{L"1", L"", L"", kLeast, kMost, kLeast, -1, L"0", kLeast, L""};
  EXPECT_EQ(format_variable_record(record), L"1|||-32768|32767|-32768|-1||0|-32768||");
  const ItemRecord item{L"1", kLeast, true, kLeast, true, true, -1.234567e-30F, kLeast};
  EXPECT_EQ(format_item_record(item, L','), L"1|-32768|-1|-32768|-1|-1|-1,234567E-30|-32768|");
}

TEST(VariableRecord, NeverWritesAValue) {
  const VariableRecordView record = parse_variable_record(L"1|c|d|0|3|6|2|987|0|4|s|").record;
  EXPECT_EQ(format_variable_record(record), L"1|c|d|0|3|6|2||0|4|s|");
}

TEST(VariableRecord, ShiftsWhatFollowsASeparatorInACaption) {
  const VariableRecord written{L"1", L"a|b", L"d", 7, 0, 0, 0, L"0", 4, L""};
  const std::wstring text = format_variable_record(written);
  const VariableRecordView back = parse_variable_record(text).record;
  EXPECT_EQ(back.caption, L"a");
  EXPECT_EQ(back.description, L"b");
  EXPECT_EQ(back.parent_variable, 0);
  EXPECT_EQ(back.dimension_id, 7);
}

TEST(VariableRecord, KeepsTheListAsWritten) {
  EXPECT_EQ(parse_variable_record(L"1|||0|0|0|0|| 3 kg |4|").record.list_id, L" 3 kg ");
}

// Fails the test when it is asked.
bool unasked(std::wstring_view text) {
  ADD_FAILURE() << testing::PrintToString(std::wstring(text));
  return false;
}

TEST(BooleanOf, KnowsTheUsualTextsItself) {
  for (const wchar_t* text : {L"True", L"true", L"TRUE", L"tRuE", L"-1", L"1", L"4", L"007"}) {
    EXPECT_TRUE(parse_boolean(text, unasked));
  }
  for (const wchar_t* text : {L"False", L"FALSE", L"fAlSe", L"0", L"-0", L"000"}) {
    EXPECT_FALSE(parse_boolean(text, unasked));
  }
}

TEST(BooleanOf, IsThePlatformsForAnyOtherText) {
  for (const wchar_t* text :
       {L"", L" ", L"Tru", L"Truee", L"True ", L"#TRUE#", L"&H1", L"$1", L"(1)", L"0.5", L"0,0",
        L" 1 ", L"1e-300", L"yes", L"1 kg", L"-", L"1234567890", L"1|", L"Wahr"}) {
    EXPECT_TRUE(parse_boolean(text, [](std::wstring_view) { return true; }));
    EXPECT_FALSE(parse_boolean(text, [](std::wstring_view) { return false; }));
  }
}

TEST(BooleanOf, HandsTheWholeTextToThePlatform) {
  const auto is_the_text = [](std::wstring_view text) { return text == L" #TRUE# "; };
  const ItemRecord item = parse_item_record(L"k|1| #TRUE# |1|#TRUE#| #TRUE# |0|4|", is_the_text);
  EXPECT_TRUE(item.by_meaning);
  EXPECT_FALSE(item.historian);
  EXPECT_TRUE(item.restore);
}

}  // namespace
}  // namespace pv
