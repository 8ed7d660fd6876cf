// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/dispatch_object.h"

#include <gtest/gtest.h>

#include <utility>

namespace pv::test {

STDMETHODIMP DispatchObject::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  const bool extended = iid == __uuidof(IDispatchEx) && is_script();
  const bool events = events_ && iid == *events_;
  if (iid != IID_IUnknown && iid != IID_IDispatch && !extended && !events) return E_NOINTERFACE;
  *object = static_cast<IDispatchEx*>(this);
  AddRef();
  return S_OK;
}

HRESULT raise(const RaisedError& error, EXCEPINFO* exception) {
  if (exception) {
    *exception = EXCEPINFO{};
    exception->scode = error.code;
    exception->bstrSource = Bstr(error.source).detach();
    exception->bstrDescription = Bstr(error.description).detach();
  }
  return DISP_E_EXCEPTION;
}

void change_argument(const VARIANT& reference, const Value& value) {
  Value copy(value);
  switch (reference.vt) {
    case VT_BYREF | VT_VARIANT:
      VariantCopy(reference.pvarVal, &copy);
      break;
    case VT_BYREF | VT_BSTR:
      std::swap(*reference.pbstrVal, copy.bstrVal);
      break;
    case VT_BYREF | VT_DISPATCH:
      std::swap(*reference.ppdispVal, copy.pdispVal);
      break;
    case VT_BYREF | VT_I4:
      *reference.plVal = copy.number();
      break;
    case VT_BYREF | VT_I2:
      *reference.piVal = static_cast<short>(copy.number());
      break;
    case VT_BYREF | VT_R4:
      *reference.pfltVal = static_cast<float>(copy.real());
      break;
    case VT_BYREF | VT_BOOL:
      *reference.pboolVal = copy.boolean() ? VARIANT_TRUE : VARIANT_FALSE;
      break;
    default:
      ADD_FAILURE() << "an argument of type " << reference.vt << " cannot be changed";
  }
}

}  // namespace pv::test
