// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "host/late_bound.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CProtocol)

/// Wraps one protocol object. Without one it answers "no" instead of raising errors.
class CProtocol final : public AutomationObject<CProtocol> {
 public:
  STDMETHODIMP get_Server(IDispatch** result) noexcept override;
  STDMETHODIMP putref_Server(IDispatch* value) noexcept override;
  STORED(Name, BSTR, name_)
  STORED(Index, ProtocolTypes, index_)
  STORED(Key, BSTR, key_)
  STDMETHODIMP ReadTxm(short address, _CItem** item, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP WriteTxm(short address, _CItem** item, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP ReadDisplay(short address, BSTR* answer, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP ItemComLength(_CItem* item, short variable, long* result) noexcept override;
  STDMETHODIMP get_Busy(VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP putref_TxmEvents(_CTxmEvents* value) noexcept override;

 private:
  bool exchange(std::wstring_view method, short address, _CItem** item) const;

  LateBound server_;
  std::wstring name_;
  ProtocolTypes index_ = protNotDefined;
  std::wstring key_;
};

}  // namespace pv
