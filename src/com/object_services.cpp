// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/object_services.h"

#include "com/boundary.h"
#include "com/type_library.h"

namespace pv {

Served served_interface(REFIID iid, REFIID members, REFCLSID clsid) noexcept {
  if (iid == IID_IUnknown || iid == IID_IDispatch || iid == members || iid == clsid) {
    return Served::kMembers;
  }
  if (iid == IID_ISupportErrorInfo) return Served::kErrorInfo;
  if (iid == IID_IProvideClassInfo || iid == IID_IProvideClassInfo2) return Served::kClassInfo;
  return Served::kNone;
}

HRESULT get_type_info(const wchar_t* class_name, const char* function, REFGUID id,
                      ITypeInfo** info) noexcept {
  if (!info) return E_POINTER;
  *info = nullptr;
  return guarded(class_name, function, [&] { *info = own_type_info(id).detach(); });
}

HRESULT get_events_id(const IID* events, DWORD kind, GUID* id) noexcept {
  if (!id) return E_POINTER;
  *id = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  if (!events) return E_NOINTERFACE;
  *id = *events;
  return S_OK;
}

}  // namespace pv
