// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/classes_root.h"

#include "com/failure.h"

namespace pv {
namespace {

const std::wstring kClasses = L"Software\\Classes\\";

void check_registry(LSTATUS status) { check(HRESULT_FROM_WIN32(static_cast<DWORD>(status))); }

}  // namespace

HKEY ClassesRoot::open(const std::wstring& key, REGSAM access) const {
  HKEY opened = nullptr;
  const LSTATUS status = RegOpenKeyExW(root_, (kClasses + key).c_str(), 0, access | view_, &opened);
  if (status == ERROR_FILE_NOT_FOUND) return nullptr;
  check_registry(status);
  return opened;
}

bool ClassesRoot::has(const std::wstring& key) const {
  const HKEY opened = open(key, KEY_READ);
  if (opened) RegCloseKey(opened);
  return opened != nullptr;
}

bool ClassesRoot::has_value(const std::wstring& key, const wchar_t* name) const {
  const HKEY opened = open(key, KEY_READ);
  if (!opened) return false;
  const LSTATUS status = RegQueryValueExW(opened, name, nullptr, nullptr, nullptr, nullptr);
  RegCloseKey(opened);
  return status == ERROR_SUCCESS;
}

void ClassesRoot::write(const std::wstring& key, const wchar_t* name,
                        const std::wstring& text) const {
  HKEY opened = nullptr;
  check_registry(RegCreateKeyExW(root_, (kClasses + key).c_str(), 0, nullptr, 0, KEY_WRITE | view_,
                                 nullptr, &opened, nullptr));
  const DWORD bytes = (text.size() + 1) * sizeof(wchar_t);
  const LSTATUS written =
      RegSetValueExW(opened, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
  RegCloseKey(opened);
  check_registry(written);
}

void ClassesRoot::erase(const std::wstring& key) const {
  const HKEY opened = open(key, KEY_READ | KEY_SET_VALUE | DELETE);
  if (!opened) return;
  const LSTATUS emptied = RegDeleteTreeW(opened, nullptr);
  RegCloseKey(opened);
  check_registry(emptied);
  check_registry(RegDeleteKeyExW(root_, (kClasses + key).c_str(), view_, 0));
}

void ClassesRoot::erase_value(const std::wstring& key, const wchar_t* name) const {
  const HKEY opened = open(key, KEY_SET_VALUE);
  if (!opened) return;
  const LSTATUS status = RegDeleteValueW(opened, name);
  RegCloseKey(opened);
  if (status != ERROR_FILE_NOT_FOUND) check_registry(status);
}

std::wstring text_of_guid(REFGUID guid) {
  wchar_t text[40];
  StringFromGUID2(guid, text, ARRAYSIZE(text));
  return text;
}

}  // namespace pv
