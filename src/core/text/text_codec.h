// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Bytes of files and the texts that they stand for.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/text/ascii.h"

namespace pv {

/// Translates between the bytes of a file and text. The platform supplies its code page, in which
/// the first 128 bytes are those of ASCII, as they are in every code page for files.
class TextCodec {
 public:
  using Widen = std::wstring (*)(std::string_view bytes);
  using Narrow = std::string (*)(std::wstring_view text);

  constexpr TextCodec(Widen widen, Narrow narrow) : widen_(widen), narrow_(narrow) {}

  std::wstring widen(std::string_view bytes) const;
  std::string narrow(std::wstring_view text) const;

  /// The same into a text or to the end of bytes that are there already, which spares allocations.
  void widen(std::string_view bytes, std::wstring& text) const;
  void append_narrowed(std::wstring_view text, std::string& bytes) const;
  void append_narrowed(std::span<const std::wstring_view> texts, std::string& bytes) const;
  /// Each of the texts followed by the separator, a character of ASCII.
  void append_separated(std::span<const std::wstring_view> texts, char separator,
                        std::string& bytes) const;

 private:
  Widen widen_;
  Narrow narrow_;
};

/// One byte per character, U+0000 to U+00FF; other characters are written as '?'.
const TextCodec& latin1_codec();

}  // namespace pv
