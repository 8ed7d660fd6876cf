// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The texts of the symbol editor, as the source of the resources has them.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

#include "tests/unit/text/string_tables.h"

namespace pv::test {
namespace {

const Texts kEnglish = {{7001, "Symbol Editor"},
                        {7010, "Pencil"},
                        {7011, "Line"},
                        {7012, "Rectangle"},
                        {7013, "Fill"},
                        {7014, "Eraser"},
                        {7020, "Undo"},
                        {7021, "Clear"},
                        {7022, "Mirror horizontally"},
                        {7023, "Mirror vertically"},
                        {7030, "Drawing:"},
                        {7031, "Colors:"},
                        {7032, "Preview:"},
                        {7033, "Symbol from another editor:"},
                        {7034, "Discard the changes?"}};

const Ids kFieldNames = {7030, 7031, 7032, 7033};

Texts labels_of(const Language& language) {
  Texts labels;
  for (const auto& [id, text] : parse_labels(read_resource_file("strings_symbol_editor.rc"))) {
    const int base = id - language.offset;
    if (kEnglish.contains(base)) labels.emplace(base, text);
  }
  return labels;
}

TEST(SymbolLabels, EnglishHasTheseWords) { EXPECT_EQ(labels_of(kLanguages[0]), kEnglish); }

TEST(SymbolLabels, EveryLanguageHasEachText) {
  const auto all = parse_labels(read_resource_file("strings_symbol_editor.rc"));
  EXPECT_EQ(all.size(), std::size(kLanguages) * kEnglish.size());
  for (const Language& language : kLanguages) {
    EXPECT_EQ(labels_of(language).size(), kEnglish.size()) << language.name;
  }
}

TEST(SymbolLabels, TextsUseOnlyTheLettersOfTheirLanguage) {
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : labels_of(language)) {
      const auto decoded = decode_utf8(text);
      ASSERT_TRUE(decoded) << language.name << ' ' << id;
      ASSERT_FALSE(decoded->empty()) << language.name << ' ' << id;
      for (const char32_t letter : *decoded)
        EXPECT_TRUE(letter < 0x80 || language.letters.find(letter) != std::u32string_view::npos)
            << language.name << ' ' << text;
    }
  }
}

TEST(SymbolLabels, OnlyNamesOfFieldsEndWithAColon) {
  for (const Language& language : kLanguages) {
    for (const auto& [id, text] : labels_of(language))
      EXPECT_EQ(text.ends_with(':'), kFieldNames.contains(id)) << language.name << ' ' << text;
  }
}

TEST(SymbolLabels, EachTextOfALanguageIsDifferent) {
  for (const Language& language : kLanguages) {
    std::set<std::string> texts;
    for (const auto& [id, text] : labels_of(language)) texts.insert(text);
    EXPECT_EQ(texts.size(), kEnglish.size()) << language.name;
  }
}

}  // namespace
}  // namespace pv::test
