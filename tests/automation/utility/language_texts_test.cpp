// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The localised texts: what the library holds, and what pvString makes of it.

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>

#include "tests/automation/utility/language_support.h"

namespace pv::test {
namespace {

const std::map<int, std::wstring> kEnglish = {
    {198, L"***** US Resources *****"},
    {200, L"OK"},
    {201, L"Cancel"},
    {202, L"Abort"},
    {203, L"Retry"},
    {204, L"Ignore"},
    {205, L"Yes"},
    {206, L"No"},
    {207, L"Error"},
    {208, L"Untitled"},
    {209, L"Refresh"},
    {210, L"Delete"},
    {211, L"Finish"},
    {212, L"Next >"},
    {213, L"< Back"},
    {214, L"Browse"},
    {215, L"Apply"},
    {216, L"Enable"},
    {217, L"Disable"},
    {218, L"Close"},
    {219, L"Modify"},
    {300, L"-----< frmTechName >-----"},
    {301, L"Kalvos Historian"},
    {302, L"Please enter your name and your comments why you modify this item:"},
    {303, L"Your Name:"},
    {304, L"Comments:"},
    {310, L"Date"},
    {311, L"Time"},
    {312, L"Signature"},
    {313, L"Txm Type"},
    {314, L"Txm CA"},
    {315, L"Txm name"},
    {316, L"Item ID"},
    {317, L"Item Name"},
    {318, L"New value"},
    {319, L"Unit"},
    {320, L"Comments"},
    {321, L"Conditions"},
    {400, L"-----< MODEM >-----"},
    {401,
     L"Transmitter is not available without modem connection!\r\n"
     L"Do you want to start modem connection?"},
    {402, L"Warning!"},
    {403, L"COM"},
    {404, L"MODEM"},
    {500, L"-----< frmAccessEdit >-----"},
    {501, L"Item Access Editor"},
    {510, L"Enable Read:"},
    {511, L"Enable Write:"},
    {512, L"Update password level after Write"},
    {513, L"Display password mask character (*)"},
    {520, L"Always"},
    {521, L"Only if PW1 is set"},
    {522, L"Only if PW2 is set"},
    {523, L"Only if PW3 is set"},
    {524, L"Only if PW4 is set"},
    {600, L"-----< Password >-----"},
    {601, L"Kalvos Password"},
    {602, L"Enter Password:"},
    {603, L"New Password:"},
    {604, L"Repeat New Password:"},
    {610, L"Incorrect Password!"},
    {611, L"Please repeat new password!"},
    {1100, L"-----< Error >-----"},
    {1101, L"Write Protected Item:"},
    {1102, L"Necessary Password Level:"},
    {1103, L"Read Protected Item:"},
};

constexpr int kLanguages = 6;
constexpr int kGerman = 3;
constexpr int kDutch = 6;

constexpr int kNumbers = 0x10000;

int own_id(int id, int language) { return id + 1000 * (language - 1); }

// The base ids for which a language has a text of its own.
std::set<int> covered(int language) {
  std::set<int> ids;
  for (const auto& [id, text] : kEnglish) {
    const bool german = id <= 219 || id == 300 || id == 400 || id == 500 || id == 600 || id == 1100;
    const bool dutch = id < 510 || id > 513;
    if ((language != kGerman || german) && (language != kDutch || dutch)) ids.insert(id);
  }
  if (language == kDutch) ids.insert({502, 503, 504, 505});
  return ids;
}

std::set<int> published() {
  std::set<int> ids;
  for (int language = 1; language <= kLanguages; ++language)
    for (const int id : covered(language)) ids.insert(own_id(id, language));
  return ids;
}

// The texts of the file itself.
std::optional<std::wstring> resource(int id) {
  static const Module module;
  const wchar_t* text = nullptr;
  const int length =
      LoadStringW(module.handle(), static_cast<UINT>(id), reinterpret_cast<wchar_t*>(&text), 0);
  if (length <= 0) return std::nullopt;
  return std::wstring(text, static_cast<std::size_t>(length));
}

struct Texts : testing::Test {
  const Object utility = Object::create(L"pvItems32.CUtility");
  Value shown(long id) const { return utility.get(L"pvString", id); }
};

TEST_F(Texts, LibraryHoldsExactlyTheTextsOfSixLanguages) {
  std::set<int> found;
  for (int id = 0; id < kNumbers; ++id) {
    if (resource(id)) found.insert(id);
  }
  EXPECT_EQ(found, published());
}

TEST_F(Texts, EnglishOnesAreTheseWords) {
  for (const auto& [id, text] : kEnglish) {
    EXPECT_EQ(resource(id), text) << id;
    EXPECT_EQ(shown(id), text) << id;
  }
}

TEST_F(Texts, OfEveryLanguageAreItsOwnOrEnglish) {
  for (int language = 1; language <= kLanguages; ++language) {
    const ActiveLanguage active(language);
    const std::set<int> own = covered(language);
    for (const auto& [id, english] : kEnglish) {
      const bool has_own = own.contains(id);
      EXPECT_EQ(shown(id), has_own ? resource(own_id(id, language)).value_or(L"") : english)
          << id << " in language " << language;
    }
  }
}

TEST_F(Texts, OfTheLanguagesAreTranslated) {
  const wchar_t* const yes[] = {L"Yes", L"Igen", L"Ja", L"Sì", L"Oui", L"Ja"};
  const wchar_t* const markers[] = {L"US",      L"Hungarian", L"German",
                                    L"Italian", L"French",    L"Dutch"};
  for (int language = 1; language <= kLanguages; ++language) {
    const ActiveLanguage active(language);
    EXPECT_EQ(shown(205), yes[language - 1]);
    EXPECT_EQ(shown(198), std::wstring(L"***** ") + markers[language - 1] + L" Resources *****");
  }
}

TEST_F(Texts, GermanFallsBackToEnglishBeyondTheGeneralWords) {
  const ActiveLanguage german(kGerman);
  EXPECT_EQ(shown(200), resource(2200).value_or(L""));
  EXPECT_EQ(shown(601), L"Kalvos Password");
  EXPECT_EQ(shown(1101), L"Write Protected Item:");
  EXPECT_EQ(shown(204), L"Ignore");
  EXPECT_EQ(shown(219), L"Modify");
}

TEST_F(Texts, DutchLabelsOfTheAccessEditorStandElsewhere) {
  const ActiveLanguage dutch(kDutch);
  EXPECT_EQ(shown(510), L"Enable Read:");
  EXPECT_EQ(shown(513), L"Display password mask character (*)");
  for (int id = 502; id <= 505; ++id) EXPECT_EQ(shown(id), resource(id + 5000).value_or(L"")) << id;
  EXPECT_NE(shown(501), L"Item Access Editor");
}

TEST_F(Texts, ItalianLeavesBrowseInEnglish) {
  const ActiveLanguage italian(4);
  EXPECT_EQ(shown(214), L"Browse");
}

TEST_F(Texts, ModemQuestionKeepsItsTwoLines) {
  for (int language = 1; language <= kLanguages; ++language) {
    const ActiveLanguage active(language);
    EXPECT_NE(shown(401).text().find(L"\r\n"), std::wstring::npos) << language;
  }
}

TEST_F(Texts, UnknownOnesAreAQuestionMarkInEveryLanguage) {
  for (int language = 1; language <= kLanguages; ++language) {
    const ActiveLanguage active(language);
    for (const long id : {250L, 0L, -1L, 199L, 32767L}) {
      EXPECT_EQ(shown(id), L"?") << id << " in language " << language;
    }
  }
}

// The texts that the dialogs have for themselves are out of reach.
TEST_F(Texts, OtherNumbersAreAQuestionMarkInEveryLanguage) {
  const auto typed = utility.as<_CUtility>();
  const std::set<int> ids = published();
  for (int language = 1; language <= kLanguages; ++language) {
    const ActiveLanguage active(language);
    std::set<int> wrong;
    for (int number = 0; number < kNumbers; ++number) {
      const bool expected =
          ids.contains(own_id(number, language) % kNumbers) || ids.contains(number);
      BSTR text = nullptr;
      ASSERT_EQ(typed->get_pvString(static_cast<pvStringTypes>(number), &text), S_OK);
      if ((view_of(Bstr::attach(text)) != L"?") != expected) wrong.insert(number);
    }
    EXPECT_EQ(wrong, std::set<int>()) << "language " << language;
  }
}

TEST_F(Texts, TextsOfOtherLanguagesCanBeNamedDirectly) {
  EXPECT_EQ(shown(1205), L"Igen");
  EXPECT_EQ(shown(6101), resource(6101).value_or(L""));
  const ActiveLanguage hungarian(2);
  EXPECT_EQ(shown(4205), resource(5205).value_or(L"")) << "the id is moved by one block";
}

TEST_F(Texts, UnknownLanguageFallsBackToEnglish) {
  for (const long language : {0L, 7L, -1L, 100L}) {
    const ActiveLanguage active(language);
    EXPECT_EQ(shown(205), L"Yes") << language;
    EXPECT_EQ(shown(250), L"?") << language;
  }
}

TEST_F(Texts, NumberIsNarrowedTo16Bits) {
  const ActiveLanguage wrapped(8195);  // 200 + 1000 * 8194 is 2200 in 16 bits
  EXPECT_EQ(shown(205), L"Ja");
  EXPECT_EQ(shown(198), L"***** German Resources *****");
}

TEST_F(Texts, AreLookedUpInTheSharedRegistryOnly) {
  const Object own = Object::create(L"pvItems32.CLanguages");
  own.put(L"ActiveLanguageID", 2);
  EXPECT_EQ(shown(205), L"Yes");
}

TEST_F(Texts, FollowTheLanguageAtOnce) {
  const Object other = Object::create(L"pvItems32.CUtility");
  const ActiveLanguage hungarian(2);
  EXPECT_EQ(shown(205), L"Igen");
  EXPECT_EQ(other.get(L"pvString", 205), L"Igen");
}

}  // namespace
}  // namespace pv::test
