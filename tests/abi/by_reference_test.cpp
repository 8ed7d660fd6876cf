// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Arguments that a member may change: they travel from variables of every kind into typed
// parameters, and changes travel back.

#include <gtest/gtest.h>

#include <cstring>

#include "tests/abi/probe_object.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/sample_values.h"

namespace pv::test {
namespace {

struct OwnedText {
  explicit OwnedText(const wchar_t* initial) : text(SysAllocString(initial)) {}
  OwnedText(const OwnedText&) = delete;
  OwnedText& operator=(const OwnedText&) = delete;
  ~OwnedText() { SysFreeString(text); }
  BSTR text;
};

TEST(ByReference, ScriptVariableOfTheRightTypeIsChanged) {
  const Object probe = make_probe();
  Value text(L"abc");
  EXPECT_EQ(probe.call(L"ChangeText", by_ref(text), L"def"), 6);
  EXPECT_EQ(text, L"abcdef");
}

TEST(ByReference, EmptyScriptVariableBecomesTheParametersType) {
  const Object probe = make_probe();
  Value text, number, wide, flag;
  probe.call(L"ChangeText", by_ref(text), L"new");
  probe.call(L"ChangeShort", by_ref(number), 5);
  probe.call(L"ChangeDouble", by_ref(wide), 1.5);
  probe.call(L"ChangeBoolean", by_ref(flag));
  EXPECT_EQ(text, L"new");
  EXPECT_EQ(number.vt, VT_I2);
  EXPECT_EQ(number, 5);
  EXPECT_EQ(wide, 1.5);
  EXPECT_EQ(flag, true);
}

TEST(ByReference, ScriptVariableOfAnotherTypeIsConvertedThereAndTakesTheResult) {
  const Object probe = make_probe();
  Value number(L"40");
  probe.call(L"ChangeLong", by_ref(number), 2);
  EXPECT_EQ(number.vt, VT_I4);
  EXPECT_EQ(number, 42);
}

TEST(ByReference, VariableThatIsNotChangedKeepsItsType) {
  const Object probe = make_probe();
  Value number(L"40");
  probe.call(L"ChangeLong", by_ref(number), 0);
  EXPECT_EQ(number, L"40");
  Value text(7);
  EXPECT_EQ(probe.call(L"ChangeText", by_ref(text), L""), 1);
  EXPECT_EQ(text, 7);
}

TEST(ByReference, ReferenceToAReferenceReachesTheInnermostVariable) {
  const Object probe = make_probe();
  Value text(L"a");
  Value reference = by_ref(text);
  probe.call(L"ChangeText", by_ref(reference), L"b");
  EXPECT_EQ(text, L"ab");
}

TEST(ByReference, TypedVariablesInsideScriptVariablesAreChanged) {
  const Object probe = make_probe();
  short number = 3;
  Value reference = by_ref(number);
  probe.call(L"ChangeShort", by_ref(reference), 4);
  EXPECT_EQ(number, 7);
}

TEST(ByReference, TypedVariablesOfCompiledClientsAreChanged) {
  const Object probe = make_probe();
  short number = 1;
  long wide_number = 2;
  double real = 3;
  VARIANT_BOOL flag = VARIANT_FALSE;
  OwnedText text(L"x");
  probe.call(L"ChangeShort", by_ref(number), 10);
  probe.call(L"ChangeLong", by_ref(wide_number), 10);
  probe.call(L"ChangeDouble", by_ref(real), 10);
  probe.call(L"ChangeBoolean", by_ref_boolean(flag));
  probe.call(L"ChangeText", by_ref(text.text), L"y");
  EXPECT_EQ(number, 11);
  EXPECT_EQ(wide_number, 12);
  EXPECT_EQ(real, 13);
  EXPECT_EQ(flag, VARIANT_TRUE);
  EXPECT_EQ(view_of(text.text), L"xy");
}

TEST(ByReference, TypedVariablesOfOtherTypesAreConvertedBothWays) {
  const Object probe = make_probe();
  short number = 1;
  probe.call(L"ChangeLong", by_ref(number), 10);
  EXPECT_EQ(number, 11);
  long wide_number = 2;
  probe.call(L"ChangeShort", by_ref(wide_number), 10);
  EXPECT_EQ(wide_number, 12);
  float single = 1.5f;
  probe.call(L"ChangeDouble", by_ref(single), 1.0);
  EXPECT_EQ(single, 2.5f);
  OwnedText text(L"20");
  probe.call(L"ChangeLong", by_ref(text.text), 1);
  EXPECT_EQ(view_of(text.text), L"21");
}

TEST(ByReference, ValueTooLargeForATypedVariableIsRefusedWithTheArgument) {
  const Object probe = make_probe();
  short number = 32000;
  const Outcome outcome = probe.try_call(L"ChangeLong", by_ref(number), 1000);
  EXPECT_EQ(outcome.result, DISP_E_OVERFLOW);
  EXPECT_EQ(outcome.argument, 1u);
  EXPECT_EQ(number, 32000);
}

TEST(ByReference, NullTextVariableIsFilled) {
  const Object probe = make_probe();
  BSTR text = nullptr;
  probe.call(L"ChangeText", by_ref(text), L"z");
  EXPECT_EQ(view_of(text), L"z");
  SysFreeString(text);
}

TEST(ByReference, LiteralsAreAcceptedAndTheChangeIsForgotten) {
  const Object probe = make_probe();
  EXPECT_EQ(probe.call(L"ChangeText", L"ab", L"c"), 3);
  EXPECT_EQ(probe.call(L"ChangeShort", 30000, 1), 30001);
  // Converted back into the literal's own type the result would not fit.
  Value literal;
  literal.vt = VT_UI1;
  literal.bVal = 250;
  EXPECT_EQ(probe.call(L"ChangeShort", literal, 1000), 1250);
}

TEST(ByReference, ObjectVariablesOfScriptsAreReplaced) {
  const Object probe = make_probe();
  const Object other = make_probe();
  Value variable;
  variable.vt = VT_DISPATCH;
  probe.call(L"ChangeObject", by_ref(variable), other);
  EXPECT_EQ(Object(variable), other);
  EXPECT_EQ(references_of(other.get()), 2u);
  probe.call(L"ChangeObject", by_ref(variable), probe);
  EXPECT_EQ(Object(variable), probe);
  EXPECT_EQ(references_of(other.get()), 1u);
  probe.call(L"ChangeObject", by_ref(variable), Value::nothing());
  EXPECT_TRUE(variable.is_nothing());
  EXPECT_EQ(references_of(probe.get()), 1u);
}

TEST(ByReference, TypedObjectVariablesAreReplaced) {
  const Object probe = make_probe();
  const Object other = make_probe();
  IDispatch* variable = nullptr;
  probe.call(L"ChangeObject", by_ref(variable), other);
  EXPECT_EQ(variable, other.get());
  EXPECT_EQ(references_of(other.get()), 2u);
  probe.call(L"ChangeObject", by_ref(variable), Value::nothing());
  EXPECT_EQ(variable, nullptr);
  EXPECT_EQ(references_of(other.get()), 1u);
}

TEST(ByReference, ObjectThatStaysKeepsItsReferences) {
  const Object probe = make_probe();
  const Object other = make_probe();
  Value variable(other);
  probe.call(L"ChangeObject", by_ref(variable), other);
  EXPECT_EQ(Object(variable), other);
  EXPECT_EQ(references_of(other.get()), 2u);
}

TEST(ByReference, ValueParameterChangesTheVariableItself) {
  const Object probe = make_probe();
  Value variable(L"old");
  probe.call(L"ChangeVariant", by_ref(variable), 12.5);
  EXPECT_EQ(variable, 12.5);
  probe.call(L"ChangeVariant", by_ref(variable), L"text");
  EXPECT_EQ(variable, L"text");
}

TEST(ByReference, ValueParameterChangesTypedVariables) {
  const Object probe = make_probe();
  short number = 1;
  probe.call(L"ChangeVariant", by_ref(number), 77);
  EXPECT_EQ(number, 77);
  OwnedText text(L"old");
  probe.call(L"ChangeVariant", by_ref(text.text), 5);
  EXPECT_EQ(view_of(text.text), L"5");
}

TEST(ByReference, ValueParameterTakesLiterals) {
  EXPECT_NO_THROW(make_probe().call(L"ChangeVariant", 5, L"text"));
}

TEST(ByReference, OmittedOptionalArgumentArrivesAsMissing) {
  const Object probe = make_probe();
  EXPECT_EQ(probe.call(L"ChangeOptional"), L"omitted");
  EXPECT_EQ(probe.call(L"ChangeOptional", Value::missing()), L"omitted");
  Value variable = Value::missing();
  EXPECT_EQ(probe.call(L"ChangeOptional", by_ref(variable)), L"omitted");
  EXPECT_EQ(probe.call(L"ChangeOptional", 5), L"given");
  Value given(5);
  EXPECT_EQ(probe.call(L"ChangeOptional", by_ref(given)), L"given");
  EXPECT_EQ(given, L"filled in");
}

TEST(ByReference, SeveralArgumentsGoBackTogether) {
  const Object probe = make_probe();
  Value text(L"a"), number(L"1");
  probe.call(L"ChangeTwo", by_ref(text), by_ref(number));
  EXPECT_EQ(text, L"a!");
  EXPECT_EQ(number, 2);
}

TEST(ByReference, NothingLeaksOrIsFreedTwice) {
  const Object probe = make_probe();
  const AllocationBalance balance;
  {
    Value text(L"abc"), number(L"1"), omitted;
    OwnedText typed(L"typed");
    probe.call(L"ChangeText", by_ref(text), L"def");
    probe.call(L"ChangeText", by_ref(typed.text), L"def");
    probe.call(L"ChangeText", L"literal", L"def");
    probe.call(L"ChangeTwo", by_ref(text), by_ref(number));
    probe.call(L"ChangeTwo", by_ref(number), by_ref(number));
    probe.call(L"ChangeOptional");
    probe.call(L"ChangeOptional", by_ref(text));
    probe.call(L"ChangeVariant", by_ref(text), L"another");
    probe.call(L"ChangeVariant", by_ref(typed.text), L"another");
  }
  EXPECT_EQ(balance.difference(), 0) << balance.report();
}

TEST(ByReference, AnArrayVariableKeepsOneArray) {
  const Object probe = make_probe();
  SAFEARRAY* numbers = SafeArrayCreateVector(VT_I4, 0, 3);
  const AllocationBalance balance;
  probe.try_call(L"ChangeVariant", by_ref_of(VT_ARRAY | VT_I4, &numbers), Value());
  probe.try_call(L"ChangeOptional", by_ref_of(VT_ARRAY | VT_I4, &numbers));
  EXPECT_EQ(balance.difference(), 0) << balance.report();
  ASSERT_NE(numbers, nullptr);
  EXPECT_EQ(SafeArrayGetDim(numbers), 1u);
  SafeArrayDestroy(numbers);
}

TEST(ByReference, AnArrayVariableTakesAnotherArray) {
  const Object probe = make_probe();
  const AllocationBalance balance;
  SAFEARRAY* numbers = SafeArrayCreateVector(VT_I4, 0, 3);
  probe.call(L"ChangeVariant", by_ref_of(VT_ARRAY | VT_I4, &numbers), array_of(VT_I4, 5));
  long last = 0;
  EXPECT_EQ(SafeArrayGetUBound(numbers, 1, &last), S_OK);
  EXPECT_EQ(last, 4);
  EXPECT_EQ(SafeArrayDestroy(numbers), S_OK);
  EXPECT_EQ(balance.difference(), 0) << balance.report();
}

template <class Variable>
void expect_changed(VARTYPE type) {
  struct {
    Variable variable{};
    unsigned char beyond = 0x5A;
  } client;
  const Value replacement = with_type(type, 100);
  make_probe().call(L"ChangeVariant", by_ref_of(type, &client.variable), replacement);
  EXPECT_EQ(std::memcmp(&client.variable, &replacement.lVal, sizeof(Variable)), 0) << type;
  EXPECT_EQ(client.beyond, 0x5A) << type;
}

TEST(ByReference, TypedVariablesOfEveryWidthAreChanged) {
  expect_changed<BYTE>(VT_UI1);
  expect_changed<short>(VT_I2);
  expect_changed<long>(VT_I4);
  expect_changed<float>(VT_R4);
  expect_changed<double>(VT_R8);
  expect_changed<CY>(VT_CY);
  expect_changed<DATE>(VT_DATE);
  expect_changed<LONGLONG>(VT_I8);
}

TEST(ByReference, DecimalVariableIsChanged) {
  DECIMAL number{};
  make_probe().call(L"ChangeVariant", by_ref_of(VT_DECIMAL, &number), with_type(VT_DECIMAL, 100));
  double changed = 0;
  EXPECT_EQ(VarR8FromDec(&number, &changed), S_OK);
  EXPECT_EQ(changed, 100);
}

}  // namespace
}  // namespace pv::test
