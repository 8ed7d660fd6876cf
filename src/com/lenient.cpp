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
      case VT_R8:
        result = normalized_number(general_text(plain.dblVal, L'.'), decimal);
        break;
      default:
        result = normalized_number(text_of(plain), decimal);
        break;
    }
  });
  return result;
}

double number_of(const VARIANT& value) { return number_of(lenient_number_text(value, L'.')); }

bool boolean_or_false(const VARIANT& value) {
  bool result = false;
  attempt([&] { result = boolean_of(dereferenced(value)); });
  return result;
}

}  // namespace pv
