// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/code_page.h"

#include "com/automation.h"

namespace pv {
namespace {

std::wstring widen(std::string_view bytes) {
  const auto length = static_cast<int>(bytes.size());
  std::wstring text(bytes.size(), L'\0');
  text.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), length)));
  return text;
}

// UTF-8 has every character, so the platform refuses the flag there.
DWORD narrowing() { return GetACP() == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS; }

std::string narrow(std::wstring_view text) {
  const auto length = static_cast<int>(text.size());
  const DWORD flags = narrowing();
  const int needed =
      WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_ACP, flags, text.data(), length, bytes.data(), needed, nullptr, nullptr);
  return bytes;
}

wchar_t code_of(wchar_t character) {
  if (character < 0x80) return character;
  const std::string byte = narrow({&character, 1});
  const bool known = byte.size() == 1 && byte[0] != '?';
  return known ? static_cast<wchar_t>(static_cast<unsigned char>(byte[0])) : character;
}

}  // namespace

std::wstring character_codes(std::wstring_view text) {
  std::wstring codes(text);
  for (wchar_t& c : codes) c = code_of(c);
  return codes;
}

const TextCodec& ansi_codec() {
  static const TextCodec codec{widen, narrow};
  return codec;
}

}  // namespace pv
