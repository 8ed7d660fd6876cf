// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CLanguage)

/// A user-interface language.
class CLanguage final : public AutomationObject<CLanguage> {
 public:
  STORED(Name, BSTR, name_)
  STORED(Key, VARIANT, key_)
  STDMETHODIMP putref_Key(VARIANT value) noexcept override { return put_Key(value); }
  STORED(Index, short, index_)
  STORED(PictureID, short, picture_id_)
  STORED(Extension, BSTR, extension_)
  STDMETHODIMP Picture(IPictureDisp** result) noexcept override;
  STDMETHODIMP Icon(IPictureDisp** result) noexcept override;

 private:
  std::wstring name_;
  Variant key_;
  short index_ = 0;
  short picture_id_ = 0;
  std::wstring extension_;
};

}  // namespace pv
