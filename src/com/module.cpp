// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/module.h"

#include <atomic>

#include "com/simple_object.h"

// The linker names the beginning of the module so.
// NOLINTNEXTLINE(bugprone-reserved-identifier, cppcoreguidelines-avoid-non-const-global-variables)
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace pv {
namespace {

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the module has one count.
std::atomic<long> living{0};

class ClassFactory final : public SimpleObject<ClassFactory, IClassFactory> {
 public:
  explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    return outer ? CLASS_E_NOAGGREGATION : entry_.create(iid, object);
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    if (lock) {
      add_living_object();
    } else {
      remove_living_object();
    }
    return S_OK;
  }

 private:
  const ClassEntry& entry_;
};

}  // namespace

HINSTANCE module_instance() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

std::wstring module_path() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetModuleFileNameW(module_instance(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

long living_objects() { return living.load(); }
void add_living_object() { ++living; }
void remove_living_object() { --living; }

HRESULT get_class_object(REFCLSID clsid, REFIID iid, void** object) noexcept {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const ClassEntry& entry : library().classes) {
    if (*entry.clsid != clsid) continue;
    const Ref<IClassFactory> factory(new (std::nothrow) ClassFactory(entry));
    return factory ? factory->QueryInterface(iid, object) : E_OUTOFMEMORY;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

}  // namespace pv
