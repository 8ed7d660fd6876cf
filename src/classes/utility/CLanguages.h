// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/utility/CLanguage.h"
#include "com/collection.h"
#include "com/event_source.h"

namespace pv {

AUTOMATION_CLASS_WITH_EVENTS(CLanguages)

/// The language registry.
class CLanguages final : public EventSource<Collection<CLanguages, CLanguage, Missing::kRaises>> {
 public:
  CLanguages();

  STDMETHODIMP Add(VARIANT key, BSTR name, short picture_id, BSTR extension,
                   _CLanguage** result) noexcept override;
  STDMETHODIMP RegisterLanguages(short* result) noexcept override;
  STDMETHODIMP get_ActiveLanguageID(pvLanguageTypes* result) noexcept override;
  STDMETHODIMP put_ActiveLanguageID(pvLanguageTypes value) noexcept override;
  STDMETHODIMP get_ActiveLanguage(_CLanguage** result) noexcept override;

 private:
  void register_all();
  void activate(pvLanguageTypes language);

  pvLanguageTypes active_ = pvEnglish;
};

}  // namespace pv
