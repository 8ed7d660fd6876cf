// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Items in an order, for the tests of what changes it.
#pragma once

#include <vector>

#include "tests/automation/items/item_support.h"

namespace pv::test {

/// Items under keys, with the item numbers 1, 2, ... in that order.
inline Object make_items(const Texts& keys) {
  const Object items = Object::create(L"pvItems32.CItems");
  int id = 0;
  for (const std::wstring& key : keys) add_item(items, key, ++id, 1);
  return items;
}

inline std::vector<long> ids_of(const Object& items) {
  std::vector<long> ids;
  for (const Object& item : members_of(items)) ids.push_back(item.get(L"ItemID").number());
  return ids;
}
using Ids = std::vector<long>;

// A version whose table maps everything elsewhere: maintenance does not look at it.
inline void select_confusing_version(const Object& items) {
  const Object version = items.get_object(L"Versions").call_object(L"Add", L"V", 1);
  version.get_object(L"VerItems").call(L"Add", L"10", L"9");
  items.put(L"Version", L"V");
}

}  // namespace pv::test
