// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CFunction.h"

#include "com/call.h"
#include "host/late_bound.h"

namespace pv {

template ClassEntry class_entry<CFunction>();

STDMETHODIMP CFunction::Start(_CTxm* txm, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    const LateBound form(server_form_);
    if (!form) return false;
    active_ = true;
    short index = index_;
    const Bstr title(result_of(txm, &_CTxm::FunctionTitle, &index));
    return to_bool(form.call(L"Start", {value(txm), value(title)}));
  });
}

// The form lets itself be unloaded only when its "CloseMe" is set.
STDMETHODIMP CFunction::Finish(VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    const LateBound form(server_form_);
    if (!form) return false;
    active_ = false;
    form.put(L"CloseMe", Variant(true));
    if (form.has(L"Unload")) form.call(L"Unload");
    return true;
  });
}

}  // namespace pv
