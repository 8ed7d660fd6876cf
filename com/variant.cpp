#include "com/variant.h"

#include <new>

#include "com/boundary.h"

namespace pv {

Bstr::Bstr(std::wstring_view text)
    : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
  if (!text_) throw std::bad_alloc();
}

Variant::Variant(const VARIANT& other) {
  VariantInit(this);
  check(VariantCopy(this, const_cast<VARIANT*>(&other)));
}

Variant::Variant(Variant&& other) noexcept {
  VariantInit(this);
  static_cast<VARIANT&>(*this) = other.detach();
}

Variant::Variant(bool value) {
  vt = VT_BOOL;
  boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(short value) {
  vt = VT_I2;
  iVal = value;
}

Variant::Variant(long value) {
  vt = VT_I4;
  lVal = value;
}

Variant::Variant(float value) {
  vt = VT_R4;
  fltVal = value;
}

Variant::Variant(double value) {
  vt = VT_R8;
  dblVal = value;
}

Variant::Variant(std::wstring_view text) {
  VariantInit(this);
  bstrVal = Bstr(text).detach();
  vt = VT_BSTR;
}

Variant::Variant(IDispatch* object) {
  vt = VT_DISPATCH;
  pdispVal = object;
  if (object) object->AddRef();
}

Variant& Variant::operator=(Variant other) noexcept {
  std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
  return *this;
}

VARIANT Variant::detach() noexcept {
  VARIANT content = *this;
  VariantInit(this);
  return content;
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
  Variant copy;
  check(VariantCopyInd(&copy, const_cast<VARIANT*>(&value)));
  return copy;
}

Variant converted(const VARIANT& value, VARTYPE type) {
  Variant result;
  const HRESULT hr =
      VariantChangeType(&result, const_cast<VARIANT*>(&value), VARIANT_ALPHABOOL, type);
  if (SUCCEEDED(hr)) return result;
  const VARTYPE plain = value.vt == (VT_BYREF | VT_VARIANT) ? value.pvarVal->vt : value.vt;
  if (plain == VT_NULL) throw automation_error(ErrorCode::kInvalidNull);
  if (hr == DISP_E_OVERFLOW) throw automation_error(ErrorCode::kOverflow);
  if (hr == E_OUTOFMEMORY) throw std::bad_alloc();
  throw automation_error(ErrorCode::kTypeMismatch);
}

std::wstring text_of(const VARIANT& value) {
  if (value.vt == VT_BSTR) return std::wstring(view_of(value.bstrVal));
  return std::wstring(view_of(converted(value, VT_BSTR).bstrVal));
}

bool boolean_of(const VARIANT& value) { return converted(value, VT_BOOL).boolVal != VARIANT_FALSE; }

double double_of(const VARIANT& value) {
  return value.vt == VT_R8 ? value.dblVal : converted(value, VT_R8).dblVal;
}

short short_of(const VARIANT& value) { return converted(value, VT_I2).iVal; }

long long_of(const VARIANT& value) { return converted(value, VT_I4).lVal; }

Ref<IDispatch> object_of(const VARIANT& value) {
  const Variant plain = dereferenced(value);
  if (plain.vt != VT_DISPATCH && plain.vt != VT_UNKNOWN) {
    throw automation_error(ErrorCode::kTypeMismatch, L"an object is needed");
  }
  if (!plain.punkVal) throw automation_error(ErrorCode::kObjectNotSet);
  if (auto object = query<IDispatch>(plain.punkVal)) return object;
  throw automation_error(ErrorCode::kTypeMismatch, L"the object has no automation interface");
}

}  // namespace pv
