// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/items/CDListMember.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CDListMembers)

/// The meanings of a display list.
class CDListMembers final : public Collection<CDListMembers, CDListMember, Missing::kIsNothing> {
 public:
  STORED(Changed, VARIANT_BOOL, changed_)
  STDMETHODIMP Add(BSTR key, VARIANT caption, VARIANT tag,
                   _CDListMember** result) noexcept override;
  STDMETHODIMP ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept override;

  /// Error: kKeyInUse.
  Ref<CDListMember> add(const ListMemberRecord& record);

 private:
  bool changed_ = false;
};

}  // namespace pv
