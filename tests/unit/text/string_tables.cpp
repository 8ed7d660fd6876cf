// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/unit/text/string_tables.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace pv::test {
namespace {

using Numbers = std::map<std::string, int, std::less<>>;

// The lines "#define TEXT_name number" of text_ids.h.
Numbers read_numbers() {
  Numbers numbers;
  std::istringstream lines(read_resource_file("text_ids.h"));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string define, name;
    words >> define >> name;
    if (define != "#define" || !name.starts_with("TEXT_")) continue;
    int number = 0;
    if (!(words >> number) || !(words >> std::ws).eof())
      throw std::runtime_error("no number: " + line);
    numbers.emplace(name, number);
  }
  return numbers;
}

int number_of(std::string_view name) {
  static const Numbers kNumbers = read_numbers();
  const auto number = kNumbers.find(name);
  if (number == kNumbers.end()) throw std::runtime_error("unknown id: " + std::string(name));
  return number->second;
}

// "TEXT_OK", or "DUTCH(TEXT_OK)" for a text of a further language.
int id_of(std::string_view name) {
  const auto open = name.find('(');
  if (open == std::string_view::npos) return number_of(name);
  const auto language = std::ranges::find(kLanguages, name.substr(0, open), &Language::macro);
  if (language == std::end(kLanguages) || !name.ends_with(')'))
    throw std::runtime_error("unknown language: " + std::string(name));
  return language->offset + number_of(name.substr(open + 1, name.size() - open - 2));
}

std::string unescape(std::string_view literal) {
  std::string text;
  for (std::size_t i = 0; i < literal.size(); ++i) {
    if (literal[i] != '\\') {
      text.push_back(literal[i]);
      continue;
    }
    const char next = ++i < literal.size() ? literal[i] : '\0';
    if (next != 'r' && next != 'n')
      throw std::runtime_error("unknown escape in: " + std::string(literal));
    text.push_back(next == 'r' ? '\r' : '\n');
  }
  return text;
}

// An id and its text in quotes.
std::pair<int, std::string> parse_entry(std::string_view line) {
  const auto name = line.find_first_not_of(' ');
  const auto blank = line.find(' ', name);
  const auto open = line.find('"');
  const auto close = line.find('"', open + 1);
  if (open == std::string_view::npos || blank + 1 != open || close + 1 != line.size())
    throw std::runtime_error("no entry: " + std::string(line));
  return {id_of(line.substr(name, blank - name)),
          unescape(line.substr(open + 1, close - open - 1))};
}

const Language& language(std::string_view extension) {
  const auto found = std::ranges::find(kLanguages, extension, &Language::extension);
  if (found == std::end(kLanguages)) throw std::runtime_error("unknown language");
  return *found;
}

}  // namespace

std::string read_resource_file(const std::string& name) {
  const std::string path = PV_RESOURCE_DIR "/" + name;
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("cannot open " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string table_source(const Language& language) {
  return read_resource_file("strings_" + std::string(language.extension) + ".rc");
}

std::vector<std::pair<int, std::string>> parse_entries(const std::string& source) {
  std::vector<std::pair<int, std::string>> entries;
  std::istringstream lines(source);
  bool in_table = false;
  for (std::string line; std::getline(lines, line);) {
    if (line == "BEGIN" || line == "END") {
      in_table = line == "BEGIN";
    } else if (in_table && !line.empty()) {
      entries.push_back(parse_entry(line));
    }
  }
  if (in_table) throw std::runtime_error("a table has no end");
  return entries;
}

std::vector<std::pair<int, std::string>> parse_labels(const std::string& source) {
  constexpr std::string_view kOpen = " LABEL { ", kClose = " }";
  std::vector<std::pair<int, std::string>> entries;
  std::istringstream lines(source);
  for (std::string line; std::getline(lines, line);) {
    const auto open = line.find(kOpen);
    if (open == std::string::npos) continue;
    if (!line.ends_with(kClose)) throw std::runtime_error("no label: " + line);
    line.resize(line.size() - kClose.size());
    entries.push_back(parse_entry(line.replace(open, kOpen.size(), " ")));
  }
  return entries;
}

Texts texts_of(const Language& language) {
  Texts texts;
  for (const auto& [id, text] : parse_entries(table_source(language)))
    texts.emplace(id - language.offset, text);
  return texts;
}

Texts texts_of(std::string_view extension) { return texts_of(language(extension)); }

Ids ids_of(std::string_view extension) {
  Ids ids;
  for (const auto& [id, text] : texts_of(extension)) ids.insert(id);
  return ids;
}

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

}  // namespace pv::test
