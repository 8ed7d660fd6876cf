// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/automation/units/dimension_support.h"

namespace pv::test {

Object add_dimension(const Object& dimensions, const wchar_t* caption,
                     std::initializer_list<GivenUnit> units) {
  const Object list = Object::create(L"pvItems32.CUnits");
  for (const GivenUnit& unit : units) {
    list.call(L"Add", unit.caption, unit.caption, unit.slope, unit.offset);
  }
  return dimensions.call_object(L"Add", caption, caption, list);
}

Object flow_and_temperature() {
  const Object dimensions = make_dimensions();
  add_dimension(dimensions, L"Flow", {{L"m3/h", 3.6, 0}, {L"l/s", 1, 0}});
  add_dimension(dimensions, L"Temperature", {{L"K", 1, 0}, {L"°C", 1, -273.15}});
  return dimensions;
}

}  // namespace pv::test
