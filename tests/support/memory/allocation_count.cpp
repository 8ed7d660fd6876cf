// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/memory/allocation_count.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "tests/support/module.h"

namespace pv::test {
namespace {

std::atomic<long> blocks{0};

void* counted(void* block) {
  if (block) ++blocks;
  return block;
}

// The functions of the C runtime, and those that stand in for them. A walk through the heap would
// not do: some heaps show blocks of the same size as one.
void* (*real_malloc)(std::size_t);
void* (*real_calloc)(std::size_t, std::size_t);
void* (*real_realloc)(void*, std::size_t);
char* (*real_strdup)(const char*);
void (*real_free)(void*);

void* counting_malloc(std::size_t size) { return counted(real_malloc(size)); }

void* counting_calloc(std::size_t count, std::size_t size) {
  return counted(real_calloc(count, size));
}

void* counting_realloc(void* block, std::size_t size) {
  void* const moved = real_realloc(block, size);
  if (!block) return counted(moved);
  if (size == 0) --blocks;
  return moved;
}

char* counting_strdup(const char* text) { return static_cast<char*>(counted(real_strdup(text))); }

void counting_free(void* block) {
  if (block) --blocks;
  real_free(block);
}

struct StandIn {
  const char* name;
  std::uintptr_t function;
  std::uintptr_t* real;
};

template <class Function>
StandIn stand_in(const char* name, Function* function, Function** real) {
  return {name, reinterpret_cast<std::uintptr_t>(function),
          reinterpret_cast<std::uintptr_t*>(real)};
}

void replace(ULONG_PTR& imported, const StandIn& by) {
  if (imported == by.function) return;
  DWORD protection = 0;
  VirtualProtect(&imported, sizeof imported, PAGE_READWRITE, &protection);
  *by.real = imported;
  imported = by.function;
  VirtualProtect(&imported, sizeof imported, protection, &protection);
}

void replace_if_counted(const char* name, ULONG_PTR& imported) {
  static const StandIn kStandIns[] = {
      stand_in("malloc", counting_malloc, &real_malloc),
      stand_in("calloc", counting_calloc, &real_calloc),
      stand_in("realloc", counting_realloc, &real_realloc),
      stand_in("_strdup", counting_strdup, &real_strdup),
      stand_in("free", counting_free, &real_free),
  };
  for (const StandIn& stand_in : kStandIns)
    if (std::strcmp(name, stand_in.name) == 0) replace(imported, stand_in);
}

// Goes through the tables by which a module calls the functions of others.
void count_allocations_of(HMODULE module) {
  auto* const base = reinterpret_cast<BYTE*>(module);
  const auto& dos = *reinterpret_cast<IMAGE_DOS_HEADER*>(base);
  const auto& headers = *reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos.e_lfanew);
  const auto& imports = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  auto* table = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
  for (; table->Name; ++table) {
    auto* name = reinterpret_cast<IMAGE_THUNK_DATA*>(base + table->OriginalFirstThunk);
    auto* import = reinterpret_cast<IMAGE_THUNK_DATA*>(base + table->FirstThunk);
    for (; name->u1.AddressOfData; ++name, ++import) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* const text = base + name->u1.AddressOfData + offsetof(IMAGE_IMPORT_BY_NAME, Name);
      replace_if_counted(reinterpret_cast<const char*>(text), import->u1.Function);
    }
  }
}

bool is_beside(HMODULE module, const std::wstring& folder) {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(module, path, ARRAYSIZE(path));
  return std::wstring(path).starts_with(folder);
}

}  // namespace

// Libraries come and go: each time, those that are there are looked at.
long count_allocations() {
  const std::wstring folder = program_folder();
  HMODULE modules[256];
  DWORD size = 0;
  EnumProcessModules(GetCurrentProcess(), modules, sizeof modules, &size);
  const DWORD count = std::min<DWORD>(size / sizeof *modules, ARRAYSIZE(modules));
  for (DWORD i = 0; i < count; ++i)
    if (is_beside(modules[i], folder)) count_allocations_of(modules[i]);
  return blocks;
}

}  // namespace pv::test
