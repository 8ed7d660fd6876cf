// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The string tables as their source text, read without a resource compiler.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace pv::test {

struct Language {
  std::string_view extension;
  std::string_view name;
  std::string_view macro;  // which puts an id into the block of this language; none in English
  int offset;
  std::u32string_view letters;  // what its alphabet and typography have beyond ASCII
};

inline constexpr Language kLanguages[] = {
    {"us", "US", "", 0, U""},
    {"hu", "Hungarian", "HUNGARIAN", 1000, U"áéíóöőúüűÁÉÍÓÖŐÚÜŰ"},
    {"ger", "German", "GERMAN", 2000, U"äöüßÄÖÜ"},
    {"ita", "Italian", "ITALIAN", 3000, U"àèéìòùÀÈÉÌÒÙ"},
    {"fra", "French", "FRENCH", 4000, U"àâçèéêëîïôùûÀÂÇÈÉÊËÎÏÔÙÛ\u00A0"},
    {"nl", "Dutch", "DUTCH", 5000, U"ëïéöËÏÉÖ"},
};

using Ids = std::set<int>;
using Texts = std::map<int, std::string>;

/// The bytes of a file of the folder resources/.
std::string read_resource_file(const std::string& name);
std::string table_source(const Language& language);

/// The entries of tables in the order of the source. Throws std::runtime_error for a line that is
/// no entry, so that none is overlooked, and for an id that text_ids.h does not have.
std::vector<std::pair<int, std::string>> parse_entries(const std::string& source);

/// The same of a source with labels, each "id LABEL { text }".
std::vector<std::pair<int, std::string>> parse_labels(const std::string& source);

/// The texts of a language by the ids of the English ones.
Texts texts_of(const Language& language);
Texts texts_of(std::string_view extension);
Ids ids_of(std::string_view extension);

/// Decodes strictly: nothing when the bytes are not UTF-8 (overlong forms, surrogates and values
/// beyond the last code point included).
std::optional<std::u32string> decode_utf8(std::string_view bytes);

}  // namespace pv::test
