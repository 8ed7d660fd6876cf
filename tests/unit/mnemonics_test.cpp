#include "util/mnemonics.h"

#include <gtest/gtest.h>

#include <set>

#include "com/key_fold.h"

namespace pv {
namespace {

using Captions = std::vector<std::wstring>;

// The access keys in marked captions, as the platform reads them.
std::vector<std::wstring> keys_of(const Captions& marked) {
  std::vector<std::wstring> keys;
  for (const std::wstring& caption : marked) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
      if (caption[i] != L'&') continue;
      if (caption[i + 1] != L'&') keys.push_back(fold_key(caption.substr(i + 1, 1)));
      ++i;
    }
  }
  return keys;
}

TEST(Mnemonics, NoCaptionsGiveNoCaptions) { EXPECT_TRUE(with_mnemonics({}).empty()); }

TEST(Mnemonics, TheInitialIsPreferred) {
  EXPECT_EQ(with_mnemonics({L"Yes", L"No", L"Cancel"}), (Captions{L"&Yes", L"&No", L"&Cancel"}));
}

TEST(Mnemonics, ATakenInitialMovesToTheNextLetter) {
  EXPECT_EQ(with_mnemonics({L"Abbruch", L"Abbrechen"}), (Captions{L"&Abbruch", L"A&bbrechen"}));
}

TEST(Mnemonics, InitialsOfWordsComeBeforeInnerLetters) {
  EXPECT_EQ(with_mnemonics({L"Enter", L"Enter Password:"}),
            (Captions{L"&Enter", L"Enter &Password:"}));
}

TEST(Mnemonics, UpperAndLowerCaseAreOneKey) {
  EXPECT_EQ(with_mnemonics({L"Open", L"oK"}), (Captions{L"&Open", L"o&K"}));
}

TEST(Mnemonics, AccentedLettersComeLast) {
  EXPECT_EQ(with_mnemonics({L"Újra", L"Írás"}), (Captions{L"Ú&jra", L"Í&rás"}));
}

TEST(Mnemonics, AnAccentedLetterServesWhenNothingElseIsLeft) {
  EXPECT_EQ(with_mnemonics({L"S", L"i", L"Sì"}), (Captions{L"&S", L"&i", L"S&ì"}));
}

TEST(Mnemonics, AnAccentedLetterStartsNoNewWord) {
  EXPECT_EQ(with_mnemonics({L"L", L"Lösch en"}), (Captions{L"&L", L"Lösch &en"}));
}

TEST(Mnemonics, HoldersMoveWhenALaterCaptionHasNoOtherKey) {
  EXPECT_EQ(with_mnemonics({L"AB", L"A"}), (Captions{L"A&B", L"&A"}));
  EXPECT_EQ(with_mnemonics({L"AB", L"BC", L"A"}), (Captions{L"A&B", L"B&C", L"&A"}));
}

TEST(Mnemonics, ACaptionWithoutAnyFreeLetterGetsNone) {
  EXPECT_EQ(with_mnemonics({L"A", L"A"}), (Captions{L"&A", L"A"}));
  EXPECT_EQ(with_mnemonics({L"", L"...", L"< >"}), (Captions{L"", L"...", L"< >"}));
}

TEST(Mnemonics, DigitsServe) {
  EXPECT_EQ(with_mnemonics({L"1", L"12"}), (Captions{L"&1", L"1&2"}));
}

TEST(Mnemonics, AmpersandsOfTheTextAreShown) {
  EXPECT_EQ(without_mnemonic(L"A & B && C"), L"A && B &&&& C");
  EXPECT_EQ(with_mnemonics({L"& Co", L"C&A"}), (Captions{L"&& &Co", L"C&&&A"}));
}

TEST(Mnemonics, KeysAreUniqueInALargeForm) {
  const Captions captions = {L"Adja meg a jelszót:",
                             L"Új jelszó:",
                             L"Új jelszó még egyszer:",
                             L"OK",
                             L"Módosítás",
                             L"Mégse",
                             L"Mindig",
                             L"Megszakítás",
                             L"Megjegyzés:"};
  const auto keys = keys_of(with_mnemonics(captions));
  EXPECT_EQ(keys.size(), captions.size());
  EXPECT_EQ(std::set<std::wstring>(keys.begin(), keys.end()).size(), captions.size());
}

}  // namespace
}  // namespace pv
