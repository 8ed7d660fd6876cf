// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/items/CVerItems.h"
#include "com/object.h"

namespace pv {

AUTOMATION_CLASS(CVersion)

/// The lookup table of one software version.
class CVersion final : public AutomationObject<CVersion> {
 public:
  CVersion() = default;
  CVersion(std::wstring_view name, short item_count) : name_(name), item_count_(item_count) {}

  STORED(Name, BSTR, name_)
  STORED(ItemCount, short, item_count_)
  STDMETHODIMP get_VerItems(_CVerItems** result) noexcept override;
  STDMETHODIMP Copy(_CVersion* dest, _CVersion** result) noexcept override;

  VersionRecord record() const;
  short item_count() const { return item_count_; }
  CVerItems& entries() const { return *entries_; }
  void rename(std::wstring_view name) { name_ = name; }
  void copy_to(_CVersion* dest) const;

 private:
  std::wstring name_;
  short item_count_ = 0;
  Ref<CVerItems> entries_ = make<CVerItems>();
};

}  // namespace pv
