#include "com/module.h"

#include <atomic>

#include "com/boundary.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace pv {
namespace {

std::atomic<long> living{0};

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ClassEntry& entry) : entry_(entry) { add_living_object(); }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
    *object = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
  STDMETHODIMP_(ULONG) Release() override {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

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
  ~ClassFactory() { remove_living_object(); }

  const ClassEntry& entry_;
  std::atomic<long> references_{0};
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
  for (const ClassEntry& entry : class_table()) {
    if (*entry.clsid != clsid) continue;
    const Ref<IClassFactory> factory(new (std::nothrow) ClassFactory(entry));
    return factory ? factory->QueryInterface(iid, object) : E_OUTOFMEMORY;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

}  // namespace pv
