// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CInputBox.h"

#include "com/index_key.h"
#include "host/owner_window.h"

namespace pv {

template ClassEntry class_entry<CInputBox>();

namespace {

// A missing argument and Null both mean that there is no default.
Variant initial_value(const VARIANT& given) {
  Variant initial = dereferenced(given);
  if (is_missing(initial) || initial.vt == VT_NULL) return Variant();
  return initial;
}

bool show(InputKind kind, const VARIANT& prompt, const VARIANT& title, const VARIANT& initial,
          const VARIANT& unit, IDispatch* owner) {
  InputRequest request;
  request.kind = kind;
  request.prompt = optional_text(prompt);
  request.title = optional_text(title);
  request.initial = initial_value(initial);
  request.unit = optional_text(unit);
  request.owner = owner_window(owner);
  return show_input_box(request);
}

}  // namespace

STDMETHODIMP CInputBox::ShowMe(VARIANT prompt, VARIANT title, VARIANT initial, VARIANT unit,
                               IDispatch* owner, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return show(InputKind::kText, prompt, title, initial, unit, owner); });
}

STDMETHODIMP CInputBox::ShowMePW(VARIANT prompt, VARIANT title, VARIANT initial, VARIANT unit,
                                 IDispatch* owner, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return show(InputKind::kMasked, prompt, title, initial, unit, owner); });
}

STDMETHODIMP CInputBox::ShowMeDT(VARIANT prompt, VARIANT title, VARIANT initial, VARIANT unit,
                                 IDispatch* owner, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return show(InputKind::kDateTime, prompt, title, initial, unit, owner); });
}

STDMETHODIMP CInputBox::get_Value(VARIANT* result) noexcept {
  return method_with_result(result, [] { return input_box_value(); });
}

STDMETHODIMP CInputBox::CloseMe() noexcept {
  return method([] { close_input_box(); });
}

}  // namespace pv
