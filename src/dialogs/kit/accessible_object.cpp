// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/accessible_object.h"

#include <utility>

#include "com/failure.h"
#include "com/variant.h"

namespace pv {

AccessibleObject::AccessibleObject(Ref<IAccessible> standard,
                                   std::function<AccessibleDescription()> describe)
    : base_(std::move(standard)), describe_(std::move(describe)) {}

STDMETHODIMP AccessibleObject::QueryInterface(REFIID iid, void** object) {
  if (iid != IID_IDispatch || !object) return SimpleObject::QueryInterface(iid, object);
  *object = static_cast<IDispatch*>(this);
  AddRef();
  return S_OK;
}

AccessibleDescription AccessibleObject::description(const VARIANT& child) const {
  AccessibleDescription description;
  const bool itself = child.vt == VT_I4 && child.lVal == CHILDID_SELF;
  if (itself && describe_) attempt([&] { description = describe_(); });
  return description;
}

STDMETHODIMP AccessibleObject::get_accName(VARIANT child, BSTR* name) {
  const std::wstring own = description(child).name;
  if (own.empty() || !name) return base_->get_accName(child, name);
  *name = SysAllocString(own.c_str());
  return *name ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
  const long own = description(child).role;
  if (own == 0 || !role) return base_->get_accRole(child, role);
  role->vt = VT_I4;
  role->lVal = own;
  return S_OK;
}

STDMETHODIMP AccessibleObject::get_accValue(VARIANT child, BSTR* value) {
  const std::wstring own = description(child).value;
  if (own.empty() || !value) return base_->get_accValue(child, value);
  *value = SysAllocString(own.c_str());
  return *value ? S_OK : E_OUTOFMEMORY;
}

// Late-bound readers are answered with the members above, not with those of the platform's object.
STDMETHODIMP AccessibleObject::Invoke(DISPID id, REFIID iid, LCID locale, WORD flags,
                                      DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* failure,
                                      UINT* wrong) {
  Ref<ITypeInfo> members;
  if (iid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  const HRESULT known = base_->GetTypeInfo(0, locale, members.put());
  if (FAILED(known)) return known;
  return members->Invoke(static_cast<IAccessible*>(this), id, flags, arguments, result, failure,
                         wrong);
}

}  // namespace pv
