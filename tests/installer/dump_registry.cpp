// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Writes keys of the registry, with all below them, as lines "key|name=data"; a key has a line of
// its own. Names of keys are lower case, as their case has no meaning. Usage: dump_registry
// (HKLM|HKCU)\key...

#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr REGSAM kRead = KEY_READ | KEY_WOW64_64KEY;

// The same keys under a second name, and what the test platform keeps of its window colours.
const std::wstring kLeftOut[] = {L"hklm\\software\\wow6432node\\classes",
                                 L"hkcu\\software\\wine\\temporary system parameters"};

std::wstring lower(std::wstring text) {
  std::transform(text.begin(), text.end(), text.begin(), std::towlower);
  return text;
}

void say(const std::wstring& text) {
  const int wanted =
      WideCharToMultiByte(CP_UTF8, 0, text.c_str(), text.size(), nullptr, 0, nullptr, nullptr);
  std::string bytes(wanted, '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.c_str(), text.size(), bytes.data(), wanted, nullptr,
                      nullptr);
  std::cout << bytes << '\n';
}

std::wstring text_of(DWORD type, const std::vector<BYTE>& data) {
  if (type == REG_SZ) {
    const std::wstring text(reinterpret_cast<const wchar_t*>(data.data()),
                            data.size() / sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
  }
  std::wstring text = L"(" + std::to_wstring(type) + L")";
  for (const BYTE byte : data) text += L" " + std::to_wstring(byte);
  return text;
}

void say_values(HKEY key, const std::wstring& path) {
  static wchar_t name[16384];
  static std::vector<BYTE> data(1 << 20);
  for (DWORD index = 0;; ++index) {
    DWORD characters = ARRAYSIZE(name), bytes = data.size(), type = 0;
    if (RegEnumValueW(key, index, name, &characters, nullptr, &type, data.data(), &bytes) !=
        ERROR_SUCCESS)
      return;
    say(path + L"|" + name + L"=" + text_of(type, {data.begin(), data.begin() + bytes}));
  }
}

void dump(HKEY parent, const std::wstring& name, const std::wstring& path) {
  if (std::find(std::begin(kLeftOut), std::end(kLeftOut), path) != std::end(kLeftOut)) return;
  HKEY key = nullptr;
  if (RegOpenKeyExW(parent, name.c_str(), 0, kRead, &key) != ERROR_SUCCESS) return;
  say(path + L"|");
  say_values(key, path);
  wchar_t below[256];
  DWORD characters = ARRAYSIZE(below);
  for (DWORD index = 0; RegEnumKeyExW(key, index, below, &characters, nullptr, nullptr, nullptr,
                                      nullptr) == ERROR_SUCCESS;
       ++index, characters = ARRAYSIZE(below))
    dump(key, below, path + L"\\" + lower(below));
  RegCloseKey(key);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  for (int i = 1; i < count; ++i) {
    const std::wstring path = arguments[i];
    const HKEY root = path.substr(0, 4) == L"HKCU" ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
    dump(root, path.substr(5), lower(path));
  }
  return 0;
}
