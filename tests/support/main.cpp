// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The main function of every Windows test program: the tests run in a single-threaded apartment of
// their own thread, under the allocation spy; the main thread watches that they go on, and looks
// at the end whether anything is left.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "tests/support/memory/allocation_spy.h"
#include "tests/support/memory/high_addresses.h"
#include "tests/support/module.h"
#include "tests/support/program.h"

namespace pv::test {
namespace {

constexpr DWORD kTestLimit = 120;  // seconds that one test may take; the option --limit sets others
constexpr int kHangs = 3;
constexpr int kCannotStart = 4;
constexpr int kCrashed = 5;

std::vector<std::string> options;
std::atomic<DWORD> test_started{0};
std::atomic<const char*> test_name{""};
HANDLE output = nullptr;
std::atomic<bool> stays_loaded{false};
std::atomic<bool> arguments_are_kept{false};

class Progress : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& test) override {
    test_name = test.name();
    test_started = GetTickCount();
  }
};

std::string place_of(void* address) {
  HMODULE module = nullptr;
  char name[MAX_PATH] = "?";
  if (GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, static_cast<LPCSTR>(address),
                         &module)) {
    GetModuleFileNameA(module, name, sizeof name);
  }
  char place[MAX_PATH + 32];
  std::snprintf(
      place, sizeof place, "%s+%x", name,
      static_cast<unsigned>(static_cast<char*>(address) - reinterpret_cast<char*>(module)));
  return place;
}

bool is_code(void* address) {
  MEMORY_BASIC_INFORMATION memory{};
  return VirtualQuery(address, &memory, sizeof memory) != 0 && memory.Type == MEM_IMAGE &&
         (memory.Protect & (PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE)) != 0;
}

auto stack_pointer(const CONTEXT& context) {
#ifdef _WIN64
  return context.Rsp;
#else
  return context.Esp;
#endif
}

// Where the thread may have come from: all on its stack that points into code.
std::string trail_of(const CONTEXT& context) {
  constexpr int kWords = 400, kPlaces = 24;
  std::string trail;
  int places = 0;
  auto* const stack = reinterpret_cast<void**>(stack_pointer(context));
  MEMORY_BASIC_INFORMATION memory{};
  VirtualQuery(stack, &memory, sizeof memory);
  auto* const end =
      reinterpret_cast<void**>(static_cast<char*>(memory.BaseAddress) + memory.RegionSize);
  for (void** word = stack; word < std::min(stack + kWords, end) && places < kPlaces; ++word) {
    if (!is_code(*word)) continue;
    trail += "  " + place_of(*word) + "\n";
    ++places;
  }
  return trail;
}

// A debugger would wait for somebody to look at it. The streams may lead elsewhere at this moment.
LONG WINAPI end_after_crash(EXCEPTION_POINTERS* crash) {
  const EXCEPTION_RECORD& record = *crash->ExceptionRecord;
  char line[2 * MAX_PATH];
  std::snprintf(line, sizeof line, "[  FAILED  ] %s: crashed with %lx at %s\n", test_name.load(),
                record.ExceptionCode, place_of(record.ExceptionAddress).c_str());
  const std::string report = line + trail_of(*crash->ContextRecord);
  DWORD written = 0;
  WriteFile(output, report.data(), static_cast<DWORD>(report.size()), &written, nullptr);
  TerminateProcess(GetCurrentProcess(), kCrashed);
  return EXCEPTION_EXECUTE_HANDLER;
}

HANDLE duplicate_of_output() {
  HANDLE copy = nullptr;
  DuplicateHandle(GetCurrentProcess(), GetStdHandle(STD_OUTPUT_HANDLE), GetCurrentProcess(), &copy,
                  0, FALSE, DUPLICATE_SAME_ACCESS);
  return copy;
}

DWORD WINAPI run_tests(void*) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return kCannotStart;
  const int result = RUN_ALL_TESTS();
  SetErrorInfo(0, nullptr);
  CoUninitialize();
  return static_cast<DWORD>(result);
}

int watch(HANDLE tests) {
  const auto given = option("--limit");
  const DWORD limit = given ? std::strtoul(given->c_str(), nullptr, 10) : kTestLimit;
  while (WaitForSingleObject(tests, 1000) == WAIT_TIMEOUT) {
    if (IsDebuggerPresent() || (GetTickCount() - test_started) / 1000 < limit) continue;
    std::printf("[  FAILED  ] %s: no end after %lu s\n", test_name.load(), limit);
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), kHangs);
  }
  DWORD result = 0;
  GetExitCodeThread(tests, &result);
  return static_cast<int>(result);
}

// The state of the test thread was released with the thread; nothing may be left now.
bool is_balanced(const Module& module, const AllocationBalance& balance) {
  const bool unloads = stays_loaded || module.can_unload() == S_OK;
  if (!unloads) std::printf("[  FAILED  ] objects of the library are left\n");
  if (arguments_are_kept) forget_arguments_of_stubs();
  if (balance.difference() != 0) {
    const bool texts_are_cached = !GetEnvironmentVariableW(L"OANOCACHE", nullptr, 0);
    std::printf("[  FAILED  ] %ld allocations are left%s:\n%s", balance.difference(),
                texts_are_cached ? " (run with OANOCACHE=1)" : "", balance.report().c_str());
  }
  return unloads && balance.difference() == 0;
}

bool only_lists_tests() { return testing::GTEST_FLAG(list_tests); }

}  // namespace

std::optional<std::string> option(const std::string& name) {
  for (std::size_t i = 0; i + 1 < options.size(); ++i) {
    if (options[i] == name) return options[i + 1];
  }
  return std::nullopt;
}

void library_stays_loaded() { stays_loaded = true; }
void stubs_keep_arguments() { arguments_are_kept = true; }

int run(int argc, char** argv) {
  output = duplicate_of_output();
  SetUnhandledExceptionFilter(&end_after_crash);
  testing::InitGoogleTest(&argc, argv);
  options.assign(argv + 1, argv + argc);
  testing::UnitTest::GetInstance()->listeners().Append(new Progress);  // the framework owns it

  use_high_addresses();
  const Module module;
  install_allocation_spy();
  const AllocationBalance balance;
  test_started = GetTickCount();
  const HANDLE tests = CreateThread(nullptr, 0, run_tests, nullptr, 0, nullptr);
  if (!tests) return kCannotStart;
  int result = watch(tests);
  CloseHandle(tests);
  if (!only_lists_tests() && !is_balanced(module, balance) && result == 0) result = 1;
  remove_allocation_spy();
  return result;
}

}  // namespace pv::test

int main(int argc, char** argv) {
  try {
    return pv::test::run(argc, argv);
  } catch (const std::exception& error) {
    std::printf("[  FAILED  ] %s\n", error.what());
    return pv::test::kCannotStart;
  }
}
