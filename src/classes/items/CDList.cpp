// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CDList.h"

#include "classes/items/CDListMembers.h"
#include "com/text_properties.h"

namespace pv {

template ClassEntry class_entry<CDList>();

CDList::CDList() : members_(make<CDListMembers>()) {}

ListRecord CDList::record() const {
  ListRecord record{caption_, {}};
  const long count = members_ ? result_of(members_, &_CDListMembers::get_Count) : 0;
  for (long i = 1; i <= count; ++i) {
    const auto member = result_of(members_, &_CDListMembers::get_Item, Variant(i));
    record.members.push_back({result_of(member, &_CDListMember::get_Key),
                              result_of(member, &_CDListMember::get_Caption),
                              result_of(member, &_CDListMember::get_Tag)});
  }
  return record;
}

void CDList::copy_to(_CDList* dest) const {
  if (dest == this) return;
  const auto target = required_object(result_of(dest, &_CDList::get_ListMembers));
  const auto copies = make<CDListMembers>();  // all of them first: both lists may share theirs
  for (const ListMemberRecord& member : record().members) copies->add(member);
  put_together<_CDList>(dest, {{&_CDList::get_Key, &_CDList::put_Key, key_},
                               {&_CDList::get_Caption, &_CDList::put_Caption, caption_}});
  give_members(copies, target, [](const Ref<_CDListMembers>& members, const CDListMember& copy) {
    result_of(members, &_CDListMembers::Add, Bstr(copy.record().key),
              Variant(copy.record().caption), Variant(copy.record().tag));
  });
}

STDMETHODIMP CDList::Copy(_CDList* dest, _CDList** result) noexcept {
  return method_with_result(result, [&] {
    copy_to(dest);
    return Ref<_CDList>(dest);
  });
}

}  // namespace pv
