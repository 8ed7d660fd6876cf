// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What objects of a host say about their type.

#include "host/type_name.h"

#include <gtest/gtest.h>

#include "com/boundary.h"
#include "tests/support/dispatch_object.h"
#include "tests/support/trapping_host.h"

namespace pv::test {
namespace {

// A type that has a name, or none to tell, and nothing else.
class Type final : public Counted<ITypeInfo> {
 public:
  Type(HRESULT answer, FloatingPointControl& seen) : answer_(answer), seen_(seen) {}
  STDMETHODIMP GetDocumentation(MEMBERID, BSTR* name, BSTR*, DWORD*, BSTR*) override {
    seen_ = FloatingPointControl::current();
    if (SUCCEEDED(answer_)) *name = SysAllocString(L"_Valve");
    return answer_;
  }

  STDMETHODIMP GetTypeAttr(TYPEATTR**) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
  STDMETHODIMP GetFuncDesc(UINT, FUNCDESC**) override { return E_NOTIMPL; }
  STDMETHODIMP GetVarDesc(UINT, VARDESC**) override { return E_NOTIMPL; }
  STDMETHODIMP GetNames(MEMBERID, BSTR*, UINT, UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
  STDMETHODIMP GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(PVOID, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override { return E_NOTIMPL; }
  STDMETHODIMP GetRefTypeInfo(HREFTYPE, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP AddressOfMember(MEMBERID, INVOKEKIND, PVOID*) override { return E_NOTIMPL; }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID, PVOID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainingTypeLib(ITypeLib**, UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP_(void) ReleaseTypeAttr(TYPEATTR*) override {}
  STDMETHODIMP_(void) ReleaseFuncDesc(FUNCDESC*) override {}
  STDMETHODIMP_(void) ReleaseVarDesc(VARDESC*) override {}

 private:
  const HRESULT answer_;
  FloatingPointControl& seen_;
};

class Typed final : public DispatchObject {
 public:
  explicit Typed(HRESULT answer) : answer_(answer) {}
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
    *info = Ref<ITypeInfo>(new Type(answer_, seen)).detach();
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return E_NOTIMPL;
  }

  FloatingPointControl seen;

 protected:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }

 private:
  const HRESULT answer_;
};

TEST(TypeName, IsThatOfTheClass) {
  const Ref<Typed> object(new Typed(S_OK));
  EXPECT_EQ(type_name_of(object.get()), L"Valve");
}

TEST(TypeName, ThatIsNotToldIsEmpty) {
  const Ref<Typed> object(new Typed(TYPE_E_ELEMENTNOTFOUND));
  EXPECT_EQ(type_name_of(object.get()), L"");
}

TEST(TypeName, OfAnObjectThatLacksMemoryIsAnErrorOfTheObject) {
  for (const HRESULT answer : {E_OUTOFMEMORY, static_cast<HRESULT>(0x800A0007)}) {
    const Ref<Typed> object(new Typed(answer));
    EXPECT_EQ(guarded(L"CProbe", "Type", [&] { type_name_of(object.get()); }), answer);
    EXPECT_FALSE(attempt([&] { type_name_of(object.get()); }));
  }
  SetErrorInfo(0, nullptr);
}

TEST(TypeName, IsToldInTheFloatingPointStateOfTheHost) {
  const Ref<Typed> object(new Typed(S_OK));
  const TrappingHost host(kTraps);
  EXPECT_EQ(guarded(L"CProbe", "Type", [&] { type_name_of(object.get()); }), S_OK);
  EXPECT_EQ(object->seen, kTraps);
}

}  // namespace
}  // namespace pv::test
