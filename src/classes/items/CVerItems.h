// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/items/CVerItem.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CVerItems)

/// The entries of a version lookup table.
class CVerItems final : public Collection<CVerItems, CVerItem, Missing::kIsNothing> {
 public:
  STDMETHODIMP Add(BSTR key, BSTR index_key, _CVerItem** result) noexcept override;
  STDMETHODIMP ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept override;

  /// Error: kKeyInUse.
  Ref<CVerItem> add(const VersionEntry& entry);
};

}  // namespace pv
