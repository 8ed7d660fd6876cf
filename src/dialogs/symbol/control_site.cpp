// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/symbol/control_site.h"

#include <olectl.h>

#include "com/module.h"

namespace pv {
namespace {

template <class T>
HRESULT answer_nothing(T** out, HRESULT result) {
  if (!out) return E_POINTER;
  *out = nullptr;
  return result;
}

}  // namespace

ControlSite::ControlSite() { add_living_object(); }

ControlSite::~ControlSite() { remove_living_object(); }

STDMETHODIMP ControlSite::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid == IID_IUnknown || iid == IID_IOleClientSite) {
    *object = static_cast<IOleClientSite*>(this);
  } else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite) {
    *object = static_cast<IOleInPlaceSite*>(this);
  } else if (iid == IID_IOleInPlaceUIWindow || iid == IID_IOleInPlaceFrame) {
    *object = static_cast<IOleInPlaceFrame*>(this);
  } else if (iid == IID_IOleControlSite) {
    *object = static_cast<IOleControlSite*>(this);
  } else if (iid == IID_IDispatch) {
    *object = static_cast<IDispatch*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
  return answer_nothing(moniker, E_NOTIMPL);
}

STDMETHODIMP ControlSite::GetContainer(IOleContainer** container) {
  return answer_nothing(container, E_NOINTERFACE);
}

STDMETHODIMP ControlSite::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = window_;
  return window_ ? S_OK : E_FAIL;
}

STDMETHODIMP ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                           LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO info) {
  if (!frame || !document || !place || !clip || !info) return E_POINTER;
  *document = nullptr;
  *frame = Ref<IOleInPlaceFrame>(this).detach();
  GetClientRect(window_, place);
  *clip = *place;
  info->fMDIApp = FALSE;
  info->hwndFrame = GetAncestor(window_, GA_ROOT);
  info->haccel = nullptr;
  info->cAccelEntries = 0;
  return S_OK;
}

STDMETHODIMP ControlSite::OnInPlaceDeactivate() {
  active_.reset();
  return S_OK;
}

STDMETHODIMP ControlSite::SetActiveObject(IOleInPlaceActiveObject* active, LPCOLESTR) {
  active_ = active;
  return S_OK;
}

STDMETHODIMP ControlSite::GetExtendedControl(IDispatch** control) {
  return answer_nothing(control, E_NOTIMPL);
}

STDMETHODIMP ControlSite::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP ControlSite::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
  return answer_nothing(info, E_NOTIMPL);
}

STDMETHODIMP ControlSite::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result,
                                 EXCEPINFO*, UINT*) {
  if (!(flags & DISPATCH_PROPERTYGET)) return DISP_E_MEMBERNOTFOUND;
  if (!result) return E_POINTER;
  VariantInit(result);
  switch (id) {
    case DISPID_AMBIENT_USERMODE:
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_MESSAGEREFLECT:
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
      result->vt = VT_BOOL;
      result->boolVal = id == DISPID_AMBIENT_USERMODE ? VARIANT_TRUE : VARIANT_FALSE;
      return S_OK;
    case DISPID_AMBIENT_LOCALEID:
      result->vt = VT_I4;
      result->lVal = static_cast<LONG>(GetUserDefaultLCID());
      return S_OK;
    case DISPID_AMBIENT_BACKCOLOR:
    case DISPID_AMBIENT_FORECOLOR:
      // The colours of the form, as numbers of system colours.
      result->vt = VT_I4;
      result->lVal = static_cast<LONG>(
          0x80000000u | (id == DISPID_AMBIENT_BACKCOLOR ? COLOR_BTNFACE : COLOR_BTNTEXT));
      return S_OK;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
}

}  // namespace pv
