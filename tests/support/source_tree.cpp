// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/source_tree.h"

namespace pv::test {

std::filesystem::path source_file(std::string_view name) {
  return std::filesystem::path(PV_SOURCE_DIR) / name;
}

}  // namespace pv::test
