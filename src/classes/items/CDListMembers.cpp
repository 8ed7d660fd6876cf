#include "classes/items/CDListMembers.h"

namespace pv {

Ref<CDListMember> CDListMembers::add(const ListMemberRecord& record) {
  auto member = make<CDListMember>(record);
  list_.append(member, record.key);
  return member;
}

STDMETHODIMP CDListMembers::Add(BSTR key, VARIANT caption, VARIANT tag,
                                _CDListMember** result) noexcept {
  return returning(result, [&] {
    return add(
        {std::wstring(view_of(key)), text_of(dereferenced(caption)), text_of(dereferenced(tag))});
  });
}

STDMETHODIMP CDListMembers::ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    return attempt([&] {
      ListMemberRecord record = list_.at(index)->record();
      record.key = text_of(dereferenced(new_key));
      replace_member(list_, index, make<CDListMember>(record), record.key);
    });
  });
}

}  // namespace pv
