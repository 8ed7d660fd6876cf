// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A class of somebody else for one apartment, which has nothing in common with the library: what
// the platform does with this one, it does with any.

#include <objbase.h>
#include <unknwn.h>
#include <windows.h>

#include <atomic>

namespace {

std::atomic<long> living{0};

/// Its instances are no more than there.
template <class Interface>
class Counted : public Interface {
 public:
  Counted() { ++living; }
  virtual ~Counted() { --living; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    *object = iid == IID_IUnknown || iid == __uuidof(Interface) ? this : nullptr;
    if (*object) AddRef();
    return *object ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  std::atomic<ULONG> references_{0};
};

class Instance final : public Counted<IUnknown> {};

class Factory final : public Counted<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    *object = nullptr;
    return outer ? CLASS_E_NOAGGREGATION : (new Instance)->QueryInterface(iid, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID, REFIID iid, void** object) {
  return (new Factory)->QueryInterface(iid, object);
}

STDAPI DllCanUnloadNow() { return living == 0 ? S_OK : S_FALSE; }
