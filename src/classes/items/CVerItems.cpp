// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CVerItems.h"

namespace pv {

template ClassEntry class_entry<CVerItems>();

Ref<CVerItem> CVerItems::add(const VersionEntry& entry) {
  auto item = make<CVerItem>(entry);
  list_.append(item, entry.key);
  return item;
}

STDMETHODIMP CVerItems::Add(BSTR key, BSTR index_key, _CVerItem** result) noexcept {
  return method_with_result(result, [&] {
    return add({std::wstring(view_of(key)), std::wstring(view_of(index_key))});
  });
}

STDMETHODIMP CVerItems::ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    return attempt([&] {
      const std::wstring key = to_text(dereferenced(new_key));
      const auto copy = make<CVerItem>(VersionEntry{key, list_.at(index)->record().index_key});
      replace_member(list_, index, copy, key);
    });
  });
}

}  // namespace pv
