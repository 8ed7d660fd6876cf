// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Texts as the user's locale and the system's code page have them, told by the platform and not by
// the library.
#pragma once

#include <string>
#include <string_view>

namespace pv::test {

/// The decimal separator.
std::wstring user_decimal();
/// A decimal separator of the user, as set in the control panel, for as long as it lives.
class UserDecimal {
 public:
  explicit UserDecimal(const wchar_t* separator);
  ~UserDecimal();
  UserDecimal(const UserDecimal&) = delete;
  UserDecimal& operator=(const UserDecimal&) = delete;

 private:
  std::wstring before_;
};
/// A number text written with '.', as the user's locale writes it.
std::wstring in_user_locale(std::wstring number);
/// Text as the bytes of the code page; '?' for what it lacks.
std::string in_code_page(std::wstring_view text);

}  // namespace pv::test
