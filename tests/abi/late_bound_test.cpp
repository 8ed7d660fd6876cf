// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// How the library calls objects of the host.

#include "host/late_bound.h"

#include <gtest/gtest.h>

#include <optional>

#include "com/boundary.h"
#include "com/floating_point.h"
#include "tests/support/dispatch_object.h"
#include "tests/support/fake_object.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/trapping_host.h"

namespace pv::test {
namespace {

LateBound bound(const FakeObject& fake) { return LateBound(Ref<IDispatch>(fake.get())); }

using Kinds = std::vector<WORD>;

// Its dispatch takes no call.
class Refusing : public DispatchObject {
 public:
  explicit Refusing(HRESULT answer, Kinds* asked = nullptr) : answer_(answer), asked_(asked) {}
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    if (asked_) asked_->push_back(flags);
    return answer_;
  }

 protected:
  DISPID id_of(std::wstring_view) override { return 1; }

 private:
  const HRESULT answer_;
  Kinds* const asked_;
};

// Cannot even tell whether it has a member.
class Nameless final : public Refusing {
 public:
  using Refusing::Refusing;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return E_OUTOFMEMORY;
  }
};

// Raises errors of which it tells all that there is to tell.
class Explaining final : public DispatchObject {
 public:
  explicit Explaining(std::wstring description) : description_(std::move(description)) {}
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO* exception,
                      UINT*) override {
    exception->scode = E_ACCESSDENIED;
    exception->bstrSource = SysAllocString(L"Host");
    exception->bstrDescription = SysAllocString(description_.c_str());
    exception->bstrHelpFile = SysAllocString(L"host.chm");
    exception->dwHelpContext = 4711;
    return DISP_E_EXCEPTION;
  }

 protected:
  DISPID id_of(std::wstring_view) override { return 1; }

 private:
  const std::wstring description_;
};

// Raises an error of that number, in one field or the other.
class Numbering final : public DispatchObject {
 public:
  Numbering(SCODE code, WORD number) : code_(code), number_(number) {}
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO* exception,
                      UINT*) override {
    exception->scode = code_;
    exception->wCode = number_;
    return DISP_E_EXCEPTION;
  }

 protected:
  DISPID id_of(std::wstring_view) override { return 1; }

 private:
  const SCODE code_;
  const WORD number_;
};

// Remembers how the floating-point unit is set while it is asked for a member.
class Watching final : public DispatchObject {
 public:
  Watching(ObjectKind kind, FloatingPointControl& seen) : DispatchObject(kind), seen_(seen) {}
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return S_OK;
  }

 protected:
  DISPID id_of(std::wstring_view) override {
    seen_ = FloatingPointControl::current();
    return 1;
  }

 private:
  FloatingPointControl& seen_;
};

// What error information says: source, description, help file.
std::vector<std::wstring> texts_of(IErrorInfo& info) {
  BSTR source = nullptr, description = nullptr, help_file = nullptr;
  info.GetSource(&source);
  info.GetDescription(&description);
  info.GetHelpFile(&help_file);
  std::vector<std::wstring> texts;
  for (BSTR text : {source, description, help_file}) {
    texts.emplace_back(view_of(text));
    SysFreeString(text);
  }
  return texts;
}

// The run-time error that a step raises.
template <class Step>
std::optional<ErrorCode> error_of(Step&& step) {
  try {
    step();
  } catch (const automation_error& error) {
    return error.code();
  }
  return std::nullopt;
}

TEST(LateBound, CallsGetsPutsAndSets) {
  FakeObject fake, other;
  fake.expect_call(L"AddItem", {L"text", 5}).returns(7);
  fake.expect_get(L"Left").returns(120);
  fake.expect_get(L"Item", {3}).returns(L"third");
  fake.expect_put(L"Left", {99});
  fake.expect_set(L"Font", {other});
  const LateBound object = bound(fake);
  const Bstr text(L"text");
  EXPECT_EQ(Value(object.call(L"AddItem", {value(BSTR(text)), value(5L)})), 7);
  EXPECT_EQ(Value(object.get(L"Left")), 120);
  EXPECT_EQ(Value(object.get(L"Item", {value(3L)})), L"third");
  object.put(L"Left", value(99L));
  object.set(L"Font", other.get());
}

TEST(LateBound, SetFallsBackToAPlainPut) {
  FakeObject fake, other;
  fake.expect_put(L"Font", {other});
  bound(fake).set(L"Font", other.get());
}

TEST(LateBound, TypedReferencesReachCompiledObjects) {
  FakeObject fake, other;
  fake.expect_call(L"Read",
                   {Expected::reference_to(L"old"), Expected::reference_to(short(1)),
                    Expected::reference_to(false), Expected::reference_to(Value::nothing())})
      .sets(0, L"new")
      .sets(1, 2)
      .sets(2, true)
      .sets(3, other);
  BSTR text = SysAllocString(L"old");
  short number = 1;
  VARIANT_BOOL flag = VARIANT_FALSE;
  IDispatch* object = nullptr;
  bound(fake).call(L"Read", {ref(text), ref(number), ref_boolean(flag), ref(object)});
  EXPECT_EQ(view_of(text), L"new");
  EXPECT_EQ(number, 2);
  EXPECT_EQ(flag, VARIANT_TRUE);
  EXPECT_EQ(object, other.get());
  SysFreeString(text);
  if (object) object->Release();
}

TEST(LateBound, ScriptObjectsGetReferencesToValues) {
  FakeObject script(FakeObject::Kind::kScript);
  script.expect_call(L"Read", {Expected::reference_to(L"old"), Expected::reference_to(short(1))})
      .sets(0, L"new")
      .sets(1, L"25");
  BSTR text = SysAllocString(L"old");
  short number = 1;
  bound(script).call(L"Read", {ref(text), ref(number)});
  EXPECT_EQ(view_of(text), L"new");
  EXPECT_EQ(number, 25);
  SysFreeString(text);
}

TEST(LateBound, MembersOfScriptObjectsAreFound) {
  FakeObject script(FakeObject::Kind::kScript);
  script.expect_get(L"Title").returns(L"App");
  const LateBound object = bound(script);
  EXPECT_TRUE(object.has(L"title"));
  EXPECT_FALSE(object.has(L"Subtitle"));
  EXPECT_EQ(Value(object.get(L"Title")), L"App");
}

TEST(LateBound, ErrorOfTheObjectPassesUnchanged) {
  FakeObject fake;
  fake.expect_call(L"Open").raises(E_ACCESSDENIED, L"Host", L"not now");
  try {
    bound(fake).call(L"Open");
    ADD_FAILURE() << "no error was raised";
  } catch (const com_failure& failure) {
    EXPECT_EQ(failure.result(), E_ACCESSDENIED);
    ASSERT_TRUE(failure.info());
    EXPECT_EQ(texts_of(*failure.info().get()),
              (std::vector<std::wstring>{L"Host", L"not now", L""}));
  }
}

// Some hosts give the number of their error where its code belongs.
TEST(LateBound, ErrorOfTheObjectIsNeverASuccess) {
  const struct {
    SCODE code;
    WORD number;
    HRESULT error;
  } rows[] = {
      {E_ABORT, 0, E_ABORT},
      {E_ABORT, 5, E_ABORT},
      {0, 5, static_cast<HRESULT>(0x800A0005)},
      {S_FALSE, 5, static_cast<HRESULT>(0x800A0005)},
      {5, 0, static_cast<HRESULT>(0x800A0005)},
      {0x10005, 0, static_cast<HRESULT>(0x800A0005)},
      {0, 0, static_cast<HRESULT>(0x800A0000)},
  };
  for (const auto& row : rows) {
    const LateBound object(Ref<IDispatch>(new Numbering(row.code, row.number)));
    EXPECT_EQ(guarded(L"CProbe", "Open", [&] { object.call(L"Open"); }), row.error);
  }
  SetErrorInfo(0, nullptr);
}

TEST(LateBound, MembersAreFoundInTheFloatingPointStateOfTheHost) {
  for (const ObjectKind kind : {ObjectKind::kCompiled, ObjectKind::kScript}) {
    FloatingPointControl seen;
    const LateBound object(Ref<IDispatch>(new Watching(kind, seen)));
    const TrappingHost host(kTrapsRoundingUp);
    EXPECT_EQ(guarded(L"CProbe", "Open",
                      [&] {
                        object.call(L"Open");
                        EXPECT_TRUE(is_default_floating_point());
                      }),
              S_OK);
    EXPECT_EQ(seen, kTrapsRoundingUp);
  }
}

TEST(LateBound, ErrorOfTheObjectReachesTheCallerWithItsHelp) {
  for (const std::wstring description : {L"not now", L""}) {
    const LateBound object(Ref<IDispatch>(new Explaining(description)));
    EXPECT_EQ(guarded(L"CProbe", "Open", [&] { object.call(L"Open"); }), E_ACCESSDENIED);
    Ref<IErrorInfo> info;
    ASSERT_EQ(GetErrorInfo(0, info.put()), S_OK);
    EXPECT_EQ(texts_of(*info.get()),
              (std::vector<std::wstring>{L"Host", description, L"host.chm"}));
    DWORD context = 0;
    info->GetHelpContext(&context);
    EXPECT_EQ(context, 4711u);
  }
}

TEST(LateBound, LackOfMemoryOfTheObjectIsAnErrorOfTheObject) {
  constexpr auto kRunTimeError = static_cast<HRESULT>(0x800A0007);
  for (const HRESULT answer : {E_OUTOFMEMORY, kRunTimeError}) {
    const LateBound object(Ref<IDispatch>(new Refusing(answer)));
    EXPECT_EQ(guarded(L"CProbe", "Open", [&] { object.call(L"Open"); }), answer);
    EXPECT_FALSE(attempt([&] { object.call(L"Open"); }));
  }
  const LateBound nameless(Ref<IDispatch>(new Nameless(S_OK)));
  EXPECT_EQ(guarded(L"CProbe", "Open", [&] { nameless.call(L"Open"); }), E_OUTOFMEMORY);
  EXPECT_FALSE(attempt([&] { nameless.call(L"Open"); }));
  SetErrorInfo(0, nullptr);
}

TEST(LateBound, ARefusedPutIsSentOnce) {
  Kinds asked;
  const LateBound object(Ref<IDispatch>(new Refusing(DISP_E_MEMBERNOTFOUND, &asked)));
  EXPECT_EQ(error_of([&] { object.put(L"Title", value(5L)); }), ErrorCode::kNoSuchMember);
  EXPECT_EQ(asked, (Kinds{DISPATCH_PROPERTYPUT}));
}

TEST(LateBound, OtherRefusedCallsAreSentOnceInEachKind) {
  Kinds asked;
  const LateBound object(Ref<IDispatch>(new Refusing(DISP_E_MEMBERNOTFOUND, &asked)));
  EXPECT_EQ(error_of([&] { object.set(L"Font", nullptr); }), ErrorCode::kNoSuchMember);
  EXPECT_EQ(asked, (Kinds{DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT}));
  asked.clear();
  EXPECT_EQ(error_of([&] { object.get(L"Title"); }), ErrorCode::kNoSuchMember);
  EXPECT_EQ(asked, (Kinds{DISPATCH_PROPERTYGET, DISPATCH_METHOD}));
  asked.clear();
  EXPECT_EQ(error_of([&] { object.call(L"Open"); }), ErrorCode::kNoSuchMember);
  EXPECT_EQ(asked, (Kinds{DISPATCH_METHOD, DISPATCH_PROPERTYGET}));
}

TEST(LateBound, UnknownMemberAndMissingObjectAreErrors) {
  FakeObject fake;
  EXPECT_EQ(error_of([&] { bound(fake).call(L"Nonsense"); }), ErrorCode::kNoSuchMember);
  EXPECT_EQ(error_of([&] { LateBound().call(L"Open"); }), ErrorCode::kObjectNotSet);
  EXPECT_FALSE(LateBound().has(L"Open"));
}

TEST(LateBound, WhatDispatchRefusesHasItsRunTimeError) {
  const struct {
    HRESULT answer;
    ErrorCode code;
  } rows[] = {
      {DISP_E_UNKNOWNNAME, ErrorCode::kNoSuchMember},
      {DISP_E_MEMBERNOTFOUND, ErrorCode::kNoSuchMember},
      {DISP_E_BADPARAMCOUNT, ErrorCode::kWrongArguments},
      {DISP_E_PARAMNOTOPTIONAL, ErrorCode::kWrongArguments},
      {DISP_E_TYPEMISMATCH, ErrorCode::kTypeMismatch},
      {DISP_E_OVERFLOW, ErrorCode::kOverflow},
  };
  for (const auto& row : rows) {
    const LateBound object(Ref<IDispatch>(new Refusing(row.answer)));
    EXPECT_EQ(error_of([&] { object.call(L"Open"); }), row.code);
  }
}

TEST(LateBound, ObjectOfAPropertyMayBeNothing) {
  FakeObject fake, child;
  fake.expect_get(L"Child").returns(child);
  fake.expect_get(L"Child").returns(Value::nothing());
  fake.expect_get(L"Child").returns(Value());
  fake.expect_get(L"Child").returns(Value::null());
  fake.expect_get(L"Child").returns(5);
  const LateBound object = bound(fake);
  EXPECT_EQ(object.get_object(L"Child").object().get(), child.get());
  EXPECT_FALSE(object.get_object(L"Child"));
  EXPECT_FALSE(object.get_object(L"Child"));
  EXPECT_FALSE(object.get_object(L"Child"));
  EXPECT_THROW(object.get_object(L"Child"), automation_error);
}

TEST(LateBound, FunctionInAPropertyOfAScriptIsCalled) {
  FakeObject script(FakeObject::Kind::kScript), function(FakeObject::Kind::kScript);
  function.knows(L"apply");
  script.expect_get(L"Title").returns(function);
  script.expect_call(L"Title").returns(L"App");
  EXPECT_EQ(Value(bound(script).get(L"Title")), L"App");
}

TEST(LateBound, ObjectInTheMethodOfAScriptIsTheAnswer) {
  constexpr auto kFunctionExpected = static_cast<HRESULT>(0x800A138A);
  FakeObject script(FakeObject::Kind::kScript), port(FakeObject::Kind::kScript);
  script.expect_call(L"Port").fails(kFunctionExpected);
  script.expect_get(L"Port").returns(port);
  EXPECT_EQ(Value(bound(script).call(L"Port")), Value(port));

  FakeObject function(FakeObject::Kind::kScript);
  function.knows(L"apply");
  script.expect_call(L"Port").fails(kFunctionExpected);
  script.expect_get(L"Port").returns(function);
  EXPECT_THROW(bound(script).call(L"Port"), com_failure);
}

TEST(LateBound, LeavesNothingBehind) {
  const AllocationBalance balance;
  {
    FakeObject fake, script(FakeObject::Kind::kScript);
    fake.expect_call(L"Read", {Expected::anything()}).sets(0, L"new").returns(L"result");
    fake.expect_call(L"Read", {Expected::anything()}).raises(E_FAIL);
    script.expect_call(L"Read", {Expected::anything()}).sets(0, L"new").returns(L"result");
    script.expect_call(L"Read", {Expected::anything()}).raises(E_FAIL);
    for (const FakeObject* object : {&fake, &script}) {
      BSTR text = SysAllocString(L"old");
      bound(*object).call(L"Read", {ref(text)});
      EXPECT_THROW(bound(*object).call(L"Read", {ref(text)}), com_failure);
      SysFreeString(text);
    }
  }
  SetErrorInfo(0, nullptr);
  EXPECT_EQ(balance.difference(), 0) << balance.report();
}

}  // namespace
}  // namespace pv::test
