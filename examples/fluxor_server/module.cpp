// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What makes a DLL of the server: a class factory, and registration by regsvr32.

#include <string>

#include "FluxorServer.h"

namespace {

using fluxor::CallFailure;
using fluxor::living_objects;

// A server of your own needs its own identifier: run uuidgen.
constexpr CLSID kClassID = {
    0x0ef60f3b, 0x8d1d, 0x4f70, {0x92, 0x53, 0xd8, 0xae, 0x11, 0xcf, 0xd9, 0xb6}};
constexpr const wchar_t* kClassText = L"{0EF60F3B-8D1D-4F70-9253-D8AE11CFD9B6}";
constexpr const wchar_t* kProgID = L"Fluxor.Server";
constexpr const wchar_t* kDescription = L"Fluxor transmitter server";

HMODULE module = nullptr;
std::atomic<long> locks{0};

/// Lives as long as the module: it counts no references.
class Factory final : public IClassFactory {
 public:
  virtual ~Factory() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
    return *object ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      return fluxor::make<fluxor::FluxorServer>()->QueryInterface(iid, object);
    } catch (const CallFailure& failure) {  // such as: pvItems32 is not registered
      return failure.code();
    } catch (const std::exception&) {
      return E_OUTOFMEMORY;
    }
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    locks += lock ? 1 : -1;
    return S_OK;
  }
};

bool set_value(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
  const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, value.c_str(), size) ==
         ERROR_SUCCESS;
}

std::wstring class_key() { return std::wstring(L"CLSID\\") + kClassText; }

std::wstring module_path() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  static Factory factory;
  if (!object) return E_POINTER;
  *object = nullptr;
  return clsid == kClassID ? factory.QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return living_objects == 0 && locks == 0 ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
  const std::wstring server = class_key() + L"\\InprocServer32";
  const bool done = set_value(class_key(), nullptr, kDescription) &&
                    set_value(class_key() + L"\\ProgID", nullptr, kProgID) &&
                    set_value(server, nullptr, module_path()) &&
                    set_value(server, L"ThreadingModel", L"Apartment") &&
                    set_value(kProgID, nullptr, kDescription) &&
                    set_value(std::wstring(kProgID) + L"\\CLSID", nullptr, kClassText);
  return done ? S_OK : SELFREG_E_CLASS;
}

STDAPI DllUnregisterServer() {
  RegDeleteTreeW(HKEY_CLASSES_ROOT, class_key().c_str());
  RegDeleteTreeW(HKEY_CLASSES_ROOT, kProgID);
  return S_OK;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    module = instance;
    DisableThreadLibraryCalls(instance);
  }
  return TRUE;
}
