// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/index_key.h"

#include "core/errors/automation_error.h"

namespace pv {

IndexKey index_key_of(const VARIANT& value) {
  const VARIANT& inner = innermost(value);
  if (inner.vt == VT_BSTR) return view_of(inner.bstrVal);
  if (inner.vt == (VT_BYREF | VT_BSTR)) return view_of(*inner.pbstrVal);
  const Variant plain = dereferenced(inner);
  switch (plain.vt) {
    case VT_I2:
      return static_cast<long>(plain.iVal);
    case VT_I4:
      return plain.lVal;
    case VT_I1:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_I8:
    case VT_UI8:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DECIMAL:
    case VT_BOOL:
      return to_long(plain);
    case VT_NULL:
      throw automation_error(ErrorCode::kInvalidNull, L"index or key");
    default:
      throw automation_error(ErrorCode::kTypeMismatch, L"index or key");
  }
}

std::wstring optional_text(const VARIANT& value) {
  const Variant plain = dereferenced(value);
  return plain.vt == VT_EMPTY || is_missing(plain) ? std::wstring() : to_text(plain);
}

}  // namespace pv
