// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The variables of an item: an ordered, keyed collection that raises its errors.

#include <gtest/gtest.h>

#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

Object make_variables() { return Object::create(L"pvItems32.CVariables"); }

Object make_variables(const Texts& keys) {
  const Object variables = make_variables();
  for (const std::wstring& key : keys) add_variable(variables, key);
  return variables;
}

Texts captions_of(const Object& variables) { return texts_of(variables, L"Caption"); }

TEST(Variables, StartEmpty) {
  const Object variables = make_variables();
  EXPECT_EQ(variables.get(L"Count"), 0);
  EXPECT_EQ(variables.get(L"Count").vt, VT_I4);
  EXPECT_TRUE(members_of(variables).empty());
}

TEST(Variables, AddGivesTheNewVariableWithAllItsFields) {
  const Object variables = make_variables();
  const Object variable = variables.call_object(L"Add", L"k", L"Caption", L"Description", L"PUMP",
                                                -1, 11, 4, 3, 2.5, L"UNITS", 4);
  EXPECT_EQ(variables.get_object(L"Item", 1), variable);
  EXPECT_EQ(variable.get(L"Key"), L"k");
  EXPECT_EQ(variable.get(L"Caption"), L"Caption");
  EXPECT_EQ(variable.get(L"Description"), L"Description");
  EXPECT_EQ(variable.get(L"Symbol"), L"PUMP");
  EXPECT_EQ(variable.get(L"ParentVariable"), -1);
  EXPECT_EQ(variable.get(L"DimensionID"), 11);
  EXPECT_EQ(variable.get(L"UnitID"), 4);
  EXPECT_EQ(variable.get(L"Decimals"), 3);
  EXPECT_EQ(variable.get(L"Value"), 2.5);
  EXPECT_EQ(variable.get(L"ListID"), L"UNITS");
  EXPECT_EQ(variable.get(L"DataType"), 4);
  EXPECT_EQ(variable.get(L"Dirty"), false);
  EXPECT_EQ(variable.get(L"Tolerance"), 0.0);
  EXPECT_EQ(variable.get(L"EnableTolerance"), true);
}

TEST(Variables, AddTakesEverythingFromScriptVariables) {
  const Object variables = make_variables();
  Value key(L"k"), text(L"text"), number(3), value(1.5f), list(7);
  const Object variable = variables.call_object(
      L"Add", by_ref(key), by_ref(text), by_ref(text), by_ref(text), by_ref(number), by_ref(number),
      by_ref(number), by_ref(number), by_ref(value), by_ref(list), by_ref(number));
  value = Value(L"changed");
  EXPECT_EQ(variable.get(L"Value"), 1.5f);
  EXPECT_EQ(variable.get(L"ListID"), 7);
  EXPECT_EQ(variables.get_object(L"Item", L"k"), variable);
}

TEST(Variables, AreFoundByPositionAndByKey) {
  const Object variables = make_variables({L"a", L"b"});
  EXPECT_EQ(variables.get_object(L"Item", 2).get(L"Key"), L"b");
  EXPECT_EQ(variables.get_object(L"Item", L"a").get(L"Key"), L"a");
}

TEST(Variables, ItemIsTheDefaultMember) {
  EXPECT_EQ(make_variables().id_of(L"Item"), DISPID_VALUE);
}

TEST(Variables, PositionsComeInAnyNumericType) {
  const Object variables = make_variables({L"a", L"b"});
  const Value positions[] = {static_cast<short>(2), 2L, 2.0f, 2.0};
  for (const Value& position : positions) {
    EXPECT_EQ(variables.get_object(L"Item", position).get(L"Key"), L"b");
    EXPECT_EQ(Object(item_by_variable(variables, position).value).get(L"Key"), L"b");
  }
  short typed_short = 2;
  long typed_long = 2;
  double typed_double = 2;
  for (const VARIANT& typed : {by_ref(typed_short), by_ref(typed_long), by_ref(typed_double)}) {
    EXPECT_EQ(variables.get_object(L"Item", typed).get(L"Key"), L"b");
  }
  for (const VARTYPE type :
       {VT_UI1, VT_UI2, VT_UI4, VT_I1, VT_INT, VT_UINT, VT_I8, VT_UI8, VT_CY, VT_DECIMAL}) {
    Value position;
    ASSERT_EQ(VariantChangeType(&position, &(const_cast<Value&>(positions[1])), 0, type), S_OK);
    EXPECT_EQ(variables.get_object(L"Item", position).get(L"Key"), L"b") << "type " << type;
  }
}

TEST(Variables, NumericTextIsAKeyAndNeverAPosition) {
  const Object variables = make_variables({L"2", L"b", L"1"});
  EXPECT_EQ(variables.get_object(L"Item", L"1").get(L"Key"), L"1");
  EXPECT_EQ(variables.get_object(L"Item", 1).get(L"Key"), L"2");
  EXPECT_EQ(variables.try_get(L"Item", L"3").number(), 5);
}

TEST(Variables, KeysCompareWithoutRegardToCase) {
  const Object variables = make_variables({L"Flow", L"\u0150SZ", L"a\0B"s});
  EXPECT_EQ(variables.get_object(L"Item", L"fLOW").get(L"Key"), L"Flow");
  EXPECT_EQ(variables.get_object(L"Item", L"\u0151sz").get(L"Key"), L"\u0150SZ");
  EXPECT_EQ(variables.get_object(L"Item", L"A\0b"s).get(L"Key"), L"a\0B"s);
  EXPECT_EQ(variables.try_get(L"Item", L"A").number(), 5);
  EXPECT_EQ(variables.try_get(L"Item", L"osz").number(), 5);
}

TEST(Variables, UnknownOnesRaiseTheErrorsOfTheCollection) {
  const Object variables = make_variables({L"a"});
  for (const int position : {0, 2, -1, 2'000'000'000}) {
    const Outcome outcome = variables.try_get(L"Item", position);
    EXPECT_EQ(outcome.number(), 9) << position;
    EXPECT_TRUE(outcome.value.vt == VT_EMPTY || outcome.value.is_nothing());
  }
  EXPECT_EQ(variables.try_get(L"Item", L"b").number(), 5);
  EXPECT_EQ(variables.try_get(L"Item", L"").number(), 5);
  EXPECT_EQ(variables.try_get(L"Item", Value::null()).number(), 94);
  EXPECT_EQ(variables.try_get(L"Item", Value()).number(), 13);
  EXPECT_EQ(variables.try_get(L"Item", Value::nothing()).number(), 13);
  EXPECT_EQ(variables.try_get(L"Item", 1e300).number(), 6);
}

TEST(Variables, ErrorsSayWhatWentWrong) {
  const Object variables = make_variables({L"a"});
  const Outcome position = variables.try_get(L"Item", 9);
  EXPECT_EQ(position.source, L"pvItems32.CVariables");
  EXPECT_NE(position.description.find(L"Item"), std::wstring::npos);
  EXPECT_NE(position.description.find(L"9"), std::wstring::npos);
  const Outcome key = variables.try_get(L"Item", L"no such key");
  EXPECT_EQ(key.source, L"pvItems32.CVariables");
  EXPECT_NE(key.description.find(L"no such key"), std::wstring::npos);
}

TEST(Variables, AddUnderAKeyInUseRaisesAnErrorAndAddsNothing) {
  const Object variables = make_variables({L"Flow"});
  const Outcome outcome = variables.try_call(L"Add", L"FLOW", L"", L"", L"", 0, 1, 1, 2, 0.0, 0, 4);
  EXPECT_EQ(outcome.number(), 457);
  EXPECT_EQ(outcome.source, L"pvItems32.CVariables");
  EXPECT_NE(outcome.description.find(L"FLOW"), std::wstring::npos);
  EXPECT_EQ(variables.get(L"Count"), 1);
}

TEST(Variables, WithoutKeyAreReachedByPositionOnly) {
  const Object variables = make_variables({L"", L"", L"c"});
  EXPECT_EQ(variables.get(L"Count"), 3);
  EXPECT_EQ(captions_of(variables), (Texts{L"Caption ", L"Caption ", L"Caption c"}));
  EXPECT_FALSE(variables.get_object(L"Item", 1) == variables.get_object(L"Item", 2));
  EXPECT_EQ(variables.try_get(L"Item", L"").number(), 5);
}

TEST(Variables, AddRefusesArgumentsThatDoNotFit) {
  const Object variables = make_variables();
  const auto add = [&](const Value& parent, const Value& type) {
    return variables.try_call(L"Add", L"k", L"", L"", L"", parent, 1, 1, 2, 0.0, 0, type);
  };
  EXPECT_EQ(add(40'000, 4).result, DISP_E_OVERFLOW);
  EXPECT_EQ(add(0, L"text").result, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(variables.try_call(L"Add", L"k").result, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(variables.get(L"Count"), 0);
}

TEST(Variables, AreRemovedByPositionAndByKey) {
  const Object variables = make_variables({L"a", L"b", L"c", L"d"});
  variables.call(L"Remove", 2);
  variables.call(L"Remove", L"D");
  EXPECT_EQ(texts_of(variables), (Texts{L"a", L"c"}));
  EXPECT_EQ(variables.get_object(L"Item", 2).get(L"Key"), L"c");
  EXPECT_EQ(variables.try_get(L"Item", L"b").number(), 5);
  add_variable(variables, L"b");
  EXPECT_EQ(texts_of(variables), (Texts{L"a", L"c", L"b"}));
}

TEST(Variables, RemovingAnUnknownOneRaisesAnErrorAndChangesNothing) {
  const Object variables = make_variables({L"a"});
  EXPECT_EQ(variables.try_call(L"Remove", 2).number(), 9);
  EXPECT_EQ(variables.try_call(L"Remove", L"b").number(), 5);
  EXPECT_EQ(texts_of(variables), (Texts{L"a"}));
}

TEST(Variables, AreEmptyAfterClearAndTheirKeysFree) {
  const Object variables = make_variables({L"a", L"b"});
  const Object kept = variables.get_object(L"Item", L"a");
  variables.call(L"Clear");
  variables.call(L"Clear");
  EXPECT_EQ(variables.get(L"Count"), 0);
  add_variable(variables, L"a");
  EXPECT_FALSE(variables.get_object(L"Item", L"a") == kept);
  EXPECT_EQ(kept.get(L"Key"), L"a");  // who holds a removed variable keeps it alive
}

TEST(Variables, KeyPropertyDoesNotMoveTheVariable) {
  const Object variables = make_variables({L"a"});
  variables.get_object(L"Item", 1).put(L"Key", L"b");
  EXPECT_EQ(variables.get_object(L"Item", L"a").get(L"Key"), L"b");
  EXPECT_EQ(variables.try_get(L"Item", L"b").number(), 5);
}

TEST(Variables, CanBeRemovedWhileTheyAreEnumerated) {
  const Object variables = make_variables({L"a", L"b", L"c"});
  Texts seen;
  for (const Object& variable : members_of(variables)) {
    seen.push_back(variable.get(L"Key").text());
    variables.call(L"Remove", variable.get(L"Key"));
  }
  EXPECT_EQ(seen, (Texts{L"a", L"b", L"c"}));
  EXPECT_EQ(variables.get(L"Count"), 0);
}

}  // namespace
}  // namespace pv::test
