// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/automation/utility/utility_support.h"

namespace pv::test {

inline Object make_dimensions() { return Object::create(L"pvItems32.CDimensions"); }
inline Object make_dimension() { return Object::create(L"pvItems32.CDimension"); }

/// Adds a dimension with units whose captions, slopes and offsets are given.
struct GivenUnit {
  const wchar_t* caption;
  double slope;
  double offset;
};
Object add_dimension(const Object& dimensions, const wchar_t* caption,
                     std::initializer_list<GivenUnit> units);

/// "Flow" (m3/h = 3.6 * base, l/s) and "Temperature" (K, °C = K - 273.15).
Object flow_and_temperature();

}  // namespace pv::test
