// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/platform_call.h"

#include <gtest/gtest.h>

#include <cstring>

namespace pv::dialogs_test {
namespace {

template <class T>
T* at(char* base, ULONG_PTR offset) {
  return reinterpret_cast<T*>(base + offset);
}

// Where the loader wrote the address of an imported function; null when it is not imported.
ULONG_PTR* import_slot(char* base, const char* name) {
  const auto* dos = at<IMAGE_DOS_HEADER>(base, 0);
  const auto* headers = at<IMAGE_NT_HEADERS>(base, static_cast<ULONG_PTR>(dos->e_lfanew));
  const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* from = at<IMAGE_IMPORT_DESCRIPTOR>(base, directory.VirtualAddress); from->Name;
       ++from) {
    const auto* named = at<IMAGE_THUNK_DATA>(base, from->OriginalFirstThunk);
    for (auto* slot = at<ULONG_PTR>(base, from->FirstThunk); named->u1.AddressOfData;
         ++named, ++slot) {
      if (IMAGE_SNAP_BY_ORDINAL(named->u1.Ordinal)) continue;
      if (std::strcmp(at<IMAGE_IMPORT_BY_NAME>(base, named->u1.AddressOfData)->Name, name) == 0)
        return slot;
    }
  }
  return nullptr;
}

void write(ULONG_PTR* slot, ULONG_PTR value) {
  DWORD protection = 0;
  VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
  *slot = value;
  VirtualProtect(slot, sizeof *slot, protection, &protection);
}

}  // namespace

PlatformCall::PlatformCall(const char* name, ULONG_PTR replacement)
    : slot_(import_slot(reinterpret_cast<char*>(GetModuleHandleW(L"pvItems32.dll")), name)) {
  EXPECT_TRUE(slot_) << name << " is not imported";
  if (!slot_) return;
  former_ = *slot_;
  write(slot_, replacement);
}

PlatformCall::~PlatformCall() {
  if (slot_) write(slot_, former_);
}

}  // namespace pv::dialogs_test
