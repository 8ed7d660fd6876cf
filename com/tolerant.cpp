#include "com/tolerant.h"

#include "com/boundary.h"
#include "platform/locale.h"

namespace pv {
namespace {

std::wstring number_text_with(const VARIANT& value, wchar_t decimal) {
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

}  // namespace

std::wstring number_text_of(const VARIANT& value) {
  return number_text_with(value, decimal_separator());
}

double number_of(const VARIANT& value) { return number_of(number_text_with(value, L'.')); }

bool boolean_or_false(const VARIANT& value) {
  bool result = false;
  attempt([&] { result = boolean_of(dereferenced(value)); });
  return result;
}

}  // namespace pv
