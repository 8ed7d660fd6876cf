// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Inputs of the fuzzer that are kept: what once broke a promise, and some that are typical.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/fuzz/target.h"

namespace pv::fuzz {
namespace {

namespace fs = std::filesystem;

fs::path cases_of(std::string_view target) { return fs::path(PV_FUZZ_CASES_DIR) / target; }

std::string content_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

class FuzzCases : public testing::TestWithParam<Target> {};

TEST_P(FuzzCases, KeepTheirPromises) {
  int count = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(cases_of(GetParam().name))) {
    ++count;
    EXPECT_NO_THROW(GetParam().run(content_of(entry.path()))) << entry.path();
  }
  EXPECT_GT(count, 0) << "no case is kept";
}

TEST_P(FuzzCases, TakeAnEmptyInput) { EXPECT_NO_THROW(GetParam().run("")); }

INSTANTIATE_TEST_SUITE_P(Targets, FuzzCases, testing::ValuesIn(targets().begin(), targets().end()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(FuzzTargets, HaveAllCases) {
  for (const fs::directory_entry& entry : fs::directory_iterator(PV_FUZZ_CASES_DIR)) {
    if (!entry.is_directory()) continue;
    EXPECT_NE(find_target(entry.path().filename().string()), nullptr) << entry.path();
  }
}

TEST(FuzzTargets, TellABrokenPromise) { EXPECT_THROW(require(false, "kept"), Violation); }

}  // namespace
}  // namespace pv::fuzz
