// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The other process of the fault tests:
//   faults_helper hold <file> <share mode>    keeps the file open until its input ends
//   faults_helper save <file> <times>         saves two item tables in turn; 0 times are for ever
// Each says "ready" when it holds the file, or has saved it for the first time.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/support/object.h"

namespace pv::test {
namespace {

void say_ready() {
  std::puts("ready");
  std::fflush(stdout);
}

std::wstring widened(const std::string& text) { return std::wstring(text.begin(), text.end()); }

int hold(const std::wstring& file, DWORD share) {
  const HANDLE handle = CreateFileW(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return 1;
  say_ready();
  while (std::getchar() != EOF) {
  }
  CloseHandle(handle);
  return 0;
}

Object table_of(int count) {
  const Object items = Object::create(L"pvItems32.CItems");
  for (int i = 1; i <= count; ++i) {
    const std::wstring key = std::to_wstring(i);
    items.call(L"Add", key, i, false, 0, false, false, 0.5F, 8);
  }
  return items;
}

int save(const std::wstring& file, int times) {
  const Object tables[] = {table_of(400), table_of(700)};
  for (int i = 0; times == 0 || i < times; ++i) {
    const bool saved = tables[i % 2].call(L"SaveSettingsNew", file).boolean();
    if (times != 0 && !saved) return 1;  // others may be in the way of one that goes on
    if (i == 0) say_ready();
  }
  return 0;
}

int run(const std::string& task, const std::string& file, const std::string& number) {
  const int value = std::atoi(number.c_str());
  if (task == "hold") return hold(widened(file), static_cast<DWORD>(value));
  if (task == "save") return save(widened(file), value);
  return 2;
}

}  // namespace
}  // namespace pv::test

int main(int argc, char** argv) {
  if (argc != 4 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
  const int result = pv::test::run(argv[1], argv[2], argv[3]);
  CoUninitialize();
  return result;
}
