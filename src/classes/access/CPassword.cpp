// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/access/CPassword.h"

namespace pv {

template ClassEntry class_entry<CPassword>();

STDMETHODIMP CPassword::Status(VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return is_open(); });
}

void CPassword::assign(std::wstring_view reference, std::wstring_view current) {
  reference_ = reference;
  current_ = current;
}

}  // namespace pv
