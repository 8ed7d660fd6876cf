// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "core/items/version_file.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CVerItem)

/// One entry of a version lookup table.
class CVerItem final : public AutomationObject<CVerItem> {
 public:
  CVerItem() = default;
  explicit CVerItem(VersionEntry entry) : entry_(std::move(entry)) {}

  STORED(Key, BSTR, entry_.key)
  STORED(IndexKey, BSTR, entry_.index_key)
  STDMETHODIMP Copy(_CVerItem* dest, _CVerItem** result) noexcept override;

  const VersionEntry& record() const { return entry_; }

 private:
  VersionEntry entry_;
};

}  // namespace pv
