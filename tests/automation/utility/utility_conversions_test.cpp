// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The tolerant conversions: any value in, the wanted type out.

#include <gtest/gtest.h>

#include <climits>

#include "tests/automation/utility/utility_support.h"

namespace pv::test {
namespace {

struct Conversions : testing::Test {
  const Object utility = Object::create(L"pvItems32.CUtility");

  Value converted(std::wstring_view member, const Value& value) const {
    return utility.call(member, value);
  }
};
using NumberText = Conversions;

Value unknown_error() {
  Value value;
  value.vt = VT_ERROR;
  value.scode = E_FAIL;
  return value;
}

TEST_F(NumberText, OfNoValueIsZero) {
  for (const Value& value :
       {Value(), Value(L""), Value::null(), Value::nothing(), Value(utility), unknown_error()}) {
    EXPECT_EQ(converted(L"pvCNumber", value), L"0") << testing::PrintToString(value);
  }
}

TEST_F(NumberText, OfBooleansIsMinusOneAndZero) {
  EXPECT_EQ(converted(L"pvCNumber", true), L"-1");
  EXPECT_EQ(converted(L"pvCNumber", false), L"0");
  VARIANT_BOOL flag = VARIANT_TRUE;
  EXPECT_EQ(converted(L"pvCNumber", by_ref_boolean(flag)), L"-1");
}

TEST_F(NumberText, ReadsTheLongestLeadingNumber) {
  const struct {
    const wchar_t* text;
    const wchar_t* number;
  } rows[] = {
      {L"2,5", L"2.5"},
      {L"2.5", L"2.5"},
      {L"12 kg", L"12"},
      {L"abc", L"0"},
      {L"-3", L"-3"},
      {L"+3", L"3"},
      {L".5", L"0.5"},
      {L"-,5", L"-0.5"},
      {L"5.", L"5"},
      {L"1,2,3", L"1.2"},
      {L"1.2,3", L"1.2"},
      {L"1,2.3", L"1.2"},
      {L" - 1 2 . 5 ", L"-12.5"},
      {L"\t7\r\n8", L"78"},
      {L"--5", L"0"},
      {L"1e3", L"1000"},
      {L"1E+2x", L"100"},
      {L"1e", L"1"},
      {L"1e-2", L"0.01"},
      {L"2e400", L"0"},
      {L"-2e400", L"0"},
      {L"1e-400", L"0"},
      {L"007", L"7"},
      {L"-0", L"0"},
      {L"1/3", L"1"},
      {L"$5", L"0"},
      {L"?", L"0"},
      {L"0,1000", L"0.1"},
      {L"123456789012345678", L"1.23456789012346E+17"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(converted(L"pvCNumber", row.text), in_user_locale(row.number)) << printable(row.text);
  }
}

TEST_F(NumberText, StopsAtANul) {
  EXPECT_EQ(converted(L"pvCNumber", std::wstring(L"1\0002", 3)), L"1");
}

TEST_F(NumberText, OfNumbersIsTheirOrdinaryText) {
  EXPECT_EQ(converted(L"pvCNumber", 5), L"5");
  EXPECT_EQ(converted(L"pvCNumber", short{-5}), L"-5");
  EXPECT_EQ(converted(L"pvCNumber", 0.1 + 0.2), in_user_locale(L"0.3"));
  EXPECT_EQ(converted(L"pvCNumber", -2.5), in_user_locale(L"-2.5"));
  EXPECT_EQ(converted(L"pvCNumber", 0.1F), in_user_locale(L"0.1"));
  EXPECT_EQ(converted(L"pvCNumber", 1e15), L"1E+15");
  EXPECT_EQ(converted(L"pvCNumber", 1e-5), L"1E-05");
  EXPECT_EQ(converted(L"pvCNumber", 123456789012345.0), L"123456789012345");
  EXPECT_EQ(converted(L"pvCNumber", as_type(VT_CY, 2.5)), in_user_locale(L"2.5"));
  EXPECT_EQ(converted(L"pvCNumber", as_type(VT_DECIMAL, -2.5)), in_user_locale(L"-2.5"));
  EXPECT_EQ(converted(L"pvCNumber", as_type(VT_UI1, 255)), L"255");
  EXPECT_EQ(converted(L"pvCNumber", as_type(VT_I8, -7)), L"-7");
  EXPECT_EQ(converted(L"pvCNumber", as_type(VT_UI4, 7)), L"7");
}

TEST_F(NumberText, TakesVariablesByReference) {
  Value variable(L"2,5");
  double real = 2.5;
  short number = 3;
  EXPECT_EQ(converted(L"pvCNumber", by_ref(variable)), in_user_locale(L"2.5"));
  EXPECT_EQ(converted(L"pvCNumber", by_ref(real)), in_user_locale(L"2.5"));
  EXPECT_EQ(converted(L"pvCNumber", by_ref(number)), L"3");
  EXPECT_EQ(variable, L"2,5");
}

TEST_F(NumberText, IsReadBackAsItWas) {
  for (const double number : {0.1, -1e300, 12345.678, 1e-300}) {
    EXPECT_EQ(converted(L"pvCDbl", converted(L"pvCNumber", number)), number);
  }
}

TEST_F(NumberText, OfNumbersDoesNotNeedAUsualDecimalSeparator) {
  for (const wchar_t* separator : {L"'", L"*", L","}) {
    const UserDecimal set(separator);
    for (const Value& number :
         {Value(2.5F), Value(2.5), as_type(VT_CY, 2.5), as_type(VT_DECIMAL, 2.5)}) {
      EXPECT_EQ(converted(L"pvCDbl", number), 2.5) << testing::PrintToString(number);
      EXPECT_EQ(converted(L"pvCSng", number), 2.5F) << testing::PrintToString(number);
      EXPECT_EQ(converted(L"pvCNumber", number), in_user_locale(L"2.5"));
    }
    EXPECT_EQ(converted(L"pvCDbl", 0.1F), 0.1);
  }
}

TEST_F(Conversions, ToByteRoundsHalfToEvenAndIsZeroOutOfRange) {
  const struct {
    Value value;
    int byte;
  } rows[] = {
      {L"300", 0},    {256, 0},    {255, 255},   {255.4, 255}, {255.5, 0},         {-1, 0},
      {-0.5, 0},      {0.5, 0},    {1.5, 2},     {2.5, 2},     {L"2,5", 2},        {true, 0},
      {L"12 kg", 12}, {L"abc", 0}, {Value(), 0}, {1e300, 0},   {Value::null(), 0},
  };
  for (const auto& row : rows) {
    const Value byte = converted(L"pvCByte", row.value);
    EXPECT_EQ(byte.vt, VT_UI1);
    EXPECT_EQ(byte, row.byte) << testing::PrintToString(row.value);
  }
}

TEST_F(Conversions, ToIntegerRoundsHalfToEvenAndIsZeroOutOfRange) {
  const struct {
    Value value;
    int integer;
  } rows[] = {
      {L"2,5", 2},    {L"3,5", 4},      {3.5, 4},     {-2.5, -2},         {-3.5, -4},
      {L"40000", 0},  {32767.4, 32767}, {32767.5, 0}, {-32768, -32768},   {-32768.5, -32768},
      {-32769, 0},    {true, -1},       {false, 0},   {L"", 0},           {Value(), 0},
      {L"12 kg", 12}, {L"abc", 0},      {1e300, 0},   {Value::null(), 0}, {L"1e3", 1000},
      {utility, 0},
  };
  for (const auto& row : rows) {
    const Value integer = converted(L"pvCInt", row.value);
    EXPECT_EQ(integer.vt, VT_I2);
    EXPECT_EQ(integer, row.integer) << testing::PrintToString(row.value);
  }
}

TEST_F(Conversions, ToLongRoundsHalfToEvenAndIsZeroOutOfRange) {
  const struct {
    Value value;
    long number;
  } rows[] = {
      {L"40000", 40000},
      {2147483647.4, 2147483647L},
      {2147483647.5, 0},
      {-2147483648.5, LONG_MIN},
      {-2147483649.0, 0},
      {L"-2147483648", LONG_MIN},
      {0.5, 0},
      {1.5, 2},
      {L"-2,5", -2},
      {true, -1},
      {L"", 0},
      {1e300, 0},
      {Value::nothing(), 0},
  };
  for (const auto& row : rows) {
    const Value number = converted(L"pvCLng", row.value);
    EXPECT_EQ(number.vt, VT_I4);
    EXPECT_EQ(number, row.number) << testing::PrintToString(row.value);
  }
}

TEST_F(Conversions, ToDoubleTakesEitherSeparator) {
  EXPECT_EQ(converted(L"pvCDbl", L"1,25"), 1.25);
  EXPECT_EQ(converted(L"pvCDbl", L"1.25"), 1.25);
  EXPECT_EQ(converted(L"pvCDbl", L"").vt, VT_R8);
  EXPECT_EQ(converted(L"pvCDbl", L""), 0.0);
  EXPECT_EQ(converted(L"pvCDbl", true), -1.0);
  EXPECT_EQ(converted(L"pvCDbl", L"12 kg"), 12.0);
  EXPECT_EQ(converted(L"pvCDbl", 0.1F), 0.1);
  EXPECT_EQ(converted(L"pvCDbl", L"1e400"), 0.0);
  EXPECT_EQ(converted(L"pvCDbl", Value::null()), 0.0);
}

TEST_F(Conversions, ToSingleTakesEitherSeparator) {
  EXPECT_EQ(converted(L"pvCSng", L"1,25").vt, VT_R4);
  EXPECT_EQ(converted(L"pvCSng", L"1,25"), 1.25F);
  EXPECT_EQ(converted(L"pvCSng", L"0.1"), 0.1F);
  EXPECT_EQ(converted(L"pvCSng", true), -1.0F);
  EXPECT_EQ(converted(L"pvCSng", L"abc"), 0.0F);
  EXPECT_EQ(converted(L"pvCSng", 1e-50), 0.0F);
  EXPECT_EQ(converted(L"pvCSng", L"-3.4e38"), -3.4e38F);
  EXPECT_EQ(converted(L"pvCSng", L"1e400"), 0.0F) << "its number text is 0";
}

TEST_F(Conversions, ToSingleOverflows) {
  for (const Value& value : {Value(1e39), Value(-1e39), Value(L"3,5e38")}) {
    const Outcome outcome = utility.try_call(L"pvCSng", value);
    EXPECT_EQ(outcome.number(), 6) << testing::PrintToString(value);
    EXPECT_EQ(outcome.source, L"pvItems32.CUtility");
    EXPECT_NE(outcome.description.find(L"pvCSng"), std::wstring::npos);
  }
}

TEST_F(Conversions, ToBooleanIsThePlatforms) {
  for (const Value& value : {Value(true), Value(1), Value(-1), Value(0.1), Value(L"True"),
                             Value(L"true"), Value(L"-1"), Value(L"7")}) {
    EXPECT_EQ(converted(L"pvCBool", value), true) << testing::PrintToString(value);
  }
  for (const Value& value :
       {Value(false), Value(0), Value(0.0), Value(L"False"), Value(L"0"), Value()}) {
    EXPECT_EQ(converted(L"pvCBool", value), false) << testing::PrintToString(value);
  }
}

TEST_F(Conversions, ToBooleanIsFalseForWhatIsNone) {
  for (const Value& value : {Value(L"abc"), Value(L""), Value(L"12 kg"), Value::null(),
                             Value::nothing(), Value(utility), unknown_error()}) {
    EXPECT_EQ(converted(L"pvCBool", value), false) << testing::PrintToString(value);
  }
}

TEST_F(Conversions, ToStringIsThePlatforms) {
  EXPECT_EQ(converted(L"pvCStr", L""), L"");
  EXPECT_EQ(converted(L"pvCStr", Value()), L"");
  EXPECT_EQ(converted(L"pvCStr", 5), L"5");
  EXPECT_EQ(converted(L"pvCStr", -2.5), in_user_locale(L"-2.5"));
  EXPECT_EQ(converted(L"pvCStr", 2.5F), in_user_locale(L"2.5"));
  EXPECT_EQ(converted(L"pvCStr", true), L"True");
  EXPECT_EQ(converted(L"pvCStr", false), L"False");
}

TEST_F(Conversions, ToStringKeepsTextAsItIs) {
  const std::wstring text(L" Ω\0é\r\n2,5 ", 11);
  EXPECT_EQ(converted(L"pvCStr", text), text);
  Value variable(text);
  EXPECT_EQ(converted(L"pvCStr", by_ref(variable)), text);
  EXPECT_EQ(converted(L"pvCStr", in_user_locale(L"2.50")), in_user_locale(L"2.50"));
}

TEST_F(Conversions, NullToStringIsAnError) {
  const Outcome outcome = utility.try_call(L"pvCStr", Value::null());
  EXPECT_EQ(outcome.number(), 94);
  EXPECT_EQ(outcome.source, L"pvItems32.CUtility");
  EXPECT_FALSE(outcome.description.empty());
  Value variable = Value::null();
  EXPECT_EQ(utility.try_call(L"pvCStr", by_ref(variable)).number(), 94);
}

TEST_F(Conversions, ObjectsAndErrorsToStringAreErrors) {
  EXPECT_EQ(utility.try_call(L"pvCStr", unknown_error()).number(), 13);
  EXPECT_FALSE(utility.try_call(L"pvCStr", utility).worked());
  EXPECT_FALSE(utility.try_call(L"pvCStr", Value::nothing()).worked());
}

TEST_F(Conversions, ToVariantIsACopy) {
  for (const Value& value :
       {Value(5), Value(short{5}), Value(2.5), Value(2.5F), Value(true),
        Value(std::wstring(L"a\0b", 3)), Value(), Value::null(), Value(utility), Value::nothing(),
        unknown_error(), as_type(VT_CY, 2.5)}) {
    const Value copy = converted(L"pvCVar", value);
    EXPECT_EQ(copy.vt, value.vt);
    EXPECT_EQ(copy, value);
  }
}

TEST_F(Conversions, ToVariantFollowsReferences) {
  Value variable(L"text");
  const Value copy = converted(L"pvCVar", by_ref(variable));
  EXPECT_EQ(copy.vt, VT_BSTR);
  EXPECT_EQ(copy, L"text");
  short number = 3;
  EXPECT_EQ(converted(L"pvCVar", by_ref(number)).vt, VT_I2);
}

TEST_F(Conversions, ToVariantCopiesArrays) {
  Value array;
  array.parray = SafeArrayCreateVector(VT_VARIANT, 0, 2);
  array.vt = VT_ARRAY | VT_VARIANT;
  Value text(L"inside");
  LONG index = 1;
  ASSERT_EQ(SafeArrayPutElement(array.parray, &index, &text), S_OK);
  const Value copy = converted(L"pvCVar", array);
  ASSERT_EQ(copy.vt, VT_ARRAY | VT_VARIANT);
  EXPECT_NE(copy.parray, array.parray);
  Value element;
  ASSERT_EQ(SafeArrayGetElement(copy.parray, &index, &element), S_OK);
  EXPECT_EQ(element, L"inside");
}

TEST_F(Conversions, NeedTheirValue) {
  for (const wchar_t* member : {L"pvCBool", L"pvCByte", L"pvCInt", L"pvCLng", L"pvCSng", L"pvCDbl",
                                L"pvCStr", L"pvCNumber", L"pvCVar", L"IsNumber"}) {
    EXPECT_FALSE(utility.try_call(member).worked()) << printable(member);
    EXPECT_FALSE(utility.try_call(member, 1, 2).worked()) << printable(member);
  }
}

TEST_F(Conversions, IsNumberTakesEitherSeparator) {
  for (const Value& value : {Value(L"1,5"), Value(L"1.5"), Value(L"-3"), Value(L"0,5"), Value(5),
                             Value(2.5), Value(2.5F), Value(L"1e5"), Value(L" 12 ")}) {
    EXPECT_EQ(converted(L"IsNumber", value), true) << testing::PrintToString(value);
  }
}

TEST_F(Conversions, IsNumberIsFalseForOtherValues) {
  for (const Value& value : {Value(L"abc"), Value(L"12 kg"), Value(L""), Value(), Value::null(),
                             Value::nothing(), Value(utility), Value(L"1-2"), Value(L"?")}) {
    EXPECT_EQ(converted(L"IsNumber", value), false) << testing::PrintToString(value);
  }
}

TEST_F(Conversions, IsNumberLeavesTheVariableAsItIs) {
  for (const wchar_t* text : {L"1,5", L"1.5"}) {
    Value variable(text);
    EXPECT_EQ(converted(L"IsNumber", by_ref(variable)), true);
    EXPECT_EQ(variable, text);
  }
}

TEST_F(Conversions, TrimKeepsLeadingBlanksAndDropsTheOthers) {
  const struct {
    const wchar_t* text;
    const wchar_t* trimmed;
  } rows[] = {
      {L"", L""},
      {L"  a b c ", L"  abc"},
      {L"abc", L"abc"},
      {L"   ", L"   "},
      {L"a b", L"ab"},
      {L" a", L" a"},
      {L"a ", L"a"},
      {L"\t a b", L"\tab"},
      {L" é Ω ", L" éΩ"},
      {L"a\t b", L"a\tb"},
      {L"a\u00A0 b", L"a\u00A0b"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(utility.call(L"pvTrim", row.text), row.trimmed) << printable(row.text);
  }
  EXPECT_EQ(utility.call(L"pvTrim", std::wstring(L" a \0 b", 6)), std::wstring(L" a\0b", 4));
}

}  // namespace
}  // namespace pv::test
