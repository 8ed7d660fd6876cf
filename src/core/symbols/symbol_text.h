// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The text form of a symbol, the small picture beside an item.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace pv {

/// A square of pixels, each the number of a colour of the palette; empty to begin with.
struct Symbol {
  static constexpr int kSide = 32;
  static constexpr int kColours = 16;
  static constexpr std::uint8_t kEmpty = 15;

  Symbol() { pixels.fill(kEmpty); }

  static bool contains(int x, int y) { return x >= 0 && x < kSide && y >= 0 && y < kSide; }
  /// The place must lie inside.
  std::uint8_t& at(int x, int y) { return pixels[index(x, y)]; }
  std::uint8_t at(int x, int y) const { return pixels[index(x, y)]; }

  bool operator==(const Symbol&) const = default;

  std::array<std::uint8_t, std::size_t{kSide} * kSide> pixels{};

 private:
  static std::size_t index(int x, int y) {
    return static_cast<std::size_t>(y) * kSide + static_cast<std::size_t>(x);
  }
};

/// A colour of the palette.
struct Rgb {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
};

/// From 0 black to 15 white; the number must be one of them.
Rgb symbol_colour(std::uint8_t number);

/// The same as screen readers are told it: "#RRGGBB", hexadecimal.
std::wstring colour_code(std::uint8_t number);

/// "S1:" (the version of the form), then the rows from the top as runs: a letter A to P for the
/// colour and, when there is more than one pixel, their number. The empty symbol is "S1:P1024".
/// The text is printable and has neither "|" nor line breaks.
std::wstring format_symbol(const Symbol& symbol);

/// nullopt for a text of another form. Small letters count as capitals.
std::optional<Symbol> parse_symbol(std::wstring_view text);

}  // namespace pv
