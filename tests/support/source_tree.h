// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <filesystem>
#include <string_view>

namespace pv::test {

/// A file of the source tree that the tests were built from, like "examples/data/fluxor.itm".
std::filesystem::path source_file(std::string_view name);

}  // namespace pv::test
