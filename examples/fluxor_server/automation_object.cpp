// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "automation_object.h"

#include <wchar.h>

namespace fluxor {

std::atomic<long> living_objects{0};

// --- Arguments
// --------------------------------------------------------------------------------------

VARIANT& Arguments::at(std::size_t index) const {
  if (index >= parameters_.cArgs)
    throw CallFailure(DISP_E_BADPARAMCOUNT, L"An argument is missing.");
  return parameters_.rgvarg[parameters_.cArgs - 1 - index];  // the last one comes first
}

bool Arguments::is_given(std::size_t index) const {
  return index < parameters_.cArgs && V_VT(&at(index)) != VT_ERROR;
}

_variant_t Arguments::value(std::size_t index) const {
  _variant_t plain;
  check(VariantCopyInd(&plain, &at(index)));
  return plain;
}

_variant_t Arguments::as(std::size_t index, VARTYPE type) const {
  try {
    return converted(value(index), type);
  } catch (const CallFailure& failure) {
    throw CallFailure(failure.code(),
                      L"Argument " + std::to_wstring(index + 1) + L" is of the wrong type.");
  }
}

short Arguments::integer(std::size_t index) const {
  const _variant_t number = as(index, VT_I2);
  return V_I2(&number);
}

bool Arguments::flag(std::size_t index) const {
  const _variant_t number = as(index, VT_BOOL);
  return V_BOOL(&number) != VARIANT_FALSE;
}

std::wstring Arguments::text(std::size_t index) const { return text_of(as(index, VT_BSTR)); }

void Arguments::set(std::size_t index, _variant_t value) {
  VARIANT& target = at(index);
  if (V_VT(&target) == (VT_BYREF | VT_VARIANT)) {
    check(VariantCopy(V_VARIANTREF(&target), &value));
    return;
  }
  if ((V_VT(&target) & VT_BYREF) == 0) return;
  VARIANT released = converted(std::move(value), V_VT(&target) & VT_TYPEMASK).Detach();
  switch (V_VT(&released)) {
    case VT_I2:
      *V_I2REF(&target) = V_I2(&released);
      break;
    case VT_I4:
      *V_I4REF(&target) = V_I4(&released);
      break;
    case VT_BOOL:
      *V_BOOLREF(&target) = V_BOOL(&released);
      break;
    case VT_BSTR:
      SysFreeString(*V_BSTRREF(&target));
      *V_BSTRREF(&target) = V_BSTR(&released);
      break;
    case VT_DISPATCH:
      if (*V_DISPATCHREF(&target)) (*V_DISPATCHREF(&target))->Release();
      *V_DISPATCHREF(&target) = V_DISPATCH(&released);
      break;
    default:
      VariantClear(&released);
      throw CallFailure(DISP_E_TYPEMISMATCH, L"A variable of this type cannot be changed.");
  }
}

// --- AutomationObject
// -------------------------------------------------------------------------------

void AutomationObject::property(std::wstring name, Body get, Setter set) {
  members_.push_back({std::move(name), std::move(get), std::move(set)});
}

STDMETHODIMP AutomationObject::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IDispatch) return E_NOINTERFACE;
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) AutomationObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP AutomationObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP AutomationObject::GetTypeInfo(UINT, LCID, ITypeInfo** information) {
  if (information) *information = nullptr;
  return DISP_E_BADINDEX;
}

STDMETHODIMP AutomationObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                             DISPID* ids) {
  if (!names || !ids || count == 0) return E_POINTER;
  for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
  for (std::size_t i = 0; i < members_.size(); ++i) {
    if (_wcsicmp(members_[i].name.c_str(), names[0]) != 0) continue;
    ids[0] = static_cast<DISPID>(i + 1);
    return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;  // arguments have no names here
  }
  return DISP_E_UNKNOWNNAME;
}

_variant_t AutomationObject::perform(const Member& member, WORD flags,
                                     DISPPARAMS& parameters) const {
  Arguments arguments(parameters);
  if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0) {
    if (!member.get) throw CallFailure(DISP_E_MEMBERNOTFOUND, member.name + L" can only be set.");
    return member.get(arguments);
  }
  if (!member.set) throw CallFailure(DISP_E_MEMBERNOTFOUND, member.name + L" cannot be set.");
  member.set(arguments);
  return {};
}

STDMETHODIMP AutomationObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                      VARIANT* result, EXCEPINFO* exception, UINT*) {
  if (result) VariantInit(result);
  if (!parameters) return E_POINTER;
  if (id < 1 || static_cast<std::size_t>(id) > members_.size()) return DISP_E_MEMBERNOTFOUND;

  const ComPtr<IDispatch> alive(this);  // a member may cause the release of its own object
  const Member& member = members_[static_cast<std::size_t>(id) - 1];
  HRESULT code = E_FAIL;
  std::wstring text;
  try {
    _variant_t answer = perform(member, flags, *parameters);
    if (result) *result = answer.Detach();
    return S_OK;
  } catch (const CallFailure& failure) {
    code = failure.code();
    text = failure.text();
  } catch (const std::bad_alloc&) {
    code = E_OUTOFMEMORY;
  } catch (const std::exception&) {
    text = L"Unexpected failure.";
  }
  if (!exception) return code;
  *exception = {};
  exception->scode = code;
  exception->bstrSource = SysAllocString(L"Fluxor.Server");
  exception->bstrDescription = SysAllocString((member.name + L": " + text).c_str());
  return DISP_E_EXCEPTION;
}

}  // namespace fluxor
