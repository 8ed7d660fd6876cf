// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/type_constants.h"

#include "tests/support/object.h"
#include "tests/support/type_library.h"

namespace pv::test {
namespace {

std::wstring registered_text(const std::wstring& key) {
  wchar_t text[100];
  DWORD size = sizeof text;
  if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text, &size) !=
      ERROR_SUCCESS) {
    throw CallFailed("not registered: " + printable(key));
  }
  return text;
}

}  // namespace

DISPID TypeConstants::id_of(std::wstring_view name) {
  std::wstring text(name);
  Ref<ITypeComp> names;
  if (FAILED(library_->GetTypeComp(names.put()))) return DISPID_UNKNOWN;
  Ref<ITypeInfo> owner;
  DESCKIND kind = DESCKIND_NONE;
  BINDPTR found{};
  const ULONG hash = LHashValOfNameSys(SYS_WIN32, LOCALE_USER_DEFAULT, text.c_str());
  names->Bind(text.data(), hash, INVOKE_PROPERTYGET, owner.put(), &kind, &found);
  if (kind == DESCKIND_TYPECOMP) found.lptcomp->Release();
  if (kind == DESCKIND_FUNCDESC) owner->ReleaseFuncDesc(found.lpfuncdesc);
  if (kind != DESCKIND_VARDESC) return DISPID_UNKNOWN;
  values_.emplace_back(*found.lpvardesc->lpvarValue);
  owner->ReleaseVarDesc(found.lpvardesc);
  return static_cast<DISPID>(values_.size());
}

STDMETHODIMP TypeConstants::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) {
  if (id < 1 || static_cast<std::size_t>(id) > values_.size()) return DISP_E_MEMBERNOTFOUND;
  if (result) *result = Value(values_[static_cast<std::size_t>(id) - 1]).detach();
  return S_OK;
}

Ref<ITypeLib> registered_type_library(const std::wstring& guid, unsigned major, unsigned minor) {
  IID id{};
  Ref<ITypeLib> library;
  if (FAILED(IIDFromString(guid.c_str(), &id)) ||
      FAILED(LoadRegTypeLib(id, static_cast<WORD>(major), static_cast<WORD>(minor), LOCALE_NEUTRAL,
                            library.put()))) {
    throw CallFailed("no type library " + printable(guid));
  }
  return library;
}

Ref<ITypeLib> type_library_of_class(const std::wstring& prog_id) {
  const std::wstring clsid = registered_text(prog_id + L"\\CLSID");
  return registered_type_library(registered_text(L"CLSID\\" + clsid + L"\\TypeLib"), 1, 0);
}

}  // namespace pv::test
