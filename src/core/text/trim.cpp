// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/trim.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace pv {

std::wstring trim(std::wstring_view text) {
  const std::size_t first = std::min(text.find_first_not_of(L' '), text.size());
  std::wstring result(text.substr(0, first));
  std::copy_if(text.begin() + static_cast<std::ptrdiff_t>(first), text.end(),
               std::back_inserter(result), [](wchar_t c) { return c != L' '; });
  return result;
}

}  // namespace pv
