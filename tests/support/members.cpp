// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/members.h"

namespace pv::test {

std::vector<Object> members_of(const Object& collection) {
  const Value held = collection.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET).value;
  const auto enumerator = query<IEnumVARIANT>(held.punkVal);
  if (!enumerator) throw CallFailed("the collection has no enumerator");
  std::vector<Object> members;
  Value member;
  while (enumerator->Next(1, &member, nullptr) == S_OK) {
    members.emplace_back(member);
    VariantClear(&member);
  }
  return members;
}

Texts texts_of(const Object& collection, std::wstring_view property) {
  Texts texts;
  for (const Object& member : members_of(collection)) texts.push_back(member.get(property).text());
  return texts;
}

}  // namespace pv::test
