// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <random>
#include <string>
#include <vector>

#include "tests/support/value.h"

namespace pv::test {

/// Random choices, the same for the same seed.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}

  unsigned random() { return engine_(); }
  /// From 0 to limit - 1.
  unsigned random(unsigned limit) { return engine_() % limit; }
  bool chance(unsigned percent) { return random(100) < percent; }
  template <class T>
  const T& any_of(const std::vector<T>& values) {
    return values[random(static_cast<unsigned>(values.size()))];
  }

  /// A text that some member may understand, or any characters.
  std::wstring text();
  /// A number of this type, often one at a limit.
  Value number(VARTYPE type);

 private:
  std::mt19937 engine_;
};

}  // namespace pv::test
