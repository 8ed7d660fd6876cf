// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "core/items/list_file.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CDListMember)

/// One meaning of a display list.
class CDListMember final : public AutomationObject<CDListMember> {
 public:
  CDListMember() = default;
  explicit CDListMember(ListMemberRecord record) : record_(std::move(record)) {}

  STORED(Key, BSTR, record_.key)
  STORED(Caption, BSTR, record_.caption)
  STORED(Tag, BSTR, record_.tag)
  STDMETHODIMP Load(VARIANT members, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Save(BSTR* result) noexcept override;
  STDMETHODIMP Copy(_CDListMember* dest, _CDListMember** result) noexcept override;

  const ListMemberRecord& record() const { return record_; }

 private:
  ListMemberRecord record_;
};

}  // namespace pv
