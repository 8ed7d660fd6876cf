// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The fuzzer's program: fuzz_targets --target=<name> <corpus folders and options of libFuzzer>.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/fuzz/target.h"

namespace {

constexpr std::string_view kOption = "--target=";
const pv::fuzz::Target* chosen = nullptr;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
  for (int i = 1; i < *count; ++i) {
    const std::string_view argument = (*arguments)[i];
    if (argument.starts_with(kOption)) {
      chosen = pv::fuzz::find_target(argument.substr(kOption.size()));
    }
  }
  if (chosen != nullptr) return 0;
  std::fputs("the targets:", stderr);
  for (const auto& target : pv::fuzz::targets()) {
    std::fprintf(stderr, " %s", std::string(target.name).c_str());
  }
  std::fputs("\n", stderr);
  std::exit(2);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    chosen->run({reinterpret_cast<const char*>(data), size});
  } catch (const pv::fuzz::Violation& violation) {
    std::fprintf(stderr, "broken promise: %s\n", violation.what());
    std::abort();
  }
  return 0;
}
