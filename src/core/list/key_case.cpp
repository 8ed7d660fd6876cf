// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/list/key_case.h"

namespace pv {

std::wstring KeyCase::fold(std::wstring_view key) const {
  std::wstring folded(key);
  if (!is_ascii(key)) {
    lower_(folded);
    return folded;
  }
  for (wchar_t& c : folded) c = lower_ascii(c);
  return folded;
}

}  // namespace pv
