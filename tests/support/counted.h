// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <type_traits>

#include "com/automation.h"

namespace pv::test {

/// IUnknown for the objects of the tests: answers to its interface and deletes itself with the last
/// reference, on whatever thread that is released.
template <class Interface>
class Counted : public Interface {
 public:
  /// `iid`: a further interface that it answers to, such as a dispatch interface of events.
  explicit Counted(REFIID iid = __uuidof(Interface)) : iid_(iid) {}
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  virtual ~Counted() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    const bool automation = std::is_base_of_v<IDispatch, Interface> && iid == IID_IDispatch;
    const bool known = automation || iid == IID_IUnknown || iid == iid_;
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
  std::atomic<ULONG> references_ = 0;
};

}  // namespace pv::test
