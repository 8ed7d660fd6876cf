// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/memory/tables.h"

namespace pv::test {

Object two_items() {
  const Object items = create(L"CItems");
  for (const wchar_t* key : {L"1", L"2"}) {
    const Object item = items.call_object(L"Add", key, 1, true, 0, true, false, 0.5f, 4);
    item.get_object(L"Variables")
        .call(L"Add", L"1", std::wstring(L"A caption that is not short: ") + key, L"", L"", 0, 17,
              1, 2, 7, 0, 4);
  }
  return items;
}

Object a_version() {
  const Object versions = create(L"CVersions");
  const Object version = versions.call_object(L"Add", L"A version that is not short", 255);
  version.get_object(L"VerItems").call(L"Add", L"1", L"2");
  return versions;
}

Object a_list() {
  const Object lists = create(L"CDLists");
  const Object members = create(L"CDListMembers");
  members.call(L"Add", L"1", L"A caption that is not short", L"0");
  lists.call(L"Add", L"A list that is not short", members, L"A list that is not short");
  return lists;
}

Object a_dimension() {
  const Object dimensions = create(L"CDimensions");
  const Object units = create(L"CUnits");
  units.call(L"Add", L"m3/h", L"A unit that is not short", 3.6, 0.0);
  dimensions.call(L"Add", L"Flow", L"A dimension that is not short", units);
  return dimensions;
}

}  // namespace pv::test
