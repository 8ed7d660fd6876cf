// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The text form of symbols: each input is read as a text, and stands for pixels besides.

#include <algorithm>
#include <string>

#include "core/symbols/symbol_text.h"
#include "tests/fuzz/target.h"

namespace pv::fuzz {
namespace {

Symbol drawn(std::string_view bytes) {
  Symbol symbol;
  const std::size_t count = std::min(bytes.size(), symbol.pixels.size());
  for (std::size_t i = 0; i < count; ++i) {
    symbol.pixels[i] = static_cast<unsigned char>(bytes[i]) % Symbol::kColours;
  }
  return symbol;
}

void require_written(const Symbol& symbol) {
  const std::wstring text = format_symbol(symbol);
  require(parse_symbol(text) == symbol, "a written symbol reads the same");
  require(std::all_of(text.begin(), text.end(), [](wchar_t c) { return c > L' ' && c < 127; }),
          "the text is printable");
  require(text.find(L'|') == std::wstring::npos, "the text can be the field of a record");
}

}  // namespace

void symbols(std::string_view bytes) {
  require_written(drawn(bytes));
  std::wstring text = wide(bytes);
  const auto symbol = parse_symbol(text);
  if (symbol) {
    require(std::all_of(symbol->pixels.begin(), symbol->pixels.end(),
                        [](std::uint8_t pixel) { return pixel < Symbol::kColours; }),
            "each pixel has a colour of the palette");
    require_written(*symbol);
  }
  for (wchar_t& c : text) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  require(parse_symbol(text) == symbol, "small letters count as capitals");
}

}  // namespace pv::fuzz
