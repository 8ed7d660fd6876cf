// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/object.h"

namespace pv::test {

/// A value of the simulated device that does not move by itself.
struct KnownValue {
  std::wstring key;
  int variable;
  std::wstring text;
};

std::vector<KnownValue> known_values();

void expect_known(const Value& got, const KnownValue& expected);

}  // namespace pv::test
