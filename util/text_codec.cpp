#include "util/text_codec.h"

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

// Without a branch per character, which lets the compiler take many at once.
template <class Text>
bool all_ascii(Text text) {
  std::uint32_t seen = 0;
  for (const auto c : text) seen |= static_cast<std::uint32_t>(c);
  return seen < 0x80;
}

}  // namespace

bool is_ascii(std::wstring_view text) { return all_ascii(text); }

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
  if (all_ascii(bytes)) {
    text.assign(bytes.begin(), bytes.end());
  } else {
    text = widen_(bytes);
  }
}

void TextCodec::append_narrowed(std::wstring_view text, std::string& bytes) const {
  if (!is_ascii(text)) {
    bytes += narrow_(text);
    return;
  }
  const std::size_t begin = bytes.size();
  bytes.resize(begin + text.size());
  std::transform(text.begin(), text.end(), bytes.data() + begin,
                 [](wchar_t c) { return static_cast<char>(c); });
}

const TextCodec& latin1_codec() {
  static constexpr TextCodec kCodec{latin1_widen, latin1_narrow};
  return kCodec;
}

}  // namespace pv
