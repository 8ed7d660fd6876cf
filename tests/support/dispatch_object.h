// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <dispex.h>

#include <string>
#include <string_view>

#include "tests/support/counted.h"
#include "tests/support/value.h"

namespace pv::test {

/// Script objects have the extended dispatch interface, and know their members only there.
enum class ObjectKind { kCompiled, kScript };

/// The part that the automation objects of the tests share: no type information, members by name.
/// What a member does is the derived class's matter.
class DispatchObject : public Counted<IDispatchEx> {
 public:
  /// `events` is a dispatch interface that the object answers to besides IDispatch.
  explicit DispatchObject(ObjectKind kind = ObjectKind::kCompiled, const IID* events = nullptr)
      : kind_(kind), events_(events) {}

  bool is_script() const { return kind_ == ObjectKind::kScript; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    return is_script() ? E_NOTIMPL : find(names[0], ids);
  }

  STDMETHODIMP GetDispID(BSTR name, DWORD, DISPID* id) override { return find(view_of(name), id); }
  STDMETHODIMP InvokeEx(DISPID id, LCID locale, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, IServiceProvider*) override {
    return Invoke(id, IID_NULL, locale, flags, parameters, result, exception, nullptr);
  }
  STDMETHODIMP DeleteMemberByName(BSTR, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP DeleteMemberByDispID(DISPID) override { return E_NOTIMPL; }
  STDMETHODIMP GetMemberProperties(DISPID, DWORD, DWORD*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMemberName(DISPID, BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP GetNextDispID(DWORD, DISPID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetNameSpaceParent(IUnknown**) override { return E_NOTIMPL; }

 protected:
  /// DISPID_UNKNOWN for a member that the object does not have.
  virtual DISPID id_of(std::wstring_view member) = 0;

 private:
  HRESULT find(std::wstring_view member, DISPID* id) {
    *id = id_of(member);
    return *id == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
  }

  const ObjectKind kind_;
  const IID* const events_;
};

/// An error as an object answers it to its caller.
struct RaisedError {
  HRESULT code = static_cast<HRESULT>(0x800A0000u + 1234);
  std::wstring source = L"Host";
  std::wstring description = L"line is down";
};
HRESULT raise(const RaisedError& error, EXCEPINFO* exception);

/// Changes the variable behind a by-reference argument; fails the test when it is none.
void change_argument(const VARIANT& reference, const Value& value);

}  // namespace pv::test
