// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Objects of a host that do as little as such an object can.
#pragma once

#include "tests/bench/subject.h"
#include "tests/support/counted.h"

namespace pv::bench {

/// The part of an automation object that all of these share.
class HostObject : public test::Counted<IDispatch> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
};

/// A compiled transmitter server that answers every exchange with True and does nothing.
class IdleServer final : public HostObject {
 public:
  IdleServer(Ref<_CItems> items, Ref<_CDimensions> dimensions);
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO*, UINT*) override;

 private:
  Ref<_CItems> items_;
  Ref<_CDimensions> dimensions_;
  Ref<_CProtocols> protocols_;
};

/// A listener that does nothing but count, with the cheapest Invoke there can be.
class IdleListener final : public HostObject {
 public:
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    count = count + 1;
    return S_OK;
  }
  volatile long count = 0;  // keeps the compiler from dropping the handler
};

}  // namespace pv::bench
