// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/units/CUnit.h"

#include "platform/locale.h"

namespace pv {

template ClassEntry class_entry<CUnit>();

STDMETHODIMP CUnit::Load(BSTR members, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    ParsedUnit parsed = parse_unit(view_of(members), unit_, decimal_separator());
    unit_ = std::move(parsed.unit);
    return parsed.complete;
  });
}

STDMETHODIMP CUnit::Save(BSTR* result) noexcept {
  return method_with_result(result, [&] { return format_unit(unit_, decimal_separator()); });
}

}  // namespace pv
