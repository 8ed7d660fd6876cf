#pragma once

#include "com/automation.h"

namespace pv::test {

/// The IUnknown of an object of a test. It answers to its automation interface, and goes with its
/// last reference.
template <class Interface>
class Counted : public Interface {
 public:
  /// `iid`: the interface that clients know it by, where that is another one than the compiler's.
  explicit Counted(REFIID iid = __uuidof(Interface)) : iid_(iid) {}
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  virtual ~Counted() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == iid_;
    *object = known ? static_cast<Interface*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

 private:
  const IID iid_;
  ULONG references_ = 0;
};

}  // namespace pv::test
