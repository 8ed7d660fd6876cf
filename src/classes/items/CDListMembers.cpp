// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CDListMembers.h"

namespace pv {

template ClassEntry class_entry<CDListMembers>();

Ref<CDListMember> CDListMembers::add(const ListMemberRecord& record) {
  auto member = make<CDListMember>(record);
  list_.append(member, record.key);
  return member;
}

STDMETHODIMP CDListMembers::Add(BSTR key, VARIANT caption, VARIANT tag,
                                _CDListMember** result) noexcept {
  return method_with_result(result, [&] {
    return add(
        {std::wstring(view_of(key)), to_text(dereferenced(caption)), to_text(dereferenced(tag))});
  });
}

STDMETHODIMP CDListMembers::ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    return attempt([&] {
      ListMemberRecord record = list_.at(index)->record();
      record.key = to_text(dereferenced(new_key));
      replace_member(list_, index, make<CDListMember>(record), record.key);
    });
  });
}

}  // namespace pv
