// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <map>
#include <string>

#include "com/event_source.h"
#include "com/object.h"
#include "probe.h"

namespace pv {

namespace test {
class CProbe;
}

extern const DispatchTable kMembersOfProbe;

template <>
struct Contract<test::CProbe> {
  using Interface = _Probe;
  using Coclass = ::Probe;
  using Events = __Probe;
  static constexpr const wchar_t* kName = L"CProbe";
  static const DispatchTable& members() { return kMembersOfProbe; }
};

namespace test {

/// A class of the automation layer that exists for the tests only: it records and changes what its
/// members get, so that the tests can follow every argument.
class CProbe final : public EventSource<AutomationObject<CProbe>> {
 public:
  STDMETHODIMP get_Item(VARIANT index, VARIANT* result) noexcept override;
  STDMETHODIMP get_NewEnum(IUnknown** result) noexcept override;

  STDMETHODIMP ChangeText(BSTR* text, BSTR addition, long* result) noexcept override;
  STDMETHODIMP ChangeShort(short* number, short addition, long* result) noexcept override;
  STDMETHODIMP ChangeLong(long* number, long addition) noexcept override;
  STDMETHODIMP ChangeDouble(double* number, double addition) noexcept override;
  STDMETHODIMP ChangeBoolean(VARIANT_BOOL* flag) noexcept override;
  STDMETHODIMP ChangeObject(_Probe** object, _Probe* replacement) noexcept override;
  STDMETHODIMP ChangeVariant(VARIANT* value, VARIANT replacement) noexcept override;
  STDMETHODIMP ChangeOptional(VARIANT* value, BSTR* result) noexcept override;
  STDMETHODIMP ChangeTwo(BSTR* first, long* second) noexcept override;

  STDMETHODIMP Describe(BSTR text, short number, BSTR other, VARIANT_BOOL flag, Shade colour,
                        _Probe* object, VARIANT value, BSTR* result) noexcept override;
  STDMETHODIMP Mix(double wide, VARIANT any, unsigned char narrow, hyper huge, float single,
                   DATE day, BSTR* result) noexcept override;
  STDMETHODIMP TakeTexts(BSTR first, BSTR second, long number) noexcept override;
  STDMETHODIMP TakePicture(IPictureDisp* picture, IPictureDisp** result) noexcept override;
  STDMETHODIMP TakeObject(IDispatch* object, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP KindOf(VARIANT value, long* result) noexcept override;

  STDMETHODIMP get_Slot(VARIANT* result) noexcept override;
  STDMETHODIMP put_Slot(VARIANT value) noexcept override;
  STDMETHODIMP putref_Slot(VARIANT value) noexcept override;
  STDMETHODIMP put_Valued(IDispatch* value) noexcept override;
  STDMETHODIMP putref_Referred(IDispatch* value) noexcept override;
  STDMETHODIMP get_Indexed(short index, BSTR* result) noexcept override;
  STDMETHODIMP put_Indexed(short index, BSTR value) noexcept override;
  STDMETHODIMP get_Child(_Probe** result) noexcept override;
  STDMETHODIMP get_Nobody(_Probe** result) noexcept override;
  STDMETHODIMP get_LastPut(BSTR* result) noexcept override;

  STDMETHODIMP Fail(long number, BSTR detail, BSTR* result) noexcept override;
  STDMETHODIMP FailForeign(long code, VARIANT_BOOL explained) noexcept override;
  STDMETHODIMP FireChanging(BSTR* text) noexcept override;
  STDMETHODIMP FailSilently() noexcept override;

 private:
  std::wstring last_put_;
  Variant slot_;
  std::map<short, std::wstring> indexed_;
};

}  // namespace test
}  // namespace pv
