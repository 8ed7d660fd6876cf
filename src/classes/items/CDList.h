// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "core/items/list_file.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CDList)

/// A display list: turns raw values into meanings.
class CDList final : public AutomationObject<CDList> {
 public:
  CDList();
  CDList(std::wstring_view key, std::wstring_view caption, Ref<_CDListMembers> members)
      : key_(key), caption_(caption), members_(std::move(members)) {}

  STORED(Key, BSTR, key_)
  STORED(Caption, BSTR, caption_)
  STORED_OBJECT(ListMembers, _CDListMembers, members_)
  STDMETHODIMP Copy(_CDList* dest, _CDList** result) noexcept override;

  ListRecord record() const;
  void rename(std::wstring_view name) { key_ = caption_ = name; }
  void copy_to(_CDList* dest) const;

 private:
  std::wstring key_;
  std::wstring caption_;
  Ref<_CDListMembers> members_;
};

}  // namespace pv
