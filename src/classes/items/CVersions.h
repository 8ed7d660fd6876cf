// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/items/CVersion.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CVersions)

/// The version lookup tables of an item database.
class CVersions final : public Collection<CVersions, CVersion, Missing::kIsNothing> {
 public:
  STORED(Changed, VARIANT_BOOL, changed_)
  STDMETHODIMP LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Add(BSTR name, long item_count, _CVersion** result) noexcept override;
  STDMETHODIMP ChangeTitle(short index, BSTR new_name, VARIANT_BOOL* result) noexcept override;

 private:
  bool changed_ = false;
};

}  // namespace pv
