// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/reference.h"

#include "tests/script_host/script_text.h"

namespace pv::test {

DISPID Reference::id_of(std::wstring_view member) {
  return is_same_name(member, L"Value") ? DISPID_VALUE : DISPID_UNKNOWN;
}

STDMETHODIMP Reference::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given,
                               VARIANT* result, EXCEPINFO*, UINT*) {
  if (id != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
  if (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) {
    if (given->cArgs != 1) return DISP_E_BADPARAMCOUNT;
    value_ = Value(dereferenced(given->rgvarg[0]));
  } else if (result) {
    *result = Value(value_).detach();
  }
  return S_OK;
}

PassedArgument::PassedArgument(const VARIANT& given, bool as_reference)
    : given_(given), as_reference_(as_reference) {
  if (given.vt & VT_BYREF) variable_ = Ref(new Reference(Value(dereferenced(given))));
}

VARIANT PassedArgument::variant() const {
  if (!variable_) return given_;
  if (as_reference_) return by_ref(variable_->value());
  VARIANT object;
  VariantInit(&object);
  object.vt = VT_DISPATCH;
  object.pdispVal = variable_.get();
  return object;
}

void PassedArgument::hand_back() const {
  if (!variable_) return;
  Value& value = variable_->value();
  if (given_.vt == (VT_BYREF | VT_VARIANT)) {
    VariantCopy(given_.pvarVal, &value);
  } else {
    const bool is_no_object = given_.vt == (VT_BYREF | VT_DISPATCH) && is_nothing(value);
    store_typed(given_, is_no_object ? Value::nothing() : value);
  }
}

}  // namespace pv::test
