// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/letter_case.h"

#include <windows.h>

#include <utility>

namespace pv {
namespace {

void to_lower_case(std::wstring& text) {
  const auto length = static_cast<int>(text.size());
  std::wstring lowered(text.size(), L'\0');
  if (LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, text.data(), length, lowered.data(), length) >
      0) {
    text = std::move(lowered);
  }
}

}  // namespace

const KeyCase& key_case() {
  static constexpr KeyCase mapping(&to_lower_case);
  return mapping;
}

std::wstring upper_case(std::wstring text) {
  CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
  return text;
}

}  // namespace pv
