// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Reads the string tables as their source text, so that the coverage of every language and the
// English wording are proved without a resource compiler or Windows.

#include "tests/unit/text/string_tables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "resources/text_ids.h"

namespace pv::test {
namespace {

const Texts kEnglish = {
    {198, "***** US Resources *****"},
    {200, "OK"},
    {201, "Cancel"},
    {202, "Abort"},
    {203, "Retry"},
    {204, "Ignore"},
    {205, "Yes"},
    {206, "No"},
    {207, "Error"},
    {208, "Untitled"},
    {209, "Refresh"},
    {210, "Delete"},
    {211, "Finish"},
    {212, "Next >"},
    {213, "< Back"},
    {214, "Browse"},
    {215, "Apply"},
    {216, "Enable"},
    {217, "Disable"},
    {218, "Close"},
    {219, "Modify"},
    {300, "-----< frmTechName >-----"},
    {301, "Kalvos Historian"},
    {302, "Please enter your name and your comments why you modify this item:"},
    {303, "Your Name:"},
    {304, "Comments:"},
    {310, "Date"},
    {311, "Time"},
    {312, "Signature"},
    {313, "Txm Type"},
    {314, "Txm CA"},
    {315, "Txm name"},
    {316, "Item ID"},
    {317, "Item Name"},
    {318, "New value"},
    {319, "Unit"},
    {320, "Comments"},
    {321, "Conditions"},
    {400, "-----< MODEM >-----"},
    {401,
     "Transmitter is not available without modem connection!\r\n"
     "Do you want to start modem connection?"},
    {402, "Warning!"},
    {403, "COM"},
    {404, "MODEM"},
    {500, "-----< frmAccessEdit >-----"},
    {501, "Item Access Editor"},
    {510, "Enable Read:"},
    {511, "Enable Write:"},
    {512, "Update password level after Write"},
    {513, "Display password mask character (*)"},
    {520, "Always"},
    {521, "Only if PW1 is set"},
    {522, "Only if PW2 is set"},
    {523, "Only if PW3 is set"},
    {524, "Only if PW4 is set"},
    {600, "-----< Password >-----"},
    {601, "Kalvos Password"},
    {602, "Enter Password:"},
    {603, "New Password:"},
    {604, "Repeat New Password:"},
    {610, "Incorrect Password!"},
    {611, "Please repeat new password!"},
    {1100, "-----< Error >-----"},
    {1101, "Write Protected Item:"},
    {1102, "Necessary Password Level:"},
    {1103, "Read Protected Item:"},
};

const Ids kSectionMarkers = {300, 400, 500, 600, 1100};

const Ids kFullSet = {198, 200, 201, 202, 203, 204, 205, 206, 207, 208,  209,  210,  211,
                      212, 213, 214, 215, 216, 217, 218, 219, 300, 301,  302,  303,  304,
                      310, 311, 312, 313, 314, 315, 316, 317, 318, 319,  320,  321,  400,
                      401, 402, 403, 404, 500, 501, 510, 511, 512, 513,  520,  521,  522,
                      523, 524, 600, 601, 602, 603, 604, 610, 611, 1100, 1101, 1102, 1103};

const Ids kGermanSet = {198, 200, 201, 202, 203, 204, 205, 206, 207, 208, 209, 210, 211,
                        212, 213, 214, 215, 216, 217, 218, 219, 300, 400, 500, 600, 1100};

// The labels of the access editor stand at 502..505 instead of 510..513.
const Ids kDutchSet = {198, 200, 201, 202, 203, 204, 205, 206, 207, 208,  209,  210,  211,
                       212, 213, 214, 215, 216, 217, 218, 219, 300, 301,  302,  303,  304,
                       310, 311, 312, 313, 314, 315, 316, 317, 318, 319,  320,  321,  400,
                       401, 402, 403, 404, 500, 501, 502, 503, 504, 505,  520,  521,  522,
                       523, 524, 600, 601, 602, 603, 604, 610, 611, 1100, 1101, 1102, 1103};

// Words that are left in English on purpose, or that are the same in the other language.
const std::map<std::string_view, Ids> kSameAsEnglish = {
    {"hu", {200, 403, 404}},
    {"ger", {200, 204, 219}},
    {"ita", {200, 206, 214, 403, 404}},
    {"fra", {200, 310, 312, 321, 403, 404}},
    {"nl", {200, 403, 404}},
};

TEST(StringTable, EnglishHasEveryTextExactly) { EXPECT_EQ(texts_of("us"), kEnglish); }

TEST(StringTable, EnglishHasEveryId) { EXPECT_EQ(ids_of("us"), kFullSet); }

TEST(StringTable, HungarianHasEveryId) { EXPECT_EQ(ids_of("hu"), kFullSet); }

TEST(StringTable, ItalianHasEveryId) { EXPECT_EQ(ids_of("ita"), kFullSet); }

TEST(StringTable, FrenchHasEveryId) { EXPECT_EQ(ids_of("fra"), kFullSet); }

TEST(StringTable, GermanCoversOnlyButtonsAndMarkers) { EXPECT_EQ(ids_of("ger"), kGermanSet); }

TEST(StringTable, DutchHasItsAccessLabelsAt502To505) { EXPECT_EQ(ids_of("nl"), kDutchSet); }

TEST(StringTable, EachLanguageBeginsWithItsOwnMarker) {
  for (const Language& language : kLanguages) {
    const auto entries = parse_entries(table_source(language));
    ASSERT_FALSE(entries.empty()) << language.name;
    EXPECT_EQ(entries.front().first, language.offset + 198);
    EXPECT_EQ(entries.front().second, "***** " + std::string(language.name) + " Resources *****");
  }
}

TEST(StringTable, SectionMarkersAreTheSameInEveryLanguage) {
  for (const Language& language : kLanguages) {
    const Texts texts = texts_of(language);
    for (const int id : kSectionMarkers) {
      ASSERT_TRUE(texts.contains(id)) << language.name << ' ' << id;
      EXPECT_EQ(texts.at(id), kEnglish.at(id)) << language.name;
    }
  }
}

TEST(StringTable, SomeGermanAndItalianCaptionsStayEnglish) {
  EXPECT_EQ(texts_of("ger").at(204), "Ignore");
  EXPECT_EQ(texts_of("ger").at(219), "Modify");
  EXPECT_EQ(texts_of("ita").at(214), "Browse");
}

TEST(StringTable, PortNamesAreTheSameInEveryLanguageThatHasThem) {
  for (const std::string_view extension : {"hu", "ita", "fra", "nl"}) {
    EXPECT_EQ(texts_of(extension).at(403), "COM") << extension;
    EXPECT_EQ(texts_of(extension).at(404), "MODEM") << extension;
  }
}

TEST(StringTable, EveryOtherTextIsTranslated) {
  for (const auto& [extension, same] : kSameAsEnglish) {
    Ids untranslated;
    for (const auto& [id, text] : texts_of(extension)) {
      const auto english = kEnglish.find(id);
      if (english != kEnglish.end() && english->second == text) untranslated.insert(id);
    }
    Ids expected = same;
    expected.insert(kSectionMarkers.begin(), kSectionMarkers.end());
    EXPECT_EQ(untranslated, expected) << extension;
  }
}

TEST(StringTable, NoIdStandsTwice) {
  Ids seen;
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : parse_entries(table_source(language))) {
      EXPECT_TRUE(seen.insert(id).second) << id << " again in " << language.name;
    }
  }
}

TEST(StringTable, NoTwoFilesShareABlockOfSixteenIds) {
  // Resource compilers store sixteen consecutive ids as one resource, which cannot come from two.
  std::map<int, std::string_view> owners;
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : parse_entries(table_source(language))) {
      EXPECT_EQ(owners.emplace(id / 16, language.name).first->second, language.name) << id;
    }
  }
}

TEST(StringTable, ModemQuestionHasTwoLinesInEveryLanguageThatHasIt) {
  for (const std::string_view extension : {"us", "hu", "ita", "fra", "nl"}) {
    const std::string question = texts_of(extension).at(401);
    const std::size_t line_break = question.find("\r\n");
    ASSERT_NE(line_break, std::string::npos) << extension;
    EXPECT_EQ(question[line_break - 1], '!') << extension;
    EXPECT_EQ(question.back(), '?') << extension;
    EXPECT_EQ(std::ranges::count(question, '\r'), 1) << extension;
    EXPECT_EQ(std::ranges::count(question, '\n'), 1) << extension;
  }
}

TEST(StringTable, NoOtherTextHasALineBreakOrAQuestionMark) {
  // A question mark elsewhere would be a character that an editor could not store.
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : texts_of(language)) {
      if (id == 401) continue;
      EXPECT_EQ(text.find_first_of("?\r\n\t"), std::string::npos) << language.name << ' ' << text;
    }
  }
}

TEST(StringTable, FilesAreUtf8WithoutByteOrderMark) {
  for (const Language& language : kLanguages) {
    const auto decoded = decode_utf8(table_source(language));
    ASSERT_TRUE(decoded) << language.name;
    EXPECT_EQ(decoded->find(U'\uFEFF'), std::u32string::npos) << language.name;
    EXPECT_EQ(decoded->find(U'\uFFFD'), std::u32string::npos) << language.name;
  }
}

TEST(StringTable, TextsUseOnlyTheLettersOfTheirLanguage) {
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : texts_of(language)) {
      const auto decoded = decode_utf8(text);
      ASSERT_TRUE(decoded) << language.name << ' ' << id;
      for (const char32_t letter : *decoded) {
        EXPECT_TRUE(letter < 0x80 || language.letters.find(letter) != std::u32string_view::npos)
            << language.name << ' ' << id << ' ' << text;
      }
    }
  }
}

TEST(StringTable, FrenchKeepsANoBreakSpaceBeforeHighPunctuation) {
  for (const auto& [id, text] : texts_of("fra")) {
    const std::u32string decoded = decode_utf8(text).value();
    for (std::size_t i = 0; i < decoded.size(); ++i) {
      if (std::u32string_view(U":!?").find(decoded[i]) == std::u32string_view::npos) continue;
      ASSERT_GT(i, 0u) << id;
      EXPECT_EQ(decoded[i - 1], U'\u00A0') << id << ' ' << text;
    }
  }
}

TEST(StringTable, HistoryColumnsHaveNoComma) {
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : texts_of(language)) {
      if (id < 310 || id > 321) continue;
      EXPECT_EQ(text.find(','), std::string::npos) << language.name << ' ' << text;
    }
  }
}

TEST(StringTable, ButtonTextsHaveAtMostFourteenCharacters) {
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : texts_of(language)) {
      if (id < 200 || id > 219) continue;
      EXPECT_LE(decode_utf8(text).value().size(), 14u) << language.name << ' ' << text;
    }
  }
}

TEST(StringTable, AnswersThatCanStandSideBySideDiffer) {
  // The button sets of the message box, by the ids of their captions.
  const std::vector<std::vector<int>> sets = {
      {200, 201}, {202, 203, 204}, {205, 206, 201}, {203, 201}};
  for (const Language& language : kLanguages) {
    const Texts texts = texts_of(language);
    for (const auto& ids : sets) {
      std::set<std::string> captions;
      for (const int id : ids) captions.insert(texts.at(id));
      EXPECT_EQ(captions.size(), ids.size()) << language.name << ' ' << ids.front();
    }
  }
}

TEST(StringTable, NoTextHasAMnemonicOrOuterBlanks) {
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : texts_of(language)) {
      ASSERT_FALSE(text.empty()) << language.name << ' ' << id;
      EXPECT_EQ(text.find('&'), std::string::npos) << language.name << ' ' << text;
      EXPECT_NE(text.front(), ' ') << language.name << ' ' << text;
      EXPECT_NE(text.back(), ' ') << language.name << ' ' << text;
    }
  }
}

TEST(StringTable, LabelsEndWithAColonInEveryLanguage) {
  // Numbers and names are appended to these directly.
  for (const Language& language : kLanguages) {
    const Texts texts = texts_of(language);
    for (const int id : {303, 304, 510, 511, 602, 603, 604, 1101, 1102, 1103}) {
      if (!texts.contains(id)) continue;
      EXPECT_EQ(texts.at(id).back(), ':') << language.name << ' ' << texts.at(id);
    }
  }
}

TEST(StringTable, PasswordChoicesNameTheirPassword) {
  for (const std::string_view extension : {"us", "hu", "ita", "fra", "nl"}) {
    const Texts texts = texts_of(extension);
    for (int level = 1; level <= 4; ++level) {
      const std::string& text = texts.at(520 + level);
      EXPECT_NE(text.find("PW" + std::to_string(level)), std::string::npos) << extension << text;
    }
  }
}

TEST(TextIds, EachLanguageHasTheNextBlock) {
  const int offsets[] = {0, HUNGARIAN(0), GERMAN(0), ITALIAN(0), FRENCH(0), DUTCH(0)};
  EXPECT_TRUE(std::ranges::equal(kLanguages, offsets, {}, &Language::offset));
  EXPECT_EQ(DUTCH(TEXT_OK), 5200);
}

TEST(StringTable, ReaderRefusesWhatItDoesNotUnderstand) {
  for (const char* line : {"TEXT_OK no quotes", R"(TEXT_OK "a\q")", R"(TEXT_OK "a" b)",
                           R"(TEXT_OK"a")", R"("a")", R"(7 "a")", R"(TEXT_NONE "a")",
                           R"(LATIN(TEXT_OK) "a")", R"(DUTCH(TEXT_OK "a")", R"(TEXT_OK "a"b")"})
    EXPECT_THROW(parse_entries("BEGIN\n  " + std::string(line) + "\nEND\n"), std::runtime_error)
        << line;
  EXPECT_THROW(parse_entries("BEGIN\n  TEXT_OK \"a\"\n"), std::runtime_error);
  EXPECT_EQ(parse_entries("BEGIN\n  DUTCH(TEXT_OK) \"a\\r\"\nEND\n"),
            (std::vector<std::pair<int, std::string>>{{5200, "a\r"}}));
  EXPECT_FALSE(decode_utf8("\xC3"));
  EXPECT_FALSE(decode_utf8("\xE9t"));
  EXPECT_FALSE(decode_utf8("\xC0\x80"));
  EXPECT_EQ(decode_utf8("\xC3\xA9"), U"é");
}

}  // namespace
}  // namespace pv::test
