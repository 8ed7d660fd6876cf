// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/automation/items/item_support.h"

#include "tests/support/source_tree.h"

namespace pv::test {

std::wstring example_file(std::wstring_view name) {
  return (source_file("examples/data") / name).wstring();
}

Object add_variable(const Object& variables, std::wstring_view key) {
  return variables.call_object(L"Add", key, L"Caption " + std::wstring(key), L"", L"", 0, 1, 1, 2,
                               0.0, 0, 4);
}

Object add_item(const Object& items, std::wstring_view key, int item_id, int variables) {
  const Object item =
      items.call_object(L"Add", key, item_id, true, 1, false, false, 0.5f, 4, Value::missing());
  for (int i = 1; item && i <= variables; ++i) {
    add_variable(item.get_object(L"Variables"), std::to_wstring(i));
  }
  return item;
}

Outcome item_by_variable(const Object& collection, Value index) {
  return collection.try_get(L"Item", by_ref(index));
}

}  // namespace pv::test
