#include "items/CDList.h"

#include "com/fetch.h"
#include "items/CDListMembers.h"

namespace pv {

CDList::CDList() : members_(make<CDListMembers>()) {}

ListRecord CDList::record() const {
  ListRecord record{caption_, {}};
  const long count = members_ ? fetch(members_, &_CDListMembers::get_Count) : 0;
  for (long i = 1; i <= count; ++i) {
    const auto member = fetch(members_, &_CDListMembers::get_Item, Variant(i));
    record.members.push_back({fetch(member, &_CDListMember::get_Key),
                              fetch(member, &_CDListMember::get_Caption),
                              fetch(member, &_CDListMember::get_Tag)});
  }
  return record;
}

void CDList::copy_to(_CDList* dest) const {
  if (dest == this) return;
  const auto target = fetch(dest, &_CDList::get_ListMembers);
  const ListRecord own = record();  // taken first: both lists may share their members
  call(target, &_CDListMembers::Clear);
  for (const ListMemberRecord& member : own.members) {
    fetch(target, &_CDListMembers::Add, Bstr(member.key), Variant(member.caption),
          Variant(member.tag));
  }
  call(dest, &_CDList::put_Key, Bstr(key_));
  call(dest, &_CDList::put_Caption, Bstr(caption_));
}

STDMETHODIMP CDList::Copy(_CDList* dest, _CDList** result) noexcept {
  return returning(result, [&] {
    copy_to(dest);
    return Ref<_CDList>(dest);
  });
}

}  // namespace pv
