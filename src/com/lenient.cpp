// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/lenient.h"

#include "com/failure.h"

namespace pv {

std::wstring lenient_number_text(const VARIANT& value, wchar_t decimal) {
  std::wstring result = L"0";
  attempt([&] {
    const Variant plain = dereferenced(value);
    switch (plain.vt) {
      case VT_EMPTY:
        break;
      case VT_BOOL:
        result = plain.boolVal ? L"-1" : L"0";
        break;
      case VT_R4:
        result = lenient_number_text(format_number(plain.fltVal, L'.'), decimal);
        break;
      case VT_R8:
      case VT_CY:
      case VT_DECIMAL:  // whose texts have the decimal symbol of the user, whatever it is
        result = lenient_number_text(format_number(to_double(plain), L'.'), decimal);
        break;
      default:
        result = lenient_number_text(to_text(plain), decimal);
        break;
    }
  });
  return result;
}

double lenient_number(const VARIANT& value) {
  return lenient_number(lenient_number_text(value, L'.'));
}

bool lenient_boolean(const VARIANT& value) {
  bool result = false;
  attempt([&] { result = to_bool(dereferenced(value)); });
  return result;
}

}  // namespace pv
