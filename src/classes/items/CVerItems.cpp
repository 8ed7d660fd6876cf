#include "classes/items/CVerItems.h"

namespace pv {

Ref<CVerItem> CVerItems::add(const VersionEntry& entry) {
  auto item = make<CVerItem>(entry);
  list_.append(item, entry.key);
  return item;
}

STDMETHODIMP CVerItems::Add(BSTR key, BSTR index_key, _CVerItem** result) noexcept {
  return returning(result, [&] {
    return add({std::wstring(view_of(key)), std::wstring(view_of(index_key))});
  });
}

STDMETHODIMP CVerItems::ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    return attempt([&] {
      const std::wstring key = text_of(dereferenced(new_key));
      const auto copy = make<CVerItem>(VersionEntry{key, list_.at(index)->record().index_key});
      replace_member(list_, index, copy, key);
    });
  });
}

}  // namespace pv
