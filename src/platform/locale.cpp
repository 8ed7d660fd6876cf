// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/locale.h"

#include "com/automation.h"
#include "com/failure.h"
#include "com/variant.h"
#include "core/text/number_text.h"

namespace pv {

wchar_t decimal_separator() {
  wchar_t text[8] = L"";
  return GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, ARRAYSIZE(text)) > 0 ? text[0]
                                                                                         : L'.';
}

std::wstring format_number(double value) { return format_number(value, decimal_separator()); }
std::wstring format_number(float value) { return format_number(value, decimal_separator()); }

double current_moment() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  double moment = 0;
  SystemTimeToVariantTime(&now, &moment);
  return moment;
}

std::wstring current_time_text(const wchar_t* format) {
  Variant moment(current_moment());
  moment.vt = VT_DATE;
  BSTR text = nullptr;
  check(VarFormat(&moment, const_cast<wchar_t*>(format), 0, 0, 0, &text));
  const Bstr owner = Bstr::attach(text);
  return std::wstring(view_of(text));
}

}  // namespace pv
