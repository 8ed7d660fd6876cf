// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Which member an invocation means, and how its failures reach the client.

#include <gtest/gtest.h>

#include "tests/abi/probe_object.h"
#include "tests/support/memory/allocation_spy.h"

namespace pv::test {
namespace {

constexpr WORD kMethodOrGet = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
constexpr WORD kPutOrPutRef = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;
constexpr DISPID kSlot = 30;

Outcome invoke_put(const Object& object, const wchar_t* member, WORD flags, const Value& value) {
  const DISPID new_value = DISPID_PROPERTYPUT;
  const VARIANT passed[] = {value};
  return object.invoke(object.id_of(member), flags, passed, {&new_value, 1});
}

TEST(Invocation, PropertyGetAsMethodWorks) {
  const Object probe = make_probe();
  probe.put(L"Slot", 5);
  EXPECT_EQ(probe.call(L"Slot"), 5);
  EXPECT_EQ(probe.invoke(kSlot, kMethodOrGet).value, 5);
}

TEST(Invocation, MethodAsPropertyGetWorks) {
  EXPECT_EQ(make_probe().get(L"KindOf", L"text"), int(VT_BSTR));
}

TEST(Invocation, EnumeratorComesAsMethodAndAsProperty) {
  const Object probe = make_probe();
  for (WORD flags : {WORD(DISPATCH_METHOD), WORD(DISPATCH_PROPERTYGET), kMethodOrGet}) {
    const Outcome outcome = probe.invoke(DISPID_NEWENUM, flags);
    ASSERT_TRUE(outcome.worked()) << flags;
    ASSERT_EQ(outcome.value.vt, VT_UNKNOWN) << flags;
    EXPECT_TRUE(query<IEnumVARIANT>(outcome.value.punkVal)) << flags;
  }
}

TEST(Invocation, PutsChooseTheirKind) {
  const Object probe = make_probe();
  EXPECT_TRUE(invoke_put(probe, L"Slot", DISPATCH_PROPERTYPUT, probe).worked());
  EXPECT_EQ(probe.get(L"LastPut"), L"put");
  EXPECT_TRUE(invoke_put(probe, L"Slot", DISPATCH_PROPERTYPUTREF, Value::nothing()).worked());
  EXPECT_EQ(probe.get(L"LastPut"), L"putref");
  EXPECT_TRUE(invoke_put(probe, L"Slot", DISPATCH_PROPERTYPUT, 1).worked());
}

TEST(Invocation, PutsFallBackToTheOtherKind) {
  const Object probe = make_probe();
  for (WORD flags : {WORD(DISPATCH_PROPERTYPUT), WORD(DISPATCH_PROPERTYPUTREF), kPutOrPutRef}) {
    EXPECT_TRUE(invoke_put(probe, L"Valued", flags, probe).worked()) << flags;
    EXPECT_EQ(probe.get(L"LastPut"), L"put") << flags;
    EXPECT_TRUE(invoke_put(probe, L"Referred", flags, probe).worked()) << flags;
    EXPECT_EQ(probe.get(L"LastPut"), L"putref") << flags;
  }
  EXPECT_EQ(references_of(probe.get()), 1u);
}

TEST(Invocation, PutToAReadOnlyPropertyOrMethodIsRefused) {
  const Object probe = make_probe();
  EXPECT_EQ(probe.try_put(L"LastPut", L"x").result, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(probe.try_set(L"Child", probe).result, DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(probe.try_put(L"KindOf", L"x").result, DISP_E_MEMBERNOTFOUND);
}

TEST(Invocation, GetOfAWriteOnlyPropertyIsRefused) {
  EXPECT_EQ(make_probe().try_get(L"Valued").result, DISP_E_MEMBERNOTFOUND);
}

TEST(Invocation, UnknownIdsAreRefused) {
  const Object probe = make_probe();
  for (DISPID id : {DISPID(10), DISPID(12345), DISPID(-1), DISPID(-3), DISPID(-5), DISPID(INT_MAX),
                    DISPID(INT_MIN)}) {
    EXPECT_EQ(probe.invoke(id, kMethodOrGet).result, DISP_E_MEMBERNOTFOUND) << id;
  }
}

TEST(Invocation, OnlyTheNullInterfaceIsAccepted) {
  const Object probe = make_probe();
  DISPPARAMS none{};
  EXPECT_EQ(probe.get()->Invoke(kSlot, IID_IDispatch, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                &none, nullptr, nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
  std::wstring name = L"Slot";
  LPOLESTR names[] = {name.data()};
  DISPID id = 0;
  EXPECT_EQ(probe.get()->GetIDsOfNames(IID_IDispatch, names, 1, LOCALE_USER_DEFAULT, &id),
            DISP_E_UNKNOWNINTERFACE);
}

TEST(Invocation, LocaleDoesNotMatter) {
  const Object probe = make_probe();
  DISPPARAMS none{};
  for (LCID locale : {LCID(0), LCID(LOCALE_SYSTEM_DEFAULT), LCID(0x0407), LCID(0x040E)}) {
    EXPECT_EQ(probe.get()->Invoke(kSlot, IID_NULL, locale, DISPATCH_PROPERTYGET, &none, nullptr,
                                  nullptr, nullptr),
              S_OK);
  }
}

TEST(Invocation, ArgumentsOfAPropertyWithoutAnyGoToTheDefaultMemberOfItsResult) {
  const Object probe = make_probe();
  EXPECT_EQ(probe.get(L"Child", 3), L"item 3");
  EXPECT_EQ(probe.call(L"Child", L"key"), L"item key");
  Value variable(4);
  EXPECT_EQ(probe.get(L"Child", by_ref(variable)), L"item 4");
  EXPECT_EQ(probe.invoke(0, DISPATCH_PROPERTYGET, std::vector<VARIANT>{Value(7)}).value, L"item 7");
}

TEST(Invocation, FailingDefaultMemberKeepsItsError) {
  const Object probe = make_probe();
  const Outcome outcome = probe.try_get(L"Child", short(9));
  EXPECT_EQ(outcome.number(), 9);
  EXPECT_EQ(outcome.source, L"pvItems32.CProbe");
  EXPECT_NE(outcome.description.find(L"Subscript out of range"), std::wstring::npos);
}

TEST(Invocation, DefaultMemberOfNothingIsAnErrorWithText) {
  const Outcome outcome = make_probe().try_get(L"Nobody", 1);
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.number(), 91);
  EXPECT_FALSE(outcome.description.empty());
  EXPECT_FALSE(outcome.source.empty());
}

TEST(Invocation, SurplusArgumentsOfTheDefaultMemberAreRefused) {
  EXPECT_EQ(make_probe().try_get(L"Child", 1, 2).result, DISP_E_BADPARAMCOUNT);
}

TEST(Failure, ReachesTheClientWithNumberSourceAndText) {
  const Outcome outcome = make_probe().try_call(L"Fail", 457, L"the value");
  EXPECT_EQ(outcome.result, DISP_E_EXCEPTION);
  EXPECT_EQ(outcome.code, static_cast<HRESULT>(0x800A01C9));
  EXPECT_EQ(outcome.number(), 457);
  EXPECT_EQ(outcome.source, L"pvItems32.CProbe");
  EXPECT_EQ(outcome.description,
            L"CProbe.Fail: This key is already associated with an element of this collection "
            L"(the value)");
  EXPECT_EQ(outcome.value.vt, VT_EMPTY);
}

TEST(Failure, OfAForeignCallPassesUnchanged) {
  const Outcome outcome = make_probe().try_call(L"FailForeign", long(E_ABORT), true);
  EXPECT_EQ(outcome.code, E_ABORT);
  EXPECT_EQ(outcome.source, L"Elsewhere");
  EXPECT_EQ(outcome.description, L"a foreign text");
}

TEST(Failure, OfAForeignCallPassesWithItsHelp) {
  const Object probe = make_probe();
  const Value explained(true), code(long{E_ABORT});
  VARIANT reversed[] = {explained, code};
  DISPPARAMS parameters{reversed, nullptr, 2, 0};
  EXCEPINFO exception{};
  EXPECT_EQ(probe.get()->Invoke(probe.id_of(L"FailForeign"), IID_NULL, LOCALE_USER_DEFAULT,
                                DISPATCH_METHOD, &parameters, nullptr, &exception, nullptr),
            DISP_E_EXCEPTION);
  EXPECT_EQ(exception.scode, E_ABORT);
  EXPECT_EQ(view_of(exception.bstrHelpFile), L"elsewhere.chm");
  EXPECT_EQ(exception.dwHelpContext, 77u);
  for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile})
    SysFreeString(text);
}

TEST(Failure, WithoutTextGetsOne) {
  const Outcome outcome = make_probe().try_call(L"FailForeign", long(E_ACCESSDENIED), false);
  EXPECT_EQ(outcome.code, E_ACCESSDENIED);
  EXPECT_EQ(outcome.source, L"pvItems32.CProbe");
  EXPECT_FALSE(outcome.description.empty());
}

TEST(Failure, WithoutErrorInformationDoesNotShowAnOlderOne) {
  const Object probe = make_probe();
  SetErrorInfo(0, make_error_info(L"Stale", L"stale text").get());
  const Outcome outcome = probe.try_call(L"FailSilently");
  EXPECT_EQ(outcome.code, E_ACCESSDENIED);
  EXPECT_NE(outcome.description, L"stale text");
  EXPECT_NE(outcome.source, L"Stale");
}

TEST(Failure, SuccessClearsOlderErrorInformation) {
  const Object probe = make_probe();
  SetErrorInfo(0, make_error_info(L"Stale", L"stale text").get());
  probe.get(L"Slot");
  Ref<IErrorInfo> left;
  EXPECT_EQ(GetErrorInfo(0, left.put()), S_FALSE);
}

TEST(Failure, IsNotLeftOnTheThreadWhenTheClientGotIt) {
  make_probe().try_call(L"Fail", 5, L"");
  Ref<IErrorInfo> left;
  EXPECT_EQ(GetErrorInfo(0, left.put()), S_FALSE);
}

TEST(Failure, StaysOnTheThreadForAClientThatTakesNoException) {
  const Object probe = make_probe();
  const Value detail(L"x"), number(5);
  VARIANT reversed[] = {detail, number};
  DISPPARAMS parameters{reversed, nullptr, 2, 0};
  EXPECT_EQ(probe.get()->Invoke(probe.id_of(L"Fail"), IID_NULL, LOCALE_USER_DEFAULT,
                                DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            DISP_E_EXCEPTION);
  Ref<IErrorInfo> left;
  EXPECT_EQ(GetErrorInfo(0, left.put()), S_OK);
}

TEST(Failure, DoesNotChangeVariables) {
  const Object probe = make_probe();
  Value variable(L"before");
  const Outcome outcome = probe.try_call(L"Fail", 5, by_ref(variable));
  EXPECT_FALSE(outcome.worked());
  EXPECT_EQ(variable, L"before");
}

TEST(Failure, LeavesNothingBehind) {
  const Object probe = make_probe();
  probe.try_call(L"Fail", 5, L"warm up");
  const AllocationBalance balance;
  {
    const Outcome outcome = probe.try_call(L"Fail", 5, L"text");
    const Outcome nested = probe.try_get(L"Child", short(9));
    const Outcome nobody = probe.try_get(L"Nobody", 1);
  }
  EXPECT_EQ(balance.difference(), 0) << balance.report();
}

TEST(Failure, ResultOfAFailedCallIsEmptyEvenIfItWasPoisoned) {
  const Object probe = make_probe();
  VARIANT result;
  memset(&result, 0xCC, sizeof result);
  DISPPARAMS none{};
  EXPECT_EQ(probe.get()->Invoke(12345, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                                &result, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(result.vt, VT_EMPTY);
}

}  // namespace
}  // namespace pv::test
