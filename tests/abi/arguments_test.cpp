// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// How late-bound arguments find their parameters, and what is refused.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "tests/abi/probe_object.h"
#include "tests/support/memory/allocation_spy.h"

namespace pv::test {
namespace {

constexpr DISPID kDescribe = 20;
constexpr DISPID kTakeTexts = 22;
constexpr DISPID kKindOf = 25;
constexpr DISPID kIndexed = 33;

struct Named {
  DISPID parameter;
  Value value;
};

// A call with positional arguments in order, then named ones.
Outcome call_named(const Object& object, DISPID id, std::vector<Value> positional,
                   std::vector<Named> named, WORD flags = DISPATCH_METHOD) {
  std::vector<VARIANT> reversed;
  std::vector<DISPID> names;
  for (const Named& argument : named) {
    reversed.push_back(argument.value);
    names.push_back(argument.parameter);
  }
  reversed.insert(reversed.end(), positional.rbegin(), positional.rend());
  return object.invoke(id, flags, reversed, names);
}

TEST(Arguments, OmittedOnesGetTheirDefaultValues) {
  EXPECT_EQ(make_probe().call(L"Describe", L"a"), L"a,7,none,-1,2,nothing,missing");
}

TEST(Arguments, MissingInTheMiddleGetsItsDefaultValue) {
  const Object probe = make_probe();
  EXPECT_EQ(probe.call(L"Describe", L"a", Value::missing(), L"b", Value::missing(), 1, probe, 5),
            L"a,7,b,-1,1,object,5");
  EXPECT_EQ(probe.call(L"Describe", L"a", 3, Value::missing(), false),
            L"a,3,none,0,2,nothing,missing");
}

TEST(Arguments, NamedOnesFindTheirParameters) {
  const Object probe = make_probe();
  const Outcome outcome = call_named(probe, kDescribe, {L"a"}, {{4, 1}, {2, L"other"}});
  EXPECT_EQ(outcome.value, L"a,7,other,-1,1,nothing,missing") << testing::PrintToString(outcome);
  EXPECT_EQ(call_named(probe, kDescribe, {}, {{1, 9}, {0, L"text"}}).value,
            L"text,9,none,-1,2,nothing,missing");
}

TEST(Arguments, NamesOfParametersAreFoundWithoutRegardToCase) {
  const Object probe = make_probe();
  std::wstring member = L"dEsCrIbE", first = L"NUMBER", second = L"value", unknown = L"Nonsense";
  LPOLESTR names[] = {member.data(), first.data(), second.data()};
  DISPID ids[3] = {};
  EXPECT_EQ(probe.get()->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), S_OK);
  EXPECT_EQ(ids[0], kDescribe);
  EXPECT_EQ(ids[1], 1);
  EXPECT_EQ(ids[2], 6);
  names[1] = unknown.data();
  EXPECT_EQ(probe.get()->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids),
            DISP_E_UNKNOWNNAME);
  EXPECT_EQ(ids[0], kDescribe);
  EXPECT_EQ(ids[1], DISPID_UNKNOWN);
  EXPECT_EQ(ids[2], 6);
}

TEST(Arguments, UnknownMemberNamesAreRefused) {
  const Object probe = make_probe();
  for (const wchar_t* name : {L"", L"Nonsense", L"Describ", L"Describes", L"D\u00e9scribe"}) {
    EXPECT_EQ(probe.id_of(name), DISPID_UNKNOWN) << printable(name);
  }
}

TEST(Arguments, EnumeratorIsKnownUnderBothNames) {
  EXPECT_EQ(make_probe().id_of(L"NewEnum"), DISPID_NEWENUM);
  EXPECT_EQ(make_probe().id_of(L"_NewEnum"), DISPID_NEWENUM);
}

TEST(Arguments, SurplusOnesAreRefusedWithTheirIndex) {
  const Object probe = make_probe();
  const Outcome outcome = probe.try_call(L"TakeTexts", L"a", L"b", 1, L"surplus");
  EXPECT_EQ(outcome.result, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(outcome.argument, 0u);
}

TEST(Arguments, SurplusOneBeforeANewValueIsRefused) {
  const Object probe = make_probe();
  const Outcome plain = probe.try_put(L"Slot", 1, 2);
  EXPECT_EQ(plain.result, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(plain.argument, 1u);
  const Outcome indexed = probe.try_put(L"Indexed", 1, 2, L"text");
  EXPECT_EQ(indexed.result, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(indexed.argument, 1u);
}

TEST(Arguments, MissingMandatoryOneIsRefused) {
  const Object probe = make_probe();
  EXPECT_EQ(probe.try_call(L"TakeTexts", L"a", L"b").result, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(probe.try_call(L"TakeTexts").result, DISP_E_BADPARAMCOUNT);
  const Outcome outcome = probe.try_call(L"TakeTexts", L"a", Value::missing(), 1);
  EXPECT_EQ(outcome.result, DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(outcome.argument, 1u);
}

TEST(Arguments, BadNamesAreRefusedWithTheirIndex) {
  const Object probe = make_probe();
  for (DISPID bad : {DISPID(7), DISPID(99), DISPID(-1), DISPID(-7)}) {
    const Outcome outcome = call_named(probe, kDescribe, {L"a"}, {{1, 5}, {bad, 6}});
    EXPECT_EQ(outcome.result, DISP_E_PARAMNOTFOUND) << bad;
    EXPECT_EQ(outcome.argument, 1u) << bad;
  }
}

TEST(Arguments, NameOfAPositionalArgumentIsRefused) {
  const Outcome outcome = call_named(make_probe(), kDescribe, {L"a"}, {{0, L"again"}});
  EXPECT_EQ(outcome.result, DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(outcome.argument, 0u);
}

TEST(Arguments, SameNameTwiceIsRefused) {
  const Outcome outcome = call_named(make_probe(), kDescribe, {L"a"}, {{1, 5}, {1, 6}});
  EXPECT_EQ(outcome.result, DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(outcome.argument, 1u);
}

TEST(Arguments, NewValueIsNoNameForAMethod) {
  const Outcome outcome = call_named(make_probe(), kDescribe, {}, {{DISPID_PROPERTYPUT, L"a"}});
  EXPECT_EQ(outcome.result, DISP_E_PARAMNOTFOUND);
}

TEST(Arguments, MoreNamesThanArgumentsAreRefused) {
  const Value argument(L"a");
  const VARIANT passed[] = {argument};
  const DISPID names[] = {0, 1};
  EXPECT_EQ(make_probe().invoke(kDescribe, DISPATCH_METHOD, passed, names).result,
            DISP_E_BADPARAMCOUNT);
}

TEST(Arguments, OneThatDoesNotConvertIsRefusedWithItsIndex) {
  const Object probe = make_probe();
  const Outcome last = probe.try_call(L"TakeTexts", L"a", L"b", L"no number");
  EXPECT_EQ(last.result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(last.argument, 0u);
  const Outcome first = probe.try_call(L"ChangeLong", L"no number", 1);
  EXPECT_EQ(first.result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(first.argument, 1u);
  const Outcome wide = probe.try_call(L"ChangeShort", 1, 70000);
  EXPECT_EQ(wide.result, DISP_E_OVERFLOW);
  EXPECT_EQ(wide.argument, 0u);
  const Outcome named = call_named(probe, kDescribe, {L"a"}, {{4, 1}, {1, L"no number"}});
  EXPECT_EQ(named.result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(named.argument, 1u);
}

TEST(Arguments, NothingLeaksWhenALaterOneDoesNotConvert) {
  const Object probe = make_probe();
  const Value wrong(L"no number");
  const Value text(L"some text"), number(12345);
  Value variable(L"12");
  const AllocationBalance balance;
  probe.try_call(L"TakeTexts", number, number, wrong);
  probe.try_call(L"TakeTexts", by_ref(variable), number, wrong);
  probe.try_call(L"ChangeTwo", text, wrong);
  probe.try_call(L"Describe", number, Value::missing(), Value::missing(), wrong);
  EXPECT_EQ(balance.difference(), 0) << balance.report();
}

TEST(Arguments, ObjectsMustHaveTheInterface) {
  const Object probe = make_probe();
  const Object other = make_probe();
  EXPECT_EQ(probe.call(L"TakeObject", other), true);
  EXPECT_EQ(probe.call(L"TakeObject", Value::nothing()), false);
  EXPECT_EQ(probe.call(L"TakeObject", Value::null()), false);
  for (const Value& wrong : {Value(5), Value(L"text"), Value(true), Value()}) {
    EXPECT_EQ(probe.try_call(L"TakeObject", wrong).result, DISP_E_TYPEMISMATCH);
  }
  Value stranger;
  stranger.vt = VT_UNKNOWN;
  CreateErrorInfo(reinterpret_cast<ICreateErrorInfo**>(&stranger.punkVal));
  EXPECT_EQ(probe.try_call(L"TakeObject", stranger).result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(references_of(other.get()), 1u);
}

TEST(Arguments, ObjectInAnyKindOfVariableIsFound) {
  const Object probe = make_probe();
  Value variable(probe);
  EXPECT_EQ(probe.call(L"TakeObject", by_ref(variable)), true);
  IDispatch* typed = probe.get();
  EXPECT_EQ(probe.call(L"TakeObject", by_ref(typed)), true);
  Value unknown(probe);
  unknown.vt = VT_UNKNOWN;
  EXPECT_EQ(probe.call(L"TakeObject", unknown), true);
}

TEST(Arguments, AliasOfAnInterfaceIsThatInterface) {
  const Object probe = make_probe();
  Ref<IPictureDisp> picture;
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_NONE;
  ASSERT_EQ(OleCreatePictureIndirect(&description, IID_IPictureDisp, TRUE,
                                     reinterpret_cast<void**>(picture.put())),
            S_OK);
  const Value given(static_cast<IDispatch*>(picture.get()));
  EXPECT_EQ(probe.call(L"TakePicture", given), given);
  EXPECT_TRUE(probe.call(L"TakePicture", Value::nothing()).is_nothing());
  EXPECT_EQ(probe.try_call(L"TakePicture", probe).result, DISP_E_TYPEMISMATCH);
}

TEST(Arguments, WideOnesAreNotTornApart) {
  const Object probe = make_probe();
  EXPECT_EQ(probe.call(L"Mix", 1.25, L"any", 200, 5000000000.0, 2.5f, 40000.5),
            L"1.250000,any,200,5000000000,2.500000,40000.500000");
  EXPECT_EQ(probe.call(L"Mix", L"1", 2, L"3", L"-4", L"5", 6),
            L"1.000000,2,3,-4,5.000000,6.000000");
}

TEST(Arguments, VariablesArriveInValueParametersAsPlainValues) {
  const Object probe = make_probe();
  Value variable(L"text");
  short number = 5;
  Value reference = by_ref(number);
  EXPECT_EQ(probe.call(L"KindOf", by_ref(variable)), int(VT_BSTR));
  EXPECT_EQ(probe.call(L"KindOf", by_ref(number)), int(VT_I2));
  EXPECT_EQ(probe.call(L"KindOf", by_ref(reference)), int(VT_I2));
}

TEST(Arguments, ValueOfTheCallerIsNotTheVariableOfTheMember) {
  VARIANT passed[] = {Value(5)};
  EXPECT_EQ(make_probe().invoke(kKindOf, DISPATCH_METHOD, passed).value, int(VT_I4));
  EXPECT_EQ(passed[0].vt, VT_I4) << "the member emptied the caller's value";
}

TEST(Arguments, IndexedPropertyUsesItsDefaultIndex) {
  const Object probe = make_probe();
  probe.put(L"Indexed", L"first");
  probe.put(L"Indexed", 2, L"second");
  EXPECT_EQ(probe.get(L"Indexed"), L"first");
  EXPECT_EQ(probe.get(L"Indexed", 1), L"first");
  EXPECT_EQ(probe.get(L"Indexed", by_ref_of(VT_VARIANT, std::array{Value(2)}.data())), L"second");
  const std::vector<Named> named = {{DISPID_PROPERTYPUT, L"named"}, {0, 3}};
  EXPECT_TRUE(call_named(probe, kIndexed, {}, named, DISPATCH_PROPERTYPUT).worked());
  EXPECT_EQ(probe.get(L"Indexed", 3), L"named");
}

TEST(Arguments, NewValueWithoutItsNameIsTheLastArgument) {
  const Object probe = make_probe();
  EXPECT_TRUE(call_named(probe, kIndexed, {4, L"bare"}, {}, DISPATCH_PROPERTYPUT).worked());
  EXPECT_EQ(probe.get(L"Indexed", 4), L"bare");
}

TEST(Arguments, MissingParameterBlockMeansNoArguments) {
  const Object probe = make_probe();
  Value result;
  EXPECT_EQ(probe.get()->Invoke(36, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, nullptr,
                                &result, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(result, L"");
  EXPECT_EQ(probe.get()->Invoke(kTakeTexts, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, nullptr,
                                nullptr, nullptr, nullptr),
            DISP_E_BADPARAMCOUNT);
}

}  // namespace
}  // namespace pv::test
