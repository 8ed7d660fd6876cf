// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/access/CPassword.h"
#include "com/collection.h"
#include "com/event_source.h"

namespace pv {

AUTOMATION_CLASS_WITH_EVENTS(CPasswords)

/// The password store.
class CPasswords final : public EventSource<Collection<CPasswords, CPassword, Missing::kRaises>> {
 public:
  STDMETHODIMP Add(BSTR reference, BSTR current, _CPassword** result) noexcept override;
  STDMETHODIMP ReIndex() noexcept override;
  STDMETHODIMP Status(short index, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Edit(VARIANT index, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Save(BSTR* result) noexcept override;
  STDMETHODIMP Load(BSTR settings, short* result) noexcept override;
  STDMETHODIMP Encode64(BSTR text, BSTR* result) noexcept override;
  STDMETHODIMP Decode64(BSTR text, BSTR* result) noexcept override;
  STDMETHODIMP RaiseOnPasswordSet(short index, VARIANT* result) noexcept override;
  STDMETHODIMP RaiseOnPasswordReset(short index, VARIANT* result) noexcept override;

 private:
  Ref<CPassword> add(std::wstring_view reference, std::wstring_view current);
  short next_index() const;
  void fire_state(DISPID event, short index);
  short load(std::wstring_view settings);
};

}  // namespace pv
