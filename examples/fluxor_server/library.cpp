// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "library.h"

namespace fluxor {
namespace {

std::wstring text_left_behind() {
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, information.GetAddressOf()) != S_OK) return {};
  _bstr_t text;
  if (FAILED(information->GetDescription(text.GetAddress())) || text.length() == 0) return {};
  return std::wstring(text, text.length());
}

}  // namespace

CallFailure::CallFailure(HRESULT code) : code_(code), text_(text_left_behind()) {}

_variant_t converted(_variant_t value, VARTYPE type) {
  check(VariantChangeType(&value, &value, 0, type));
  return value;
}

std::wstring text_of(const _variant_t& value) {
  const _variant_t text = converted(value, VT_BSTR);
  return std::wstring(V_BSTR(&text), SysStringLen(V_BSTR(&text)));
}

}  // namespace fluxor
