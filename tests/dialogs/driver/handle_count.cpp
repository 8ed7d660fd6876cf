// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/handle_count.h"

#include <windows.h>

#include <tlhelp32.h>

#include <vector>

#include "tests/support/memory/allocation_count.h"

namespace pv::dialogs_test {
namespace {

// Where the platform does not count, what is left of its fixed tables tells: as many handles are
// made as it gives, and made free again. The result is negative, so that it grows with use.
template <class Create, class Destroy>
long minus_free_handles(Create create, Destroy destroy) {
  std::vector<decltype(create())> handles;
  while (const auto handle = create()) handles.push_back(handle);
  for (const auto handle : handles) destroy(handle);
  return -static_cast<long>(handles.size());
}

BOOL CALLBACK count_window(HWND, LPARAM count) {
  ++*reinterpret_cast<long*>(count);
  return TRUE;
}

long count_threads() {
  const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 thread{};
  thread.dwSize = sizeof thread;
  long count = 0;
  for (BOOL more = Thread32First(all, &thread); more; more = Thread32Next(all, &thread))
    count += thread.th32OwnerProcessID == GetCurrentProcessId();
  CloseHandle(all);
  return count;
}

}  // namespace

HandleCount count_handles() {
  HandleCount count{};
  count.gdi = static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS));
  count.user = static_cast<long>(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS));
  if (count.gdi == 0)
    count.gdi = minus_free_handles([] { return CreateRectRgn(0, 0, 1, 1); }, DeleteObject);
  if (count.user == 0) count.user = minus_free_handles(CreateMenu, DestroyMenu);
  count.threads = count_threads();
  count.allocations = test::count_allocations();
  EnumThreadWindows(GetCurrentThreadId(), count_window, reinterpret_cast<LPARAM>(&count.windows));
  return count;
}

}  // namespace pv::dialogs_test
