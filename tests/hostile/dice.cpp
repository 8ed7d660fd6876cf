// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/hostile/dice.h"

#include <cmath>
#include <string_view>

#include "tests/support/sample_values.h"

namespace pv::test {

std::wstring Dice::text() {
  using namespace std::string_view_literals;
  static const std::vector<std::wstring> kTexts = {L"",
                                                   L"1",
                                                   L"2",
                                                   L"3",
                                                   L"10",
                                                   L"-1",
                                                   L"1,5",
                                                   L"2.5e3",
                                                   L"1e999",
                                                   L"text",
                                                   L"a|b|c|",
                                                   L"|",
                                                   L"hostile.ini",
                                                   L"hostile.itm",
                                                   L"hostile",
                                                   L"hostile.dim",
                                                   L"hostile.lst",
                                                   L"S1:P1024",
                                                   L"9600,n,8,1",
                                                   L"*.*",
                                                   L"[a-z]*",
                                                   L"?",
                                                   std::wstring(L"nul\0inside"sv),
                                                   L"\x150\x171\xD83D",
                                                   L"Symbol",
                                                   std::wstring(300, L'x'),
                                                   std::wstring(5000, L'7'),
                                                   L"12/31/2026",
                                                   L" ",
                                                   L"\r\n"};
  if (chance(80)) return any_of(kTexts);
  std::wstring made;
  for (unsigned left = random(30); left > 0; --left)
    made += static_cast<wchar_t>(chance(80) ? 32 + random(96) : random(65536));
  return made;
}

Value Dice::number(VARTYPE type) {
  static const std::vector<double> kNumbers = {0,   1,     2,      3,     -1,    5,
                                               100, 32767, -32768, 65536, 2e9,   -2147483648.0,
                                               0.5, -0.5,  1e38,   1e300, -1e300};
  if (chance(3) && (type == VT_R4 || type == VT_R8 || type == VT_DATE)) {
    Value value = with_type(type, 0);
    if (type == VT_R4) value.fltVal = std::nanf("");
    if (type != VT_R4) value.dblVal = chance(50) ? std::nan("") : HUGE_VAL;
    return value;
  }
  return with_type(type, any_of(kNumbers));
}

}  // namespace pv::test
