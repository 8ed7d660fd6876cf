// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/settings_text.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace pv {
namespace {

const TextCodec& kCodec = latin1_codec();

TEST(Latin1Codec, KeepsEveryByte) {
  std::string bytes;
  for (int c = 0; c < 256; ++c) bytes.push_back(static_cast<char>(c));
  const std::wstring text = kCodec.widen(bytes);
  ASSERT_EQ(text.size(), 256U);
  for (std::size_t c = 0; c < 256; ++c) EXPECT_EQ(text[c], static_cast<wchar_t>(c));
  EXPECT_EQ(kCodec.narrow(text), bytes);
}

TEST(Latin1Codec, WritesOtherCharactersAsQuestionMarks) {
  EXPECT_EQ(kCodec.narrow(L"a\x0151\xFFFF"), "a??");
}

TEST(SettingsReader, FindsASectionAndThenAKey) {
  SettingsReader reader("[A]\r\nx=1\r\n\r\n[B]\r\nx=2\r\n", kCodec);
  ASSERT_TRUE(reader.find_section(L"B"));
  EXPECT_EQ(reader.find_key(L"x"), L"2");
  EXPECT_FALSE(reader.find_key(L"x"));
}

TEST(SettingsReader, NeverGoesBackByItself) {
  SettingsReader reader("[A]\nx=1\n[B]\ny=2\n", kCodec);
  ASSERT_TRUE(reader.find_section(L"B"));
  EXPECT_FALSE(reader.find_section(L"A"));
  reader.rewind();
  EXPECT_TRUE(reader.find_section(L"A"));
}

TEST(SettingsReader, LooksForKeysPastLaterSections) {
  SettingsReader reader("[A]\nx=1\n[B]\ny=2\n", kCodec);
  ASSERT_TRUE(reader.find_section(L"A"));
  EXPECT_EQ(reader.find_key(L"y"), L"2");
}

TEST(SettingsReader, TakesLinesThatBeginWithTheSearchedText) {
  SettingsReader reader("[A]rest\nx= a=b \nx2=5\n", kCodec);
  ASSERT_TRUE(reader.find_section(L"A"));
  EXPECT_EQ(reader.find_key(L"x"), L" a=b ");
}

TEST(SettingsReader, WantsTheLineToBeginAtItsFirstCharacter) {
  SettingsReader reader(" [A]\n x=1\nyx=1\nx =1\nX=1\n", kCodec);
  EXPECT_FALSE(reader.find_section(L"A"));
  reader.rewind();
  EXPECT_FALSE(reader.find_key(L"x"));
}

TEST(SettingsReader, TellsASectionFromALongerName) {
  SettingsReader reader("[ITEM10]\n[ITEM1]\nx=1\n", kCodec);
  ASSERT_TRUE(reader.find_section(L"ITEM1"));
  EXPECT_EQ(reader.offset(), std::string("[ITEM10]\n[ITEM1]\n").size());
}

TEST(SettingsReader, StandsAfterTheLineFoundOrAtTheEnd) {
  const std::string bytes = "[A]\r\nx=1\r\ny=2";
  SettingsReader reader(bytes, kCodec);
  EXPECT_EQ(reader.offset(), 0U);
  ASSERT_TRUE(reader.find_section(L"A"));
  EXPECT_EQ(reader.offset(), 5U);
  ASSERT_TRUE(reader.find_key(L"x"));
  EXPECT_EQ(reader.offset(), 10U);
  EXPECT_FALSE(reader.find_key(L"z"));
  EXPECT_EQ(reader.offset(), bytes.size());
  EXPECT_FALSE(reader.find_section(L"A"));
  EXPECT_EQ(reader.offset(), bytes.size());
}

TEST(SettingsReader, AcceptsEveryLineEnd) {
  for (const char* bytes : {"[A]\r\nx=1\r\n", "[A]\nx=1\n", "[A]\r\nx=1", "[A]\nx=1\r"}) {
    SettingsReader reader(bytes, kCodec);
    EXPECT_EQ(reader.value(L"A", L"x", L"?", true, true), L"1") << bytes;
  }
}

TEST(SettingsReader, DropsOneCarriageReturnOnly) {
  SettingsReader reader("x=1\r\r\ny=a\rb\n", kCodec);
  EXPECT_EQ(reader.find_key(L"x"), L"1\r");
  EXPECT_EQ(reader.find_key(L"y"), L"a\rb");
}

TEST(SettingsReader, FindsNothingInAnEmptyFile) {
  SettingsReader reader("", kCodec);
  EXPECT_FALSE(reader.find_section(L"A"));
  EXPECT_FALSE(reader.find_key(L"x"));
  EXPECT_EQ(reader.value(L"A", L"x", L"none", true, true), L"none");
}

TEST(SettingsReader, TakesEmptyNamesLiterally) {
  SettingsReader reader("[]\n=5\n", kCodec);
  ASSERT_TRUE(reader.find_section(L""));
  EXPECT_EQ(reader.find_key(L""), L"5");
}

TEST(SettingsReader, CutsAKeyThatHoldsAnEqualsSignAtTheFirstOne) {
  SettingsReader reader("a=b=c\n", kCodec);
  EXPECT_EQ(reader.find_key(L"a=b"), L"b=c");
}

TEST(SettingsReader, ReadsLinesOfAnyLengthAndAnyByte) {
  const std::string junk(1'000'000, '\x01');
  const std::string bytes = junk + "\nx=" + std::string("\0\xFF", 2) + junk + "\n";
  SettingsReader reader(bytes, kCodec);
  const auto value = reader.find_key(L"x");
  ASSERT_TRUE(value);
  EXPECT_EQ(value->size(), junk.size() + 2);
  EXPECT_EQ((*value)[0], L'\0');
  EXPECT_EQ((*value)[1], L'\xFF');
}

TEST(SettingsReaderValue, SearchesTheSectionFromTheStartOnlyOnReset) {
  SettingsReader reader("[A]\nx=1\n[A]\nx=2\n", kCodec);
  EXPECT_EQ(reader.value(L"A", L"x", L"?", false, true), L"1");
  EXPECT_EQ(reader.value(L"A", L"x", L"?", false, true), L"2");
  EXPECT_EQ(reader.value(L"A", L"x", L"?", false, true), L"?");
  EXPECT_EQ(reader.value(L"A", L"x", L"?", true, true), L"1");
}

TEST(SettingsReaderValue, ReadsOnWithoutASectionSearchWhateverResetSays) {
  SettingsReader reader("[A]\nx=1\nx=2\n", kCodec);
  EXPECT_EQ(reader.value(L"none", L"x", L"?", true, false), L"1");
  EXPECT_EQ(reader.value(L"none", L"x", L"?", true, false), L"2");
  EXPECT_EQ(reader.value(L"none", L"x", L"?", true, false), L"?");
}

TEST(SettingsReaderValue, GivesTheFallbackAtTheEndForAMissingSection) {
  SettingsReader reader("[A]\nx=1\n", kCodec);
  EXPECT_EQ(reader.value(L"B", L"x", L"none", true, true), L"none");
  EXPECT_EQ(reader.value(L"", L"x", L"none", false, false), L"none");
}

TEST(SettingsReaderValue, GivesAnEmptyValueNotTheFallback) {
  SettingsReader reader("[A]\nx=\n", kCodec);
  EXPECT_EQ(reader.value(L"A", L"x", L"none", true, true), L"");
}

TEST(SettingsReaderNextValue, ReadsOnInTheFilesOrder) {
  SettingsReader reader("x=1\ny=2\nx=3\n", kCodec);
  EXPECT_EQ(reader.next_value(L"y", L"?"), L"2");
  EXPECT_EQ(reader.next_value(L"x", L"?"), L"3");
  EXPECT_EQ(reader.next_value(L"x", L"?"), L"?");
}

TEST(SettingsIndex, FindsTheFirstKeyBehindTheFirstHeader) {
  const SettingsIndex index("x=0\n[A]\nx=1\nx=2\n[B]\n[A]\nx=3\ny=4\n", kCodec);
  EXPECT_EQ(index.value(L"A", L"x", L"?"), L"1");
  EXPECT_EQ(index.value(L"B", L"x", L"?"), L"3");
  EXPECT_EQ(index.value(L"A", L"y", L"?"), L"4");
  EXPECT_EQ(index.value(L"C", L"x", L"?"), L"?");
  EXPECT_EQ(index.value(L"A", L"z", L"?"), L"?");
}

TEST(SettingsIndex, TellsNothingFromAnEmptyValue) {
  const SettingsIndex index("[A]\nx=\n", kCodec);
  EXPECT_EQ(index.find(L"A", L"x"), L"");
  EXPECT_EQ(index.find(L"A", L"y"), std::nullopt);
}

TEST(SettingsIndex, KnowsKeysAnywhereInTheFile) {
  const SettingsIndex index("x=0\n[A]\na=b=c\n", kCodec);
  EXPECT_TRUE(index.has_key(L"x"));
  EXPECT_TRUE(index.has_key(L"a"));
  EXPECT_TRUE(index.has_key(L"a=b"));
  EXPECT_FALSE(index.has_key(L"a=c"));
  EXPECT_FALSE(index.has_key(L"b"));
}

/// A file of few different letters, so that searches often hit, and hit oddly.
std::string random_file(std::mt19937& random) {
  static const std::vector<std::string> kPieces = {"[",
                                                   "]",
                                                   "=",
                                                   "a",
                                                   "b",
                                                   "c",
                                                   "\n",
                                                   "\n",
                                                   "\r\n",
                                                   "[a]",
                                                   "[b]",
                                                   "\n[c]",
                                                   "\na=",
                                                   "\nb=",
                                                   "[a]b]",
                                                   "\na=b=",
                                                   " ",
                                                   "\r",
                                                   std::string(1, '\0'),
                                                   "\xE9"};
  std::string bytes;
  const int count = std::uniform_int_distribution<int>(0, 60)(random);
  for (int i = 0; i < count; ++i) {
    bytes += kPieces[std::uniform_int_distribution<std::size_t>(0, kPieces.size() - 1)(random)];
  }
  return bytes;
}

TEST(SettingsIndex, GivesWhatTheReaderGivesOnRandomFiles) {
  const std::vector<std::wstring> names = {
      L"",     L"a",   L"b",     L"c",     L"ab",
      L"a]",   L"a]b", L"]",     L"=",     L"a=b",
      L"a=",   L"[a]", L"[",     L"a\r",   L"a\nb",
      L"\xE9", L" a",  L"[a]=",  L"[b]a",  L"a]=",
      L"c]a",  L"b=b", L"a=b=a", L"a]b]c", std::wstring(1, L'\0')};
  std::mt19937 random(3);
  int hits = 0;
  for (int round = 0; round < 1000; ++round) {
    const std::string bytes = random_file(random);
    const SettingsIndex index(bytes, kCodec);
    SettingsReader reader(bytes, kCodec);
    for (const std::wstring& section : names) {
      for (const std::wstring& key : names) {
        const std::wstring expected = reader.value(section, key, L"none", true, true);
        ASSERT_EQ(index.value(section, key, L"none"), expected)
            << bytes << "\nsection " << kCodec.narrow(section) << "\nkey " << kCodec.narrow(key);
        if (expected != L"none") ++hits;
      }
    }
    for (const std::wstring& key : names) {
      reader.rewind();
      ASSERT_EQ(index.has_key(key), reader.find_key(key).has_value()) << bytes;
    }
  }
  EXPECT_GT(hits, 3'000);
}

TEST(SettingsWriter, PutsAnEmptyLineBeforeEachSectionButTheFirst) {
  SettingsWriter writer(kCodec);
  writer.section(L"A");
  writer.value(L"x", L"1");
  writer.section(L"B");
  writer.count(2);
  EXPECT_EQ(writer.take(), "[A]\r\nx=1\r\n\r\n[B]\r\nCount=2\r\n");
}

TEST(SettingsWriter, PutsAnEmptyLineBeforeTheFirstSectionOfAContinuation) {
  SettingsWriter writer(kCodec, true);
  writer.section(L"A");
  EXPECT_EQ(writer.take(), "\r\n[A]\r\n");
}

TEST(SettingsWriter, GoesOnAfterTake) {
  SettingsWriter writer(kCodec);
  writer.section(L"A");
  writer.take();
  EXPECT_EQ(writer.take(), "");
  writer.section(L"B");
  EXPECT_EQ(writer.take(), "\r\n[B]\r\n");
}

TEST(SettingsWriter, WritesTheHeadOfAFile) {
  SettingsWriter writer(kCodec);
  writer.head(L"Items", 3, {L"2.05.07", L"built \xE9t\xE9"});
  EXPECT_EQ(writer.take(), "[Items]\r\nCount=3\r\nVersion=2.05.07\r\nDate=built \xE9t\xE9\r\n");
}

TEST(SettingsWriter, EndsEachFieldOfARecord) {
  SettingsWriter writer(kCodec);
  writer.record(L"k", {});
  const std::wstring_view fields[] = {L"a", L"", L"\xE9"};
  writer.record(L"VAR1", fields);
  EXPECT_EQ(writer.size(), std::size_t{16});
  EXPECT_EQ(writer.take(), "k=\r\nVAR1=a||\xE9|\r\n");
  EXPECT_EQ(writer.size(), std::size_t{0});
}

TEST(SettingsWriter, WritesWhatTheReaderReads) {
  SettingsWriter writer(kCodec);
  writer.section(L"A b");
  writer.value(L"x", L" 1|2=3 ");
  const std::string bytes = writer.take();
  SettingsReader reader(bytes, kCodec);
  EXPECT_EQ(reader.value(L"A b", L"x", L"?", true, true), L" 1|2=3 ");
}

TEST(NumberedKey, EndsWithTheNumber) {
  NumberedKey key(L"VAR");
  EXPECT_EQ(key.with(10), L"VAR10");
  EXPECT_EQ(key.with(1), L"VAR1");
  EXPECT_EQ(key.with(32767), L"VAR32767");
}

TEST(SettingsLines, HaveNoLineEnd) {
  EXPECT_EQ(format_section_line(L"A"), L"[A]");
  EXPECT_EQ(format_section_line(L""), L"[]");
  EXPECT_EQ(format_value_line(L"k", L"v=w"), L"k=v=w");
  EXPECT_EQ(format_value_line(L"", L""), L"=");
}

using Fields = std::vector<std::wstring>;

TEST(SplitRecord, GivesOneFieldMoreThanSeparators) {
  EXPECT_EQ(split_record(L""), Fields{L""});
  EXPECT_EQ(split_record(L"a"), Fields{L"a"});
  EXPECT_EQ(split_record(L"|"), (Fields{L"", L""}));
  EXPECT_EQ(split_record(L"a|b|"), (Fields{L"a", L"b", L""}));
  EXPECT_EQ(split_record(L"||x"), (Fields{L"", L"", L"x"}));
}

TEST(SplitRecord, TakesAnySeparator) {
  EXPECT_EQ(split_record(L"a,b|c", L','), (Fields{L"a", L"b|c"}));
}

TEST(SplitRecord, KeepsOnlyTheFieldsAskedFor) {
  EXPECT_EQ(split_record(L"a|b|c", L'|', 2), (Fields{L"a", L"b"}));
  EXPECT_EQ(split_record(L"a|b", L'|', 5), (Fields{L"a", L"b"}));
  EXPECT_EQ(split_record(std::wstring(1'000'000, L'|'), L'|', 3), (Fields{L"", L"", L""}));
}

TEST(SplitRecord, FillsTheViewsGiven) {
  std::array<std::wstring_view, 3> fields{L"x", L"x", L"x"};
  EXPECT_EQ(split_record(L"a||", L'|', fields), 3U);
  EXPECT_EQ(fields, (std::array<std::wstring_view, 3>{L"a", L"", L""}));
  EXPECT_EQ(split_record(L"b|c|d|e", L'|', fields), 3U);
  EXPECT_EQ(fields, (std::array<std::wstring_view, 3>{L"b", L"c", L"d"}));
  EXPECT_EQ(split_record(L"f", L'|', fields), 1U);
  EXPECT_EQ(fields, (std::array<std::wstring_view, 3>{L"f", L"c", L"d"}));
  EXPECT_EQ(split_record(L"f|g", L'|', std::span<std::wstring_view>()), 0U);
}

// Names beyond ASCII are looked for in the text, not in the bytes.
TEST(SettingsReader, FindsNamesBeyondAscii) {
  SettingsReader reader("[\xc4]\nx=1\n\xe9=2\n\xe9\xe9=a\xb0=b\n", kCodec);
  EXPECT_TRUE(reader.find_section(L"\u00c4"));
  EXPECT_EQ(reader.find_key(L"\u00e9\u00e9"), L"a\u00b0=b");
  EXPECT_EQ(reader.value(L"\u00c4", L"\u00e9", L"none", true, true), L"2");
  EXPECT_EQ(reader.value(L"\u20ac", L"\u00e9", L"none", true, true), L"none");
}

}  // namespace
}  // namespace pv
