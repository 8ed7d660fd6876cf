// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/text_codec.h"

#include <algorithm>
#include <cstdint>

namespace pv {
namespace {

std::wstring latin1_widen(std::string_view bytes) {
  std::wstring text(bytes.size(), L'\0');
  std::transform(bytes.begin(), bytes.end(), text.begin(),
                 [](char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); });
  return text;
}

std::string latin1_narrow(std::wstring_view text) {
  std::string bytes(text.size(), '\0');
  std::transform(text.begin(), text.end(), bytes.begin(), [](wchar_t c) {
    return static_cast<std::uint32_t>(c) <= 0xFF ? static_cast<char>(static_cast<unsigned char>(c))
                                                 : '?';
  });
  return bytes;
}

std::size_t total_size(std::span<const std::wstring_view> texts) {
  std::size_t size = 0;
  for (const std::wstring_view text : texts) size += text.size();
  return size;
}

/// Writes characters to bytes as if all were ASCII, and tells whether they are.
class AsciiWriter {
 public:
  explicit AsciiWriter(char* to) : to_(to) {}

  void write(std::wstring_view text) {
    for (const wchar_t c : text) {
      seen_ |= static_cast<std::uint32_t>(c);
      *to_++ = static_cast<char>(c);
    }
  }
  void write(char c) { *to_++ = c; }
  bool all_ascii() const { return seen_ < 0x80; }

 private:
  char* to_;
  std::uint32_t seen_ = 0;
};

}  // namespace

std::wstring TextCodec::widen(std::string_view bytes) const {
  std::wstring text;
  widen(bytes, text);
  return text;
}

std::string TextCodec::narrow(std::wstring_view text) const {
  std::string bytes;
  append_narrowed(text, bytes);
  return bytes;
}

void TextCodec::widen(std::string_view bytes, std::wstring& text) const {
  if (is_ascii(bytes)) {
    text.resize(bytes.size());
    std::copy(bytes.begin(), bytes.end(), text.begin());
  } else {
    text = widen_(bytes);
  }
}

void TextCodec::append_narrowed(std::wstring_view text, std::string& bytes) const {
  append_narrowed({&text, 1}, bytes);
}

void TextCodec::append_narrowed(std::span<const std::wstring_view> texts,
                                std::string& bytes) const {
  const std::size_t begin = bytes.size();
  bytes.resize(begin + total_size(texts));
  AsciiWriter writer(bytes.data() + begin);
  for (const std::wstring_view text : texts) writer.write(text);
  if (writer.all_ascii()) return;
  bytes.resize(begin);
  for (const std::wstring_view text : texts) bytes += narrow_(text);
}

void TextCodec::append_separated(std::span<const std::wstring_view> texts, char separator,
                                 std::string& bytes) const {
  const std::size_t begin = bytes.size();
  bytes.resize(begin + total_size(texts) + texts.size());
  AsciiWriter writer(bytes.data() + begin);
  for (const std::wstring_view text : texts) {
    writer.write(text);
    writer.write(separator);
  }
  if (writer.all_ascii()) return;
  bytes.resize(begin);
  for (const std::wstring_view text : texts) (bytes += narrow_(text)) += separator;
}

const TextCodec& latin1_codec() {
  static constexpr TextCodec kCodec{latin1_widen, latin1_narrow};
  return kCodec;
}

}  // namespace pv
