// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CVersion.h"

#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CVersion>();

STDMETHODIMP CVersion::get_VerItems(_CVerItems** result) noexcept {
  return method_with_result(result, [&] { return entries_; });
}

VersionRecord CVersion::record() const {
  VersionRecord record{name_, item_count_, {}};
  for (const auto& entry : entries_->list()) record.entries.push_back(entry->record());
  return record;
}

void CVersion::copy_to(_CVersion* dest) const {
  if (dest == this) return;
  const auto target = required_object(result_of(dest, &_CVersion::get_VerItems));
  const auto copies = make<CVerItems>();
  for (const auto& entry : entries_->list()) copies->add(entry->record());
  call(dest, &_CVersion::put_Name, Bstr(name_));  // the last step that allocates
  give_members(copies, target, [](const Ref<_CVerItems>& entries, const CVerItem& copy) {
    result_of(entries, &_CVerItems::Add, Bstr(copy.record().key), Bstr(copy.record().index_key));
  });
  call(dest, &_CVersion::put_ItemCount, item_count_);
}

STDMETHODIMP CVersion::Copy(_CVersion* dest, _CVersion** result) noexcept {
  return method_with_result(result, [&] {
    copy_to(dest);
    return Ref<_CVersion>(dest);
  });
}

}  // namespace pv
