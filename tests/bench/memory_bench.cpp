// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What a loaded item takes of the process's memory.
#include <stdexcept>

#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

constexpr int kItems = 10'000;

// Everything allocated in the heaps of the process, with what the heaps need for each block.
double allocated_bytes() {
  HANDLE heaps[64];
  const DWORD count = GetProcessHeaps(ARRAYSIZE(heaps), heaps);
  double bytes = 0;
  for (DWORD i = 0; i < count && i < ARRAYSIZE(heaps); ++i) {
    HeapLock(heaps[i]);
    PROCESS_HEAP_ENTRY block{};
    while (HeapWalk(heaps[i], &block)) {
      if (block.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += block.cbData + block.cbOverhead;
    }
    HeapUnlock(heaps[i]);
  }
  return bytes;
}

template <class Get>
double characters_of(Get get) {
  BSTR text = nullptr;
  check(get(&text));
  const double bytes = SysStringByteLen(text);
  SysFreeString(text);
  return bytes;
}

// The numbers in the sizes of their published types, the texts as their characters alone.
double own_size_of(const Ref<_CItem>& item) {
  constexpr double kItemNumbers = 3 * sizeof(short) + 3 * sizeof(VARIANT_BOOL) + sizeof(float);
  constexpr double kVariableNumbers =
      5 * sizeof(short) + 2 * sizeof(VARIANT_BOOL) + 3 * sizeof(VARIANT);
  double bytes = kItemNumbers + kVariableNumbers;
  bytes += characters_of([&](BSTR* text) { return item->get_Key(text); });
  bytes += characters_of([&](BSTR* text) { return item->get_Caption(1, text); });
  bytes += characters_of([&](BSTR* text) { return item->get_Description(1, text); });
  bytes += characters_of([&](BSTR* text) { return item->get_Symbol(1, text); });
  return bytes + sizeof L'1';  // the key of the variable
}

// As the texts of a real file are; else all items have the same ones.
void make_texts_different(const Ref<_CItems>& items) {
  for (short i = 1; i <= kItems; ++i) {
    Ref<_CItem> item;
    check(items->get_Item(number(i), item.put()));
    const std::wstring its_own = L" " + std::to_wstring(i);
    check(item->put_Caption(1, Bstr(L"Variable" + its_own)));
    check(item->put_Description(1, Bstr(L"Volume flow through the sensor" + its_own)));
  }
}

Ref<_CItems> load(BSTR path) {
  auto items = create<CItems, _CItems>();
  VARIANT_BOOL loaded = VARIANT_FALSE;
  check(items->LoadSettingsNew(path, &loaded));
  if (!loaded) throw std::runtime_error("an item file could not be loaded");
  return items;
}

Medians bytes_per_item(const Ref<_CItems>& items) {
  const Bstr path(scratch_file(L"memory.itm"));
  VARIANT_BOOL saved = VARIANT_FALSE;
  check(items->SaveSettingsNew(path, &saved));
  const auto first = load(path);  // what is created at first use is there now
  double fields = 0;
  for (short i = 1; i <= kItems; ++i) {
    Ref<_CItem> item;
    check(first->get_Item(number(i), item.put()));
    fields += own_size_of(item);
  }
  const double before = allocated_bytes();
  const auto second = load(path);
  const double taken = allocated_bytes() - before;
  return {taken / kItems, fields / kItems};
}

}  // namespace

void measure_memory(Report& report) {
  const auto items = make_items(kItems, 1);
  constexpr double kGoal = 2.2;
  report.size("memory of a loaded item with one variable", "its fields' own sizes",
              bytes_per_item(items), kGoal);
  make_texts_different(items);
  report.size("the same, texts all different", "its fields' own sizes", bytes_per_item(items),
              kGoal);
}

}  // namespace pv::bench
