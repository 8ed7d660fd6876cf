// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/memory/high_addresses.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "com/automation.h"

namespace pv::test {
namespace {

constexpr std::uint64_t kLimit = 1ull << 32;

std::uint64_t number_of(const void* address) { return reinterpret_cast<std::uintptr_t>(address); }

void* address_of(std::uint64_t number) {
  return reinterpret_cast<void*>(static_cast<std::uintptr_t>(number));
}

// The system may have parts of a free region for itself.
void reserve(std::uint64_t from, std::uint64_t to, std::uint64_t step) {
  from = (from + step - 1) / step * step;
  if (from >= to) return;
  // It stays until the process ends.
  // cppcheck-suppress leakNoVarFunctionCall
  if (VirtualAlloc(address_of(from), to - from, MEM_RESERVE, PAGE_NOACCESS)) return;
  if (to - from <= step) return;
  const std::uint64_t middle = from + std::max((to - from) / 2 / step * step, step);
  reserve(from, middle, step);
  reserve(middle, to, step);
}

void reserve_low_addresses() {
  SYSTEM_INFO system{};
  GetSystemInfo(&system);
  MEMORY_BASIC_INFORMATION region{};
  std::uint64_t at = number_of(system.lpMinimumApplicationAddress);
  while (at < kLimit && VirtualQuery(address_of(at), &region, sizeof region)) {
    const std::uint64_t end = number_of(region.BaseAddress) + region.RegionSize;
    if (region.State == MEM_FREE) {
      reserve(at, std::min(end, kLimit), system.dwAllocationGranularity);
    }
    at = end;
  }
}

void* allocate_in_process_heap(std::size_t bytes) { return HeapAlloc(GetProcessHeap(), 0, bytes); }

// Blocks that a heap still has below are allocated and kept.
void use_up_low_blocks(void* (*allocate)(std::size_t)) {
  constexpr std::size_t kLarge = 1 << 20, kSmall = 4096, kStep = 16;
  for (std::size_t bytes = kLarge; bytes > 0; bytes -= bytes > kSmall ? bytes / 2 : kStep) {
    const void* block = nullptr;
    do {
      block = allocate(bytes);
    } while (block && !is_high(block));
  }
}

}  // namespace

bool is_high(const void* address) { return number_of(address) >= kLimit; }

void use_high_addresses() {
  if (sizeof(void*) == sizeof(std::uint32_t)) return;
  reserve_low_addresses();
  use_up_low_blocks(&allocate_in_process_heap);  // that of automation
  use_up_low_blocks(&std::malloc);
}

}  // namespace pv::test
