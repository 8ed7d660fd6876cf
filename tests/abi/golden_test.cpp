// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The published contract is frozen: clients are compiled against it. A wanted addition is written
// with   abi_tests --gtest_filter=Contract.* --write-golden Z:/.../tests/abi/pvItems32.golden.txt

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/abi/library_dump.h"
#include "tests/support/module.h"
#include "tests/support/program.h"
#include "tests/support/source_tree.h"

namespace pv::test {
namespace {

std::string content_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

TEST(Contract, IsWhatWasPublished) {
  const Module module;
  const std::string dump = dump_of(module.type_library().get());
  if (const auto path = option("--write-golden")) {
    std::ofstream(*path, std::ios::binary) << dump;
    GTEST_SKIP() << "written to " << *path;
  }
  const std::string difference =
      difference_between(content_of(source_file("tests/abi/pvItems32.golden.txt")), dump);
  EXPECT_TRUE(difference.empty()) << "- was published, + is compiled now\n" << difference;
}

TEST(Contract, DifferencesAreShownUnderTheirType) {
  EXPECT_EQ(difference_between("enum A\n  x = 1\n  y = 2\n\nenum B\n  z = 3\n",
                               "enum A\n  x = 1\n  y = 4\n\nenum B\n  z = 3\n  u = 5\n"),
            "  enum A\n-   y = 2\n+   y = 4\n  enum B\n+   u = 5\n");
  EXPECT_EQ(difference_between("same\n", "same\r\n"), "");
}

}  // namespace
}  // namespace pv::test
