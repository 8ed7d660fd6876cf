// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the platform's own script engines do not do, shown with objects of the host. The other
// tests of this folder keep within these limits; a platform that does more fails here and shows
// which of their detours may go.

#include <gtest/gtest.h>

#include "tests/script_host/member_object.h"
#include "tests/script_host/reference.h"
#include "tests/script_host/script_engine.h"
#include "tests/script_host/type_constants.h"
#include "tests/support/counted.h"

namespace pv::test {
namespace {

class PlatformLimits : public testing::Test {
 protected:
  ScriptEngine engine(const wchar_t* language, std::vector<NamedItem> items = {}) {
    return ScriptEngine(language, std::move(items),
                        [](const std::string& error) { ADD_FAILURE() << error; });
  }

  static void call(ScriptEngine& engine, const wchar_t* procedure, const VARIANT& argument) {
    const Object globals = engine.globals();
    EXPECT_EQ(globals.invoke(globals.id_of(procedure), DISPATCH_METHOD, {&argument, 1}).result,
              S_OK);
  }
};

TEST_F(PlatformLimits, EnginesTakeNoTypeLibraries) {
  const Ref<ITypeLib> library =
      registered_type_library(L"{00020430-0000-0000-C000-000000000046}", 2, 0);
  for (const wchar_t* language : {L"VBScript", L"JScript"}) {
    ScriptEngine script = engine(language);
    EXPECT_EQ(script.add_type_library(library.get()), E_NOTIMPL);
  }
}

TEST_F(PlatformLimits, VBScriptChangesReferencesToValuesAndNoTypedOnes) {
  ScriptEngine script = engine(L"VBScript");
  script.run(L"Sub Change(number)\nnumber = 2\nEnd Sub");
  Value variable(1);
  call(script, L"Change", by_ref(variable));
  EXPECT_EQ(variable, 2);
  long typed = 1;
  call(script, L"Change", by_ref(typed));
  EXPECT_EQ(typed, 1);
}

TEST_F(PlatformLimits, JScriptChangesNoReferences) {
  ScriptEngine script = engine(L"JScript");
  script.run(L"function change(number) { number = 2; }");
  Value variable(1);
  call(script, L"change", by_ref(variable));
  EXPECT_EQ(variable, 1);
}

TEST_F(PlatformLimits, JScriptHasNoDatesOfAutomation) {
  ScriptEngine script = engine(L"JScript");
  EXPECT_EQ(script.evaluate(L"typeof new Date().getVarDate"), L"undefined");
}

TEST_F(PlatformLimits, JScriptMakesNumbersOfCurrencies) {
  const Value amount = to_type(Value(1.25), VT_CY);
  ScriptEngine script = engine(L"JScript", {{L"amount", new Reference(amount)}});
  EXPECT_EQ(script.evaluate(L"amount.Value"), 1.25);
}

/// Takes no argument of any kind.
class Refusing final : public DispatchObject {
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return DISP_E_TYPEMISMATCH;
  }
  DISPID id_of(std::wstring_view) override { return 1; }
};

TEST_F(PlatformLimits, JScriptTellsRefusedArgumentsByTheCodeOfTheCall) {
  ScriptEngine script = engine(L"JScript", {{L"Refusing", new Refusing}});
  script.run(L"var number; try { Refusing.Take(1); } catch (error) { number = error.number; }");
  EXPECT_EQ(script.evaluate(L"number"), DISP_E_TYPEMISMATCH);
}

/// An object of which somebody else may hold references.
template <class Interface>
class Watched : public Counted<Interface> {
 public:
  explicit Watched(bool& lives) : lives_(lives) { lives_ = true; }
  ~Watched() override { lives_ = false; }

 private:
  bool& lives_;
};

class Factory final : public Watched<IClassFactory> {
 public:
  using Watched::Watched;
  STDMETHODIMP CreateInstance(IUnknown*, REFIID iid, void** object) override {
    return Ref(new MemberObject({}))->QueryInterface(iid, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

TEST_F(PlatformLimits, EnginesKeepTheFactoriesOfWhatTheyCreate) {
  CLSID clsid{};
  ASSERT_EQ(CLSIDFromProgID(L"Scripting.Dictionary", &clsid), S_OK);
  for (const auto& [language, expression] :
       {std::pair(L"VBScript", L"TypeName(CreateObject(\"Scripting.Dictionary\"))"),
        std::pair(L"JScript", L"typeof new ActiveXObject(\"Scripting.Dictionary\")")}) {
    bool lives = false;
    Ref<Factory> factory(new Factory(lives));
    DWORD cookie = 0;
    ASSERT_EQ(CoRegisterClassObject(clsid, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                    &cookie),
              S_OK);
    engine(language).evaluate(expression);
    CoRevokeClassObject(cookie);
    EXPECT_EQ(references_of(factory.get()), 2u) << printable(language);
    factory->Release();
    factory.reset();
    EXPECT_FALSE(lives);
  }
}

class NoMembers final : public Watched<IEnumVARIANT> {
 public:
  using Watched::Watched;
  STDMETHODIMP Next(ULONG, VARIANT*, ULONG*) override { return S_FALSE; }
  STDMETHODIMP Skip(ULONG) override { return S_FALSE; }
  STDMETHODIMP Reset() override { return S_OK; }
  STDMETHODIMP Clone(IEnumVARIANT**) override { return E_NOTIMPL; }
};

class EmptyCollection final : public DispatchObject {
 public:
  explicit EmptyCollection(Ref<IUnknown> members) : members_(std::move(members)) {}
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    if (id != DISPID_NEWENUM) return DISP_E_MEMBERNOTFOUND;
    result->vt = VT_UNKNOWN;
    result->punkVal = Ref(members_).detach();
    return S_OK;
  }

 private:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }
  const Ref<IUnknown> members_;
};

TEST_F(PlatformLimits, JScriptKeepsEnumerators) {
  bool lives = false;
  Ref<NoMembers> members(new NoMembers(lives));
  const Value ended =
      engine(L"JScript", {{L"members", new EmptyCollection(Ref<IUnknown>(members.get()))}})
          .evaluate(L"new Enumerator(members).atEnd()");
  EXPECT_EQ(ended, true);
  if (references_of(members.get()) == 1) GTEST_SKIP() << "this platform lets them go";
  EXPECT_EQ(references_of(members.get()), 2u);
  members->Release();
  members.reset();
  EXPECT_FALSE(lives);
}

}  // namespace
}  // namespace pv::test
