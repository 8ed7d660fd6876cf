// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cmath>

#include "com/object.h"
#include "platform/locale.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CFunction)

/// A function of a transmitter.
class CFunction final : public AutomationObject<CFunction> {
 public:
  STORED(FuncType, FunctionTypes, type_)
  STORED(Options, VARIANT, options_)
  STDMETHODIMP putref_Options(VARIANT value) noexcept override { return put_Options(value); }
  STORED(Version, BSTR, version_)
  STORED(VerDateTime, DATE, version_date_)
  STORED(Key, VARIANT, key_)
  STDMETHODIMP putref_Key(VARIANT value) noexcept override { return put_Key(value); }
  STORED_OBJECT(ServerForm, IDispatch, server_form_)
  STORED(PictureID, short, picture_id_)
  STORED(Index, short, index_)
  STORED(Active, VARIANT_BOOL, active_)
  STORED(Protected, short, protected_)
  STDMETHODIMP Start(_CTxm* txm, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Finish(VARIANT_BOOL* result) noexcept override;

 private:
  FunctionTypes type_ = pvFuncButton;
  Variant options_;
  std::wstring version_ = L"V1.0";
  DATE version_date_ = std::floor(current_moment());
  Variant key_{std::wstring_view()};
  Ref<IDispatch> server_form_;
  short picture_id_ = 0;
  short index_ = 0;
  bool active_ = false;
  short protected_ = 0;
};

}  // namespace pv
