// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The process has the pointers of its build, and the suites of the 64-bit build use those that need
// more than 32 bits. Under some systems the loader of 32-bit programs has the names of the other.

#include <gtest/gtest.h>

#include <memory>
#include <string_view>
#include <utility>

#include "tests/abi/probe_object.h"
#include "tests/support/memory/high_addresses.h"
#include "tests/support/module.h"
#include "tests/support/sample_values.h"

namespace pv::test {
namespace {

constexpr bool kIs64Bit = std::string_view(PV_PROCESSOR) == "x86_64";

WORD machine_of(HMODULE module) {
  const auto* const base = reinterpret_cast<const char*>(module);
  const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
  return reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos.e_lfanew)->FileHeader.Machine;
}

TEST(Addresses, OfTheProcessAreThoseOfItsBuild) {
  EXPECT_EQ(sizeof(void*), kIs64Bit ? 8u : 4u);
  SYSTEM_INFO system{};
  GetSystemInfo(&system);
  EXPECT_EQ(system.wProcessorArchitecture,
            kIs64Bit ? PROCESSOR_ARCHITECTURE_AMD64 : PROCESSOR_ARCHITECTURE_INTEL);
  BOOL is_emulated = FALSE;
  ASSERT_TRUE(IsWow64Process(GetCurrentProcess(), &is_emulated));
  if (kIs64Bit) {
    EXPECT_FALSE(is_emulated) << "a 32-bit process on a 64-bit system";
  }
}

TEST(Addresses, OfTheLibraryAreThoseOfItsBuild) {
  const Module module;
  const WORD expected = kIs64Bit ? IMAGE_FILE_MACHINE_AMD64 : IMAGE_FILE_MACHINE_I386;
  EXPECT_EQ(machine_of(module.handle()), expected);
  EXPECT_EQ(machine_of(GetModuleHandleW(nullptr)), expected);
  TLIBATTR* attributes = nullptr;
  ASSERT_EQ(module.type_library()->GetLibAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->syskind, kIs64Bit ? SYS_WIN64 : SYS_WIN32);
  module.type_library()->ReleaseTLibAttr(attributes);
}

// What a pointer of an argument may lead to. All tests of the 64-bit build run with these, so that
// none of them holds where 32 bits of a pointer get lost on the way.
TEST(Addresses, OfWhatCallsPassNeedMoreThan32Bits) {
  const Value on_stack(L"text");
  const auto in_heap = std::make_unique<Value>(L"text");
  const Value array = array_of(VT_BSTR, 3);
  const Value long_text(std::wstring(100000, L'x'));
  const Object probe = make_probe(), ours = Object::create(L"pvItems32.CItems");
  const std::pair<const char*, const void*> places[] = {
      {"value on the stack", &on_stack},
      {"its text", on_stack.bstrVal},
      {"value in the heap", in_heap.get()},
      {"long text", long_text.bstrVal},
      {"array", array.parray},
      {"elements of the array", array.parray->pvData},
      {"object of the program", probe.get()},
      {"object of the library", ours.get()},
  };
  for (const auto& [what, address] : places) EXPECT_EQ(is_high(address), kIs64Bit) << what;
}

}  // namespace
}  // namespace pv::test
