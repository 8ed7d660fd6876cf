// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/variant.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

#include "com/default_member.h"
#include "com/failure.h"
#include "core/text/number_text.h"

namespace pv {

// The platform refuses the greatest length itself.
Bstr::Bstr(std::wstring_view text)
    : text_(SysAllocStringLen(text.data(),
                              static_cast<UINT>(std::min<std::size_t>(text.size(), UINT_MAX)))) {
  if (!text_) throw std::bad_alloc();
}

void Variant::copy(const VARIANT& other) {
  vt = VT_EMPTY;
  if (is_self_contained(other.vt)) {
    static_cast<VARIANT&>(*this) = other;
  } else {
    check(VariantCopy(this, const_cast<VARIANT*>(&other)));
  }
}

Variant::Variant(std::wstring_view text) : VARIANT() {
  bstrVal = Bstr(text).detach();
  vt = VT_BSTR;
}

Variant::Variant(IDispatch* object) : VARIANT() {
  vt = VT_DISPATCH;
  pdispVal = object;
  if (object) object->AddRef();
}

Variant Variant::missing() {
  Variant value;
  value.vt = VT_ERROR;
  value.scode = DISP_E_PARAMNOTFOUND;
  return value;
}

bool is_missing(const VARIANT& value) {
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

bool is_empty_text(const VARIANT& value) {
  return value.vt == VT_BSTR && SysStringLen(value.bstrVal) == 0;
}

Variant dereferenced(const VARIANT& value) {
  const VARIANT& inner = innermost(value);
  if (!(inner.vt & VT_BYREF)) return inner;
  Variant copy;
  check(VariantCopyInd(&copy, const_cast<VARIANT*>(&inner)));
  return copy;
}

void hand_over(Variant typed, const VARIANT& reference) {
  const VARTYPE type = typed.vt;
  if (type == VT_DECIMAL) {
    *reference.pdecVal = typed.decVal;
    return;
  }
  Variant former;  // releases what the variable held: texts, objects and arrays
  former.vt = type;
  std::memcpy(&former.lVal, reference.byref, size_of(type));
  std::memcpy(reference.byref, &typed.lVal, size_of(type));
  typed.vt = VT_EMPTY;  // the variable owns it now
}

HRESULT store_typed(const VARIANT& reference, const VARIANT& value) {
  const auto type = static_cast<VARTYPE>(reference.vt & ~VT_BYREF);
  Variant typed;
  const HRESULT result = change_type(typed, value, type);
  if (SUCCEEDED(result)) hand_over(std::move(typed), reference);
  return result;
}

Variant to_type(const VARIANT& value, VARTYPE type) {
  if (means_default_member(value, type)) {
    Variant member;
    const HRESULT got = get_default_member(value, member);
    if (is_out_of_memory(got)) raise_foreign_failure(got);
    if (SUCCEEDED(got)) return to_type(member, type);
    throw automation_error(ErrorCode::kTypeMismatch);
  }
  Variant result;
  const HRESULT hr = change_type(result, value, type);
  if (SUCCEEDED(hr)) return result;
  const VARTYPE plain = value.vt == (VT_BYREF | VT_VARIANT) ? value.pvarVal->vt : value.vt;
  if (plain == VT_NULL) throw automation_error(ErrorCode::kInvalidNull);
  if (hr == DISP_E_OVERFLOW) throw automation_error(ErrorCode::kOverflow);
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  throw automation_error(ErrorCode::kTypeMismatch);
}

std::wstring to_text(const VARIANT& value) {
  if (value.vt == VT_BSTR) return std::wstring(view_of(value.bstrVal));
  if (value.vt == VT_I2) return format_integer(value.iVal);
  if (value.vt == VT_I4) return format_integer(value.lVal);
  return std::wstring(view_of(to_type(value, VT_BSTR).bstrVal));
}

bool to_bool(const VARIANT& value) { return to_type(value, VT_BOOL).boolVal != VARIANT_FALSE; }

double to_double(const VARIANT& value) {
  if (value.vt == VT_R8) return value.dblVal;
  if (value.vt == VT_I2) return value.iVal;
  if (value.vt == VT_I4) return value.lVal;
  return to_type(value, VT_R8).dblVal;
}

short to_short(const VARIANT& value) {
  return value.vt == VT_I2 ? value.iVal : to_type(value, VT_I2).iVal;
}

long to_long(const VARIANT& value) {
  return value.vt == VT_I4 ? value.lVal : to_type(value, VT_I4).lVal;
}

bool is_nothing(const VARIANT& value) {
  const bool is_object = value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN;
  return is_object ? !value.punkVal : value.vt == VT_EMPTY || value.vt == VT_NULL;
}

Ref<IDispatch> to_object(const VARIANT& value) {
  const Variant plain = dereferenced(value);
  if (plain.vt == VT_NULL) throw automation_error(ErrorCode::kObjectNotSet);
  if (plain.vt != VT_DISPATCH && plain.vt != VT_UNKNOWN) {
    throw automation_error(ErrorCode::kTypeMismatch, L"an object is needed");
  }
  if (!plain.punkVal) throw automation_error(ErrorCode::kObjectNotSet);
  if (auto object = query<IDispatch>(plain.punkVal)) return object;
  throw automation_error(ErrorCode::kTypeMismatch, L"the object has no automation interface");
}

}  // namespace pv
