// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// One variable of an item: its properties and its record.

#include <gtest/gtest.h>

#include <limits>

#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

Object make_variable() { return Object::create(L"pvItems32.CVariable"); }

struct Default {
  const wchar_t* property;
  Value value;
  VARTYPE type;
};

TEST(Variable, StartsWithItsDefaults) {
  const Default defaults[] = {
      {L"Key", L"", VT_BSTR},
      {L"DataType", 1, VT_I2},
      {L"Dirty", false, VT_BOOL},
      {L"ParentVariable", 0, VT_I2},
      {L"ListID", 0, VT_I2},
      {L"Value", 0.0, VT_R8},
      {L"Tolerance", 0.0, VT_R8},
      {L"EnableTolerance", true, VT_BOOL},
      {L"Decimals", 2, VT_I2},
      {L"UnitID", 1, VT_I2},
      {L"DimensionID", 1, VT_I2},
      {L"Symbol", L"", VT_BSTR},
      {L"Description", L"New variable", VT_BSTR},
      {L"Caption", L"New", VT_BSTR},
  };
  const Object variable = make_variable();
  for (const auto& [property, value, type] : defaults) {
    const Value given = variable.get(property);
    EXPECT_EQ(given, value) << printable(property);
    EXPECT_EQ(given.vt, type) << printable(property);
  }
}

TEST(Variable, KeepsTexts) {
  const Object variable = make_variable();
  for (const wchar_t* property : {L"Key", L"Symbol", L"Description", L"Caption"}) {
    for (const std::wstring& text : {L"plain"s, L""s, L"\u6D41\u91CF \u0151\u0171 \U0001F4A7"s,
                                     L"a\0b"s, L" a|b\r\n"s, std::wstring(100'000, L'x')}) {
      variable.put(property, text);
      EXPECT_EQ(variable.get(property), text) << printable(property);
    }
  }
}

TEST(Variable, KeepsIntegersOfSixteenBits) {
  const Object variable = make_variable();
  for (const wchar_t* property :
       {L"DataType", L"ParentVariable", L"Decimals", L"UnitID", L"DimensionID"}) {
    for (const int number : {0, -1, 7, 32767, -32768}) {
      variable.put(property, number);
      EXPECT_EQ(variable.get(property), number) << printable(property);
    }
    EXPECT_EQ(variable.try_put(property, 32768).result, DISP_E_OVERFLOW) << printable(property);
    EXPECT_EQ(variable.get(property), -32768) << printable(property);
  }
}

TEST(Variable, KeepsBooleans) {
  const Object variable = make_variable();
  for (const wchar_t* property : {L"Dirty", L"EnableTolerance"}) {
    for (const bool flag : {true, false, true}) {
      variable.put(property, flag);
      EXPECT_EQ(variable.get(property), flag) << printable(property);
    }
    variable.put(property, 2);  // any number but 0 is true, and comes back as -1
    EXPECT_EQ(variable.get(property), true) << printable(property);
  }
}

TEST(Variable, KeepsValuesWithTheirType) {
  const Object variable = make_variable();
  const Value values[] = {Value(),         Value(static_cast<short>(7)),
                          Value(70'000L),  Value(1.5f),
                          Value(-2.25),    Value(L"text"),
                          Value(L"a\0b"s), Value(true),
                          Value::null(),   Value(std::numeric_limits<double>::infinity())};
  for (const wchar_t* property : {L"Value", L"Tolerance", L"ListID"}) {
    for (const Value& value : values) {
      variable.put(property, value);
      const Value given = variable.get(property);
      EXPECT_EQ(given, value) << printable(property);
      EXPECT_EQ(given.vt, value.vt) << printable(property);
    }
  }
}

TEST(Variable, KeepsWhatAVariableHoldsAndNotTheReference) {
  const Object variable = make_variable();
  Value held(L"first");
  variable.put(L"Value", by_ref(held));
  held = Value(L"second");
  EXPECT_EQ(variable.get(L"Value"), L"first");
}

// --- Record

TEST(VariableRecord, IsSavedWithAnEmptyPlaceForTheValue) {
  const Object variable = make_variable();
  EXPECT_EQ(variable.call(L"Save"), L"|New|New variable|0|1|1|2||0|1||");
  variable.put(L"Key", L"2");
  variable.put(L"Caption", L"Mass flow");
  variable.put(L"Description", L"\u6D41\u91CF");
  variable.put(L"ParentVariable", -1);
  variable.put(L"DimensionID", 3);
  variable.put(L"UnitID", 4);
  variable.put(L"Decimals", 5);
  variable.put(L"Value", 99.5);
  variable.put(L"Tolerance", 1.5);
  variable.put(L"ListID", 6);
  variable.put(L"DataType", 4);
  variable.put(L"Symbol", L"PUMP");
  EXPECT_EQ(variable.call(L"Save"), L"2|Mass flow|\u6D41\u91CF|-1|3|4|5||6|4|PUMP|");
}

TEST(VariableRecord, HoldsTheTextOfAnyListID) {
  const Object variable = make_variable();
  const auto saved_list = [&](const Value& list) {
    variable.put(L"ListID", list);
    return variable.call(L"Save").text();
  };
  EXPECT_EQ(saved_list(L"UNITS"), L"|New|New variable|0|1|1|2||UNITS|1||");
  EXPECT_EQ(saved_list(Value()), L"|New|New variable|0|1|1|2|||1||");
  EXPECT_EQ(saved_list(1.5), L"|New|New variable|0|1|1|2||1" + user_decimal() + L"5|1||");
}

TEST(VariableRecord, OfANullListIDCannotBeSaved) {
  const Object variable = make_variable();
  variable.put(L"ListID", Value::null());
  EXPECT_EQ(variable.try_call(L"Save").number(), 94);
}

TEST(VariableRecord, WritesTextsAsTheyStand) {
  const Object variable = make_variable();
  variable.put(L"Caption", L"a|b");
  EXPECT_EQ(variable.call(L"Save"), L"|a|b|New variable|0|1|1|2||0|1||");
  EXPECT_EQ(variable.call(L"Load", variable.call(L"Save")), true);
  EXPECT_EQ(variable.get(L"Caption"), L"a");
  EXPECT_EQ(variable.get(L"Description"), L"b");
  EXPECT_EQ(variable.get(L"DimensionID"), 0);  // "New variable", one field further
}

TEST(VariableRecord, FillsAllFieldsWhenLoaded) {
  const Object variable = make_variable();
  EXPECT_EQ(variable.call(L"Load", L"2|Mass flow|Long text|1|3|4|5|77|6|3|PUMP|"), true);
  EXPECT_EQ(variable.get(L"Key"), L"2");
  EXPECT_EQ(variable.get(L"Caption"), L"Mass flow");
  EXPECT_EQ(variable.get(L"Description"), L"Long text");
  EXPECT_EQ(variable.get(L"ParentVariable"), 1);
  EXPECT_EQ(variable.get(L"DimensionID"), 3);
  EXPECT_EQ(variable.get(L"UnitID"), 4);
  EXPECT_EQ(variable.get(L"Decimals"), 5);
  EXPECT_EQ(variable.get(L"ListID"), 6);
  EXPECT_EQ(variable.get(L"ListID").vt, VT_I2);
  EXPECT_EQ(variable.get(L"DataType"), 3);
  EXPECT_EQ(variable.get(L"Symbol"), L"PUMP");
}

TEST(VariableRecord, LeavesWhatItDoesNotHold) {
  const Object variable = make_variable();
  variable.put(L"Tolerance", 1.5);
  variable.put(L"EnableTolerance", false);
  variable.put(L"Dirty", true);
  variable.call(L"Load", L"2|Mass flow|Long text|1|3|4|5|77|6|3|PUMP|");
  EXPECT_EQ(variable.get(L"Tolerance"), 1.5);
  EXPECT_EQ(variable.get(L"EnableTolerance"), false);
  EXPECT_EQ(variable.get(L"Dirty"), true);
}

TEST(VariableRecord, LoadsZeroForTheValueWhateverItSays) {
  const Object variable = make_variable();
  variable.put(L"Value", L"old");
  variable.call(L"Load", L"2|||0|3|4|5|77|6|4||");
  EXPECT_EQ(variable.get(L"Value"), 0.0f);
  EXPECT_EQ(variable.get(L"Value").vt, VT_R4);
  for (const wchar_t* record : {L"2|||0|3|4|5|77|6|3||", L"2|||0|3|4|5|77|6|0||"}) {
    variable.call(L"Load", record);
    EXPECT_EQ(variable.get(L"Value"), L"0") << printable(record);
  }
}

TEST(VariableRecord, ReadsNumbersTolerantly) {
  const Object variable = make_variable();
  variable.call(L"Load", L"k|c|d|2,5|3.5|12 kg|abc||40000|4|");
  EXPECT_EQ(variable.get(L"ParentVariable"), 2);
  EXPECT_EQ(variable.get(L"DimensionID"), 4);
  EXPECT_EQ(variable.get(L"UnitID"), 12);
  EXPECT_EQ(variable.get(L"Decimals"), 0);
  EXPECT_EQ(variable.get(L"ListID"), 0);
}

TEST(VariableRecord, ThatIsShortFillsTheFieldsThatAreThere) {
  const Object variable = make_variable();
  variable.put(L"Value", 7.5);
  variable.put(L"ListID", L"UNITS");
  variable.put(L"DataType", 4);
  variable.put(L"Symbol", L"PUMP");
  EXPECT_EQ(variable.call(L"Load", L"9|Short|Text|2|11"), false);
  EXPECT_EQ(variable.get(L"Key"), L"9");
  EXPECT_EQ(variable.get(L"Caption"), L"Short");
  EXPECT_EQ(variable.get(L"Description"), L"Text");
  EXPECT_EQ(variable.get(L"ParentVariable"), 2);
  EXPECT_EQ(variable.get(L"DimensionID"), 11);
  EXPECT_EQ(variable.get(L"UnitID"), 1);
  EXPECT_EQ(variable.get(L"Decimals"), 2);
  EXPECT_EQ(variable.get(L"ListID"), L"UNITS");
  EXPECT_EQ(variable.get(L"DataType"), 4);
  EXPECT_EQ(variable.get(L"Symbol"), L"PUMP");
  EXPECT_EQ(variable.get(L"Value"), 0.0f);
}

TEST(VariableRecord, IsCompleteWithElevenFields) {
  const Object variable = make_variable();
  EXPECT_EQ(variable.call(L"Load", L"k|c|d|0|1|1|2||0|1|s|"), true);
  EXPECT_EQ(variable.call(L"Load", L"k|c|d|0|1|1|2||0|1|s"), true);
  EXPECT_EQ(variable.call(L"Load", L"k|c|d|0|1|1|2||0|1|s|more|and more"), true);
  EXPECT_EQ(variable.get(L"Symbol"), L"s");
  EXPECT_EQ(variable.call(L"Load", L"k|c|d|0|1|1|2||0|1"), false);
  EXPECT_EQ(variable.call(L"Load", L""), false);
  EXPECT_EQ(variable.get(L"Key"), L"");
  EXPECT_EQ(variable.get(L"Caption"), L"c");
}

TEST(VariableRecord, ComesBackAsSaved) {
  const Object variable = make_variable(), copy = make_variable();
  variable.call(L"Load", L"\u6D41\0\u91CF|c|d|-1|-32768|32767|5||6|4|s|"s);
  EXPECT_EQ(copy.call(L"Load", variable.call(L"Save")), true);
  EXPECT_EQ(copy.call(L"Save"), variable.call(L"Save"));
  EXPECT_EQ(copy.get(L"Key"), L"\u6D41\0\u91CF"s);
}

TEST(VariableRecord, IsReadFromAScriptVariable) {
  const Object variable = make_variable();
  Value record(L"k|c|d|0|1|1|2||0|1|s|");
  EXPECT_EQ(variable.call(L"Load", by_ref(record)), true);
  EXPECT_EQ(variable.get(L"Key"), L"k");
  EXPECT_EQ(record, L"k|c|d|0|1|1|2||0|1|s|");
}

TEST(VariableRecord, ThatIsNoTextIsRefusedAndChangesNothing) {
  const Object variable = make_variable();
  variable.put(L"ListID", Value::null());
  for (const Value& record : {Value::null(), Value::nothing(), Value(make_variable())}) {
    EXPECT_EQ(variable.call(L"Load", record), false);
    EXPECT_EQ(variable.get(L"Caption"), L"New");
    EXPECT_EQ(variable.get(L"Value"), 0.0);
    EXPECT_EQ(variable.get(L"Value").vt, VT_R8);
  }
  EXPECT_EQ(variable.call(L"Load", 5), false);  // a number is its text: the key and nothing more
  EXPECT_EQ(variable.get(L"Key"), L"5");
}

}  // namespace
}  // namespace pv::test
