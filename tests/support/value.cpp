// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/value.h"

#include <iomanip>

namespace pv::test {
namespace {

bool is_real(VARTYPE type) { return type == VT_R4 || type == VT_R8; }

bool same_object(const VARIANT& left, const VARIANT& right) {
  return query<IUnknown>(left.punkVal) == query<IUnknown>(right.punkVal);
}

}  // namespace

Value Value::null() {
  Value value;
  value.vt = VT_NULL;
  return value;
}

bool Value::is_whole_number() const {
  switch (vt) {
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
      return true;
    default:
      return false;
  }
}

bool operator==(const Value& left, const Value& right) {
  if (left.is_whole_number() && right.is_whole_number()) return left.number() == right.number();
  if (left.is_object() && right.is_object()) return same_object(left, right);
  if (is_real(left.vt) && is_real(right.vt)) return left.real() == right.real();
  if (left.vt != right.vt) return false;
  switch (left.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return true;
    case VT_BSTR:
      return view_of(left.bstrVal) == view_of(right.bstrVal);
    case VT_BOOL:
      return left.boolVal == right.boolVal;
    case VT_ERROR:
      return left.scode == right.scode;
    case VT_DATE:
      return left.date == right.date;
    case VT_CY:
      return left.cyVal.int64 == right.cyVal.int64;
    case VT_DECIMAL:
      return VarDecCmp(const_cast<DECIMAL*>(&left.decVal), const_cast<DECIMAL*>(&right.decVal)) ==
             VARCMP_EQ;
    default:
      return left.byref == right.byref;
  }
}

std::string printable(std::wstring_view text) {
  const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), length,
                      nullptr, nullptr);
  return bytes;
}

void PrintTo(const Value& value, std::ostream* out) {
  if (value.is_text()) {
    *out << std::quoted(printable(view_of(value.bstrVal)));
  } else if (value.is_whole_number()) {
    *out << value.number() << " (type " << value.vt << ")";
  } else if (is_real(value.vt)) {
    *out << value.real() << " (type " << value.vt << ")";
  } else if (value.vt == VT_BOOL) {
    *out << "Boolean " << value.boolVal;
  } else if (value.vt == VT_EMPTY || value.vt == VT_NULL) {
    *out << (value.vt == VT_EMPTY ? "Empty" : "Null");
  } else if (value.is_object()) {
    *out << "object " << value.punkVal;
  } else {
    *out << "value of type " << value.vt;
  }
}

VARIANT by_ref_of(VARTYPE type, void* variable) {
  VARIANT reference;
  VariantInit(&reference);
  reference.vt = static_cast<VARTYPE>(VT_BYREF | type);
  reference.byref = variable;
  return reference;
}

VARIANT by_ref(VARIANT& variable) { return by_ref_of(VT_VARIANT, &variable); }
VARIANT by_ref(short& variable) { return by_ref_of(VT_I2, &variable); }
VARIANT by_ref(long& variable) { return by_ref_of(VT_I4, &variable); }
VARIANT by_ref(double& variable) { return by_ref_of(VT_R8, &variable); }
VARIANT by_ref(float& variable) { return by_ref_of(VT_R4, &variable); }
VARIANT by_ref(BSTR& variable) { return by_ref_of(VT_BSTR, &variable); }
VARIANT by_ref(IDispatch*& variable) { return by_ref_of(VT_DISPATCH, &variable); }
VARIANT by_ref_boolean(VARIANT_BOOL& variable) { return by_ref_of(VT_BOOL, &variable); }

}  // namespace pv::test
