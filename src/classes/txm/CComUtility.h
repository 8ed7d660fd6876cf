// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CComUtility)

/// Conversions for telegrams.
class CComUtility final : public AutomationObject<CComUtility> {
 public:
  STDMETHODIMP CHexToInt(BSTR value, long* result) noexcept override;
  STDMETHODIMP CIntToHex(VARIANT value, short digits, BSTR* result) noexcept override;
  STDMETHODIMP CHexToSng(BSTR value, double* result) noexcept override;
  STDMETHODIMP CSngToHex(VARIANT value, BSTR* result) noexcept override;
  STDMETHODIMP GetChunk(VARIANT* data, short count, VARIANT* result) noexcept override;
  STDMETHODIMP CPackToStr(BSTR pack, _CItem* item, _CDLists* lists, BSTR* result) noexcept override;
  STDMETHODIMP CStrToPack(BSTR pack, BSTR* result) noexcept override;
  STDMETHODIMP CErrorToStr(BSTR error, _CItem* item, short variable, _CDLists* lists,
                           BSTR* result) noexcept override;
  STDMETHODIMP CStrToError(BSTR error, BSTR* result) noexcept override;
  STDMETHODIMP Pad(BSTR data, VARIANT number, BSTR character, VARIANT before,
                   BSTR* result) noexcept override;
  STDMETHODIMP pvC7Bit(BSTR source, VARIANT_BOOL replace_controls, BSTR* result) noexcept override;
  STDMETHODIMP GetAsciiCharName(BSTR character, BSTR* result) noexcept override;
};

}  // namespace pv
