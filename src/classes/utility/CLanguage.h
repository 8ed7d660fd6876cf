#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

class CLanguage final : public Dual<CLanguage, _CLanguage, ::CLanguage> {
 public:
  static constexpr const wchar_t* kClassName = L"CLanguage";

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
