// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/symbols/symbol_text.h"

#include "core/text/ascii.h"

#include <algorithm>

namespace pv {
namespace {

constexpr std::wstring_view kVersion = L"S1:";

// The colours that the platform's palettes begin with.
constexpr std::array<Rgb, Symbol::kColours> kPalette = {{{0, 0, 0},
                                                         {0, 0, 128},
                                                         {0, 128, 0},
                                                         {0, 128, 128},
                                                         {128, 0, 0},
                                                         {128, 0, 128},
                                                         {128, 128, 0},
                                                         {192, 192, 192},
                                                         {128, 128, 128},
                                                         {0, 0, 255},
                                                         {0, 255, 0},
                                                         {0, 255, 255},
                                                         {255, 0, 0},
                                                         {255, 0, 255},
                                                         {255, 255, 0},
                                                         {255, 255, 255}}};

bool takes_version(std::wstring_view& text) {
  const bool same =
      text.size() >= kVersion.size() &&
      std::equal(kVersion.begin(), kVersion.end(), text.begin(),
                 [](wchar_t own, wchar_t given) { return own == upper_ascii(given); });
  if (same) text.remove_prefix(kVersion.size());
  return same;
}

std::optional<std::uint8_t> take_colour(std::wstring_view& text) {
  const int colour = upper_ascii(text.front()) - L'A';
  text.remove_prefix(1);
  if (colour < 0 || colour >= Symbol::kColours) return std::nullopt;
  return static_cast<std::uint8_t>(colour);
}

// The length of a run, 1 when it is not given; stops counting beyond what a symbol can hold.
std::size_t take_count(std::wstring_view& text, std::size_t limit) {
  if (text.empty() || text.front() < L'0' || text.front() > L'9') return 1;
  std::size_t count = 0;
  while (!text.empty() && text.front() >= L'0' && text.front() <= L'9') {
    count = std::min(count * 10 + static_cast<std::size_t>(text.front() - L'0'), limit + 1);
    text.remove_prefix(1);
  }
  return count;
}

}  // namespace

Rgb symbol_colour(std::uint8_t number) { return kPalette[number]; }

std::wstring colour_code(std::uint8_t number) {
  constexpr std::wstring_view kDigits = L"0123456789ABCDEF";
  const Rgb colour = symbol_colour(number);
  std::wstring code = L"#";
  for (const std::uint8_t part : {colour.red, colour.green, colour.blue}) {
    code += kDigits[part / 16];
    code += kDigits[part % 16];
  }
  return code;
}

std::wstring format_symbol(const Symbol& symbol) {
  std::wstring text(kVersion);
  auto run = symbol.pixels.begin();
  while (run != symbol.pixels.end()) {
    const auto end = std::find_if(run, symbol.pixels.end(),
                                  [colour = *run](std::uint8_t pixel) { return pixel != colour; });
    text += static_cast<wchar_t>(L'A' + *run);
    if (end - run > 1) text += std::to_wstring(end - run);
    run = end;
  }
  return text;
}

std::optional<Symbol> parse_symbol(std::wstring_view text) {
  if (!takes_version(text)) return std::nullopt;
  Symbol symbol;
  auto next = symbol.pixels.begin();
  while (!text.empty()) {
    const auto left = static_cast<std::size_t>(symbol.pixels.end() - next);
    const auto colour = take_colour(text);
    const std::size_t count = take_count(text, left);
    if (!colour || count == 0 || count > left) return std::nullopt;
    next = std::fill_n(next, count, *colour);
  }
  if (next != symbol.pixels.end()) return std::nullopt;
  return symbol;
}

}  // namespace pv
