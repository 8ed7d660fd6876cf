// Reads the string tables as their source text, so that the coverage of every language and the
// English wording are proved without a resource compiler or Windows.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using Ids = std::set<int>;
using Texts = std::map<int, std::string>;

struct Language {
  std::string_view extension;
  std::string_view name;
  int offset;
  std::u32string_view letters;  // what its alphabet and typography have beyond ASCII
};

const std::vector<Language> kLanguages = {
    {"us", "US", 0, U""},
    {"hu", "Hungarian", 1000, U"áéíóöőúüűÁÉÍÓÖŐÚÜŰ"},
    {"ger", "German", 2000, U"äöüßÄÖÜ"},
    {"ita", "Italian", 3000, U"àèéìòùÀÈÉÌÒÙ"},
    {"fra", "French", 4000, U"àâçèéêëîïôùûÀÂÇÈÉÊËÎÏÔÙÛ\u00A0"},
    {"nl", "Dutch", 5000, U"ëïéöËÏÉÖ"},
};

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

// Decodes strictly: nothing when the bytes are not UTF-8 (overlong forms, surrogates and values
// beyond the last code point included).
std::optional<std::u32string> decode_utf8(std::string_view bytes) {
  constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  std::u32string text;
  for (std::size_t i = 0; i < bytes.size();) {
    const auto lead = static_cast<unsigned char>(bytes[i++]);
    const int extra = lead < 0x80             ? 0
                      : (lead & 0xE0) == 0xC0 ? 1
                      : (lead & 0xF0) == 0xE0 ? 2
                      : (lead & 0xF8) == 0xF0 ? 3
                                              : -1;
    if (extra < 0) return std::nullopt;
    char32_t code = extra == 0 ? lead : lead & (0x3Fu >> extra);
    for (int n = 0; n < extra; ++n, ++i) {
      if (i == bytes.size() || (static_cast<unsigned char>(bytes[i]) & 0xC0) != 0x80) {
        return std::nullopt;
      }
      code = (code << 6) | (static_cast<unsigned char>(bytes[i]) & 0x3Fu);
    }
    if (code < kSmallest[extra] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) {
      return std::nullopt;
    }
    text.push_back(code);
  }
  return text;
}

std::string file_name(const Language& language) {
  return std::string(PV_RESOURCE_DIR) + "/strings_" + std::string(language.extension) + ".rc";
}

std::string read_file(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot open " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string unescape(const std::string& literal) {
  std::string text;
  for (std::size_t i = 0; i < literal.size(); ++i) {
    if (literal[i] != '\\') {
      text.push_back(literal[i]);
      continue;
    }
    const char next = ++i < literal.size() ? literal[i] : '\0';
    if (next != 'r' && next != 'n') throw std::runtime_error("unknown escape in: " + literal);
    text.push_back(next == 'r' ? '\r' : '\n');
  }
  return text;
}

// The entries in the order of the file. A line that is no entry throws, so that none is overlooked.
std::vector<std::pair<int, std::string>> parse_entries(const std::string& source) {
  static const std::regex kEntry(R"re(\s*(\d+),?\s+"([^"]*)")re");
  std::vector<std::pair<int, std::string>> entries;
  std::istringstream lines(source);
  bool in_table = false;
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (line == "BEGIN" || line == "END") {
      in_table = line == "BEGIN";
    } else if (in_table && !line.empty()) {
      if (!std::regex_match(line, match, kEntry)) throw std::runtime_error("no entry: " + line);
      entries.emplace_back(std::stoi(match[1]), unescape(match[2]));
    }
  }
  if (in_table) throw std::runtime_error("a table has no end");
  return entries;
}

// The texts of a language by base id.
Texts texts_of(const Language& language) {
  Texts texts;
  for (const auto& [id, text] : parse_entries(read_file(file_name(language)))) {
    texts.emplace(id - language.offset, text);
  }
  return texts;
}

const Language& language(std::string_view extension) {
  const auto found = std::ranges::find(kLanguages, extension, &Language::extension);
  if (found == kLanguages.end()) throw std::runtime_error("unknown language");
  return *found;
}

Texts texts_of(std::string_view extension) { return texts_of(language(extension)); }

Ids ids_of(std::string_view extension) {
  Ids ids;
  for (const auto& [id, text] : texts_of(extension)) ids.insert(id);
  return ids;
}

}  // namespace

TEST(StringTable, EnglishHasEveryTextExactly) { EXPECT_EQ(texts_of("us"), kEnglish); }

TEST(StringTable, EnglishHasEveryId) { EXPECT_EQ(ids_of("us"), kFullSet); }

TEST(StringTable, HungarianHasEveryId) { EXPECT_EQ(ids_of("hu"), kFullSet); }

TEST(StringTable, ItalianHasEveryId) { EXPECT_EQ(ids_of("ita"), kFullSet); }

TEST(StringTable, FrenchHasEveryId) { EXPECT_EQ(ids_of("fra"), kFullSet); }

TEST(StringTable, GermanCoversOnlyButtonsAndMarkers) { EXPECT_EQ(ids_of("ger"), kGermanSet); }

TEST(StringTable, DutchHasItsAccessLabelsAt502To505) { EXPECT_EQ(ids_of("nl"), kDutchSet); }

TEST(StringTable, EachLanguageBeginsWithItsOwnMarker) {
  for (const Language& language : kLanguages) {
    const auto entries = parse_entries(read_file(file_name(language)));
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
    for (const auto& [id, text] : parse_entries(read_file(file_name(language)))) {
      EXPECT_TRUE(seen.insert(id).second) << id << " again in " << language.name;
    }
  }
}

TEST(StringTable, NoTwoFilesShareABlockOfSixteenIds) {
  // Resource compilers store sixteen consecutive ids as one resource, which cannot come from two.
  std::map<int, std::string_view> owners;
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : parse_entries(read_file(file_name(language)))) {
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
    const auto decoded = decode_utf8(read_file(file_name(language)));
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

TEST(StringTable, ReaderRefusesWhatItDoesNotUnderstand) {
  EXPECT_THROW(parse_entries("BEGIN\n  7 no quotes\nEND\n"), std::runtime_error);
  EXPECT_THROW(parse_entries("BEGIN\n  7 \"a\\q\"\nEND\n"), std::runtime_error);
  EXPECT_THROW(parse_entries("BEGIN\n  7 \"a\"\n"), std::runtime_error);
  EXPECT_FALSE(decode_utf8("\xC3"));
  EXPECT_FALSE(decode_utf8("\xE9t"));
  EXPECT_FALSE(decode_utf8("\xC0\x80"));
  EXPECT_EQ(decode_utf8("\xC3\xA9"), U"é");
}
