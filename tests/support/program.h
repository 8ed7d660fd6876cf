// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

namespace pv::test {

/// The value behind an option of the test program, such as "--write-golden <path>".
std::optional<std::string> option(const std::string& name);

/// The platform keeps the library for good: it need not be free to be unloaded at the end.
void library_stays_loaded();

/// The platform's stubs keep arguments of calls for good: at the end, none counts as left.
void stubs_keep_arguments();

}  // namespace pv::test
