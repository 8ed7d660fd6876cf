// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>

#include "com/automation.h"
#include "com/floating_point.h"
#include "com/module.h"

namespace pv {

/// Counts the references of an object and deletes it with the last one.
class ReferenceCount {
 public:
  ULONG add() { return static_cast<ULONG>(++count_); }

  template <class Object>
  ULONG release(Object* object) {
    const long left = --count_;
    if (left == 0) destroy(object);
    return static_cast<ULONG>(left);
  }

 private:
  // Apart, so that the many who release share it.
  template <class Object>
  [[gnu::noinline]] void destroy(Object* object) {
    const FloatingPointScope masked;
    count_ = 1;  // a reference taken and dropped while dying must not start over
    delete object;
  }

  std::atomic<long> count_{0};
};

/// The base of the small objects that serve one interface and belong to no published class. The
/// library stays loaded as long as one exists.
template <class Derived, class Interface>
class SimpleObject : public Interface {
 public:
  SimpleObject(const SimpleObject&) = delete;
  SimpleObject& operator=(const SimpleObject&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != __uuidof(Interface)) return E_NOINTERFACE;
    *object = static_cast<Interface*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return references_.add(); }
  STDMETHODIMP_(ULONG) Release() override {
    return references_.release(static_cast<Derived*>(this));
  }

 protected:
  SimpleObject() { add_living_object(); }
  ~SimpleObject() { remove_living_object(); }

 private:
  ReferenceCount references_;
};

}  // namespace pv
