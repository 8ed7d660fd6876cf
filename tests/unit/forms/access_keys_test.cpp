// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/forms/access_keys.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/unit/list/latin_case.h"

namespace pv {
namespace {

using test::latin_case;
using Captions = std::vector<std::wstring>;

Captions marked(const Captions& captions) { return with_access_keys(captions, latin_case()); }

// The access keys in marked captions, as the platform reads them.
std::vector<std::wstring> keys_of(const Captions& captions) {
  std::vector<std::wstring> keys;
  for (const std::wstring& caption : captions) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
      if (caption[i] != L'&') continue;
      if (caption[i + 1] != L'&') keys.push_back(latin_case().fold(caption.substr(i + 1, 1)));
      ++i;
    }
  }
  return keys;
}

TEST(AccessKeys, NoCaptionsGiveNoCaptions) { EXPECT_TRUE(marked({}).empty()); }

TEST(AccessKeys, TheInitialIsPreferred) {
  EXPECT_EQ(marked({L"Yes", L"No", L"Cancel"}), (Captions{L"&Yes", L"&No", L"&Cancel"}));
}

TEST(AccessKeys, ATakenInitialMovesToTheNextLetter) {
  EXPECT_EQ(marked({L"Abbruch", L"Abbrechen"}), (Captions{L"&Abbruch", L"A&bbrechen"}));
}

TEST(AccessKeys, InitialsOfWordsComeBeforeInnerLetters) {
  EXPECT_EQ(marked({L"Enter", L"Enter Password:"}), (Captions{L"&Enter", L"Enter &Password:"}));
}

TEST(AccessKeys, UpperAndLowerCaseAreOneKey) {
  EXPECT_EQ(marked({L"Open", L"oK"}), (Captions{L"&Open", L"o&K"}));
}

TEST(AccessKeys, AccentedLettersComeLast) {
  EXPECT_EQ(marked({L"Úton", L"Írás"}), (Captions{L"Ú&ton", L"Í&rás"}));
}

TEST(AccessKeys, LettersThatReachBelowTheLineComeAfterThoseThatDoNot) {
  EXPECT_EQ(marked({L"Újra"}), (Captions{L"Új&ra"}));
  EXPECT_EQ(marked({L"gap", L"yes", L"quit", L"jump", L"page"}),
            (Captions{L"g&ap", L"y&es", L"q&uit", L"ju&mp", L"&page"}));
  EXPECT_EQ(marked({L"Yes", L"Page", L"Join", L"Quit", L"Go"}),
            (Captions{L"&Yes", L"&Page", L"&Join", L"&Quit", L"&Go"}));
  EXPECT_EQ(marked({L"gyp"}), (Captions{L"&gyp"}));
}

TEST(AccessKeys, AnAccentedLetterServesWhenNothingElseIsLeft) {
  EXPECT_EQ(marked({L"S", L"i", L"Sì"}), (Captions{L"&S", L"&i", L"S&ì"}));
}

TEST(AccessKeys, AnAccentedLetterStartsNoNewWord) {
  EXPECT_EQ(marked({L"L", L"Lösch en"}), (Captions{L"&L", L"Lösch &en"}));
}

TEST(AccessKeys, HoldersMoveWhenALaterCaptionHasNoOtherKey) {
  EXPECT_EQ(marked({L"AB", L"A"}), (Captions{L"A&B", L"&A"}));
  EXPECT_EQ(marked({L"AB", L"BC", L"A"}), (Captions{L"A&B", L"B&C", L"&A"}));
}

TEST(AccessKeys, ACaptionWithoutAnyFreeLetterGetsNone) {
  EXPECT_EQ(marked({L"A", L"A"}), (Captions{L"&A", L"A"}));
  EXPECT_EQ(marked({L"", L"...", L"< >"}), (Captions{L"", L"...", L"< >"}));
}

TEST(AccessKeys, DigitsServe) { EXPECT_EQ(marked({L"1", L"12"}), (Captions{L"&1", L"1&2"})); }

TEST(AccessKeys, AmpersandsOfTheTextAreShown) {
  EXPECT_EQ(without_access_key(L"A & B && C"), L"A && B &&&& C");
  EXPECT_EQ(marked({L"& Co", L"C&A"}), (Captions{L"&& &Co", L"C&&&A"}));
}

TEST(AccessKeys, KeysAreUniqueInALargeForm) {
  const Captions captions = {L"Adja meg a jelszót:",
                             L"Új jelszó:",
                             L"Új jelszó még egyszer:",
                             L"OK",
                             L"Módosítás",
                             L"Mégse",
                             L"Mindig",
                             L"Megszakítás",
                             L"Megjegyzés:"};
  const auto keys = keys_of(marked(captions));
  EXPECT_EQ(keys.size(), captions.size());
  EXPECT_EQ(std::set<std::wstring>(keys.begin(), keys.end()).size(), captions.size());
}

}  // namespace
}  // namespace pv
