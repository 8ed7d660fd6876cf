// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/user_locale.h"

#include <algorithm>

#include "com/automation.h"

namespace pv::test {

std::wstring user_decimal() {
  wchar_t text[8] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, ARRAYSIZE(text));
  return text;
}

namespace {
void set_user_decimal(const wchar_t* separator) {
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator);
}
}  // namespace

UserDecimal::UserDecimal(const wchar_t* separator) : before_(user_decimal()) {
  set_user_decimal(separator);
}

UserDecimal::~UserDecimal() { set_user_decimal(before_.c_str()); }

std::wstring in_user_locale(std::wstring number) {
  std::replace(number.begin(), number.end(), L'.', user_decimal()[0]);
  return number;
}

std::string in_code_page(std::wstring_view text) {
  const auto length = static_cast<int>(text.size());
  std::string bytes(text.size() * 4, '\0');
  bytes.resize(static_cast<std::size_t>(
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes.data(),
                          static_cast<int>(bytes.size()), nullptr, nullptr)));
  return bytes;
}

}  // namespace pv::test
