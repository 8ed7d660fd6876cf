// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/registration.h"

namespace pv {

/// 64-bit Windows keeps what concerns programs of 32 and of 64 bits in two views of the registry.
enum class View : REGSAM {
  kOwn = 0,
  kOther = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY,
};

/// The part of the registry that holds classes, of the machine or of the user, in one view. Keys
/// are named from there; failures raise the platform's error.
class ClassesRoot {
 public:
  explicit ClassesRoot(Registration scope, View view = View::kOwn)
      : root_(scope == Registration::kUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE),
        view_(static_cast<REGSAM>(view)) {}

  bool has(const std::wstring& key) const;
  bool has_value(const std::wstring& key, const wchar_t* name) const;
  /// Makes the key when it is not there. The value without a name is nullptr.
  void write(const std::wstring& key, const wchar_t* name, const std::wstring& text) const;
  /// With everything below it; a key or value that is not there is none to erase.
  void erase(const std::wstring& key) const;
  void erase_value(const std::wstring& key, const wchar_t* name) const;

 private:
  /// nullptr for a key that there is not.
  HKEY open(const std::wstring& key, REGSAM access) const;

  HKEY root_;
  REGSAM view_;
};

/// "{...}"
std::wstring text_of_guid(REFGUID guid);

}  // namespace pv
