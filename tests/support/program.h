#pragma once

#include <optional>
#include <string>

namespace pv::test {

/// The value behind an option of the test program, such as "--write-golden <path>".
std::optional<std::string> option(const std::string& name);

}  // namespace pv::test
