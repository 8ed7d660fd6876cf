// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/items/CDList.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CDLists)

/// The display lists of a transmitter.
class CDLists final : public Collection<CDLists, CDList, Missing::kIsNothing> {
 public:
  STORED(Changed, VARIANT_BOOL, changed_)
  STDMETHODIMP LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Add(BSTR key, _CDListMembers* members, BSTR caption,
                   _CDList** result) noexcept override;
  STDMETHODIMP ChangeTitle(short index, BSTR new_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP FillList(short index, IDispatch* control, VARIANT_BOOL* result) noexcept override;

 private:
  bool changed_ = false;
};

}  // namespace pv
