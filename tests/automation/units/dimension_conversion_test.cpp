// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Base values as text in engineering units, and back.

#include <gtest/gtest.h>

#include "pvItems32.h"
#include "tests/automation/units/dimension_support.h"

namespace pv::test {
namespace {

constexpr int kValueOnly = 0;
constexpr int kUnitOnly = 1;
constexpr int kValueAndUnit = 2;

struct ToUnit : testing::Test {
  const Object dimensions = flow_and_temperature();

  template <class... A>
  Value shown(const A&... arguments) const {
    return dimensions.call(L"ToUnit", arguments...);
  }
};

TEST_F(ToUnit, ShowsAsManyDecimalsAsTheValueNeeds) {
  EXPECT_EQ(shown(10, 1, 1), L"36");
  EXPECT_EQ(shown(10.1, 1, 1), in_user_locale(L"36.36"));
  EXPECT_EQ(shown(0.0, 2, 2), in_user_locale(L"-273.15"));
  EXPECT_EQ(shown(1e20, 1, 2), L"1E+20");
}

TEST_F(ToUnit, ShowsExactlyTheDecimalsAskedFor) {
  EXPECT_EQ(shown(10, 1, 1, 0), L"36");
  EXPECT_EQ(shown(10, 1, 1, 1), in_user_locale(L"36.0"));
  EXPECT_EQ(shown(10, 1, 1, 2), in_user_locale(L"36.00"));
  EXPECT_EQ(shown(10, 1, 1, 8), in_user_locale(L"36.00000000"));
}

TEST_F(ToUnit, KeepsADigitBeforeTheSeparator) {
  EXPECT_EQ(shown(0.125, 1, 2, 3), in_user_locale(L"0.125"));
  EXPECT_EQ(shown(-0.5, 1, 2, 2), in_user_locale(L"-0.50"));
  EXPECT_EQ(shown(0, 1, 2, 3), in_user_locale(L"0.000"));
}

TEST_F(ToUnit, RoundsToTheDecimals) {
  EXPECT_EQ(shown(1.26, 1, 2, 1), in_user_locale(L"1.3"));
  EXPECT_EQ(shown(0.99, 1, 2, 0), L"1");
  EXPECT_EQ(shown(-0.6, 1, 2, 0), L"-1");
  EXPECT_EQ(shown(12.5, 1, 2, 3), in_user_locale(L"12.500"));
  EXPECT_EQ(shown(1234567.891, 1, 2, 2), in_user_locale(L"1234567.89"));
}

TEST_F(ToUnit, NegativeDecimalsAreLikeNone) {
  for (const int decimals : {-1, -2, -5, -32768}) {
    EXPECT_EQ(shown(10.1, 1, 1, decimals), in_user_locale(L"36.36")) << decimals;
  }
  EXPECT_EQ(shown(10.1, 1, 1, Value::missing()), in_user_locale(L"36.36"));
}

TEST_F(ToUnit, DecimalsThatAreNoNumberAreLikeNone) {
  EXPECT_EQ(shown(10.1, 1, 1, L"abc"), in_user_locale(L"36.36"));
  EXPECT_EQ(shown(10.1, 1, 1, Value::null()), in_user_locale(L"36.36"));
}

TEST_F(ToUnit, DecimalsMayBeOfAnyType) {
  EXPECT_EQ(shown(10, 1, 1, L"2"), in_user_locale(L"36.00"));
  EXPECT_EQ(shown(10, 1, 1, 2.0), in_user_locale(L"36.00"));
  EXPECT_EQ(shown(10, 1, 1, short{2}), in_user_locale(L"36.00"));
}

TEST_F(ToUnit, TooManyDecimalsAreCutInAScriptsVariable) {
  Value decimals(12);
  EXPECT_EQ(shown(10, 1, 1, by_ref(decimals)), in_user_locale(L"36.00000000"));
  EXPECT_EQ(decimals, 8);
}

TEST_F(ToUnit, TooManyDecimalsAreCutInATypedVariable) {
  short narrow = 12;
  EXPECT_EQ(shown(10, 1, 1, by_ref(narrow)), in_user_locale(L"36.00000000"));
  EXPECT_EQ(narrow, 8);
  long wide = 70000;
  shown(10, 1, 1, by_ref(wide));
  EXPECT_EQ(wide, 8);
  double real = 1e12;
  EXPECT_EQ(shown(10, 1, 1, by_ref(real)), in_user_locale(L"36.00000000"));
  EXPECT_EQ(real, 8.0);
}

TEST_F(ToUnit, TooManyDecimalsAreCutInTheVariableOfACompiledCaller) {
  const auto direct = query<_CDimensions>(dimensions.get());
  short variable = 12;
  VARIANT decimals = by_ref(variable);
  BSTR text = nullptr;
  EXPECT_EQ(
      direct->ToUnit(Value(10), Value(1), Value(1), &decimals, smValueOnly, VARIANT_FALSE, &text),
      S_OK);
  EXPECT_EQ(printable(view_of(text)), printable(in_user_locale(L"36.00000000")));
  EXPECT_EQ(variable, 8);
  EXPECT_EQ(decimals.vt, VT_BYREF | VT_I2);
  SysFreeString(text);
}

TEST_F(ToUnit, TooManyDecimalsInATextAreCutThere) {
  Value decimals(L"9");
  EXPECT_EQ(shown(10, 1, 1, by_ref(decimals)), in_user_locale(L"36.00000000"));
  EXPECT_EQ(decimals, 8);
  BSTR text = SysAllocString(L"9");
  shown(10, 1, 1, by_ref(text));
  EXPECT_EQ(Value(std::wstring_view(text)), L"8");
  SysFreeString(text);
}

TEST_F(ToUnit, TooManyDecimalsAsALiteralAreCutForTheCallOnly) {
  EXPECT_EQ(shown(10, 1, 1, 12), in_user_locale(L"36.00000000"));
  EXPECT_EQ(shown(10, 1, 1, 9), in_user_locale(L"36.00000000"));
}

TEST_F(ToUnit, DecimalsThatCanBeShownStayAsTheyAre) {
  for (const int decimals : {-5, -1, 0, 3, 8}) {
    Value variable(decimals);
    shown(10, 1, 1, by_ref(variable));
    EXPECT_EQ(variable, decimals);
  }
}

TEST_F(ToUnit, DecimalsAreCutWhateverElseHappens) {
  Value decimals(12);
  shown(10, 1, 1, by_ref(decimals), kUnitOnly);
  EXPECT_EQ(decimals, 8);
  decimals = Value(12);
  shown(10, 9, 1, by_ref(decimals));
  EXPECT_EQ(decimals, 8);
}

TEST_F(ToUnit, ShowsTheUnitAloneOrBehindTheValue) {
  EXPECT_EQ(shown(10, 1, 1, -1, kUnitOnly), L"m3/h");
  EXPECT_EQ(shown(10, 1, 1, -1, kValueAndUnit), L"36 m3/h");
  EXPECT_EQ(shown(0, 2, 2, 1, kValueAndUnit), in_user_locale(L"-273.2 °C"));
}

TEST_F(ToUnit, UnknownModeShowsNothing) {
  for (const int mode : {3, -1, 100000}) {
    EXPECT_EQ(shown(10, 1, 1, -1, mode), L"") << mode;
    EXPECT_EQ(shown(10, 1, 1, -1, mode, true), L"") << mode;
  }
}

TEST_F(ToUnit, DirtyValueIsAQuestionMark) {
  EXPECT_EQ(shown(10, 1, 1, 2, kValueOnly, true), L"?");
  EXPECT_EQ(shown(10, 1, 1, 2, kValueAndUnit, true), L"? m3/h");
  EXPECT_EQ(shown(10, 1, 1, 2, kUnitOnly, true), L"m3/h");
}

TEST_F(ToUnit, DirtyValueNeedNotBeANumber) {
  EXPECT_EQ(shown(L"abc", 1, 1, 2, kValueOnly, true), L"?");
  EXPECT_EQ(shown(Value::null(), 1, 1, 2, kValueAndUnit, true), L"? m3/h");
}

TEST_F(ToUnit, UnknownUnitIsTheDimensionsFirst) {
  for (const Value& unit : {Value(3), Value(0), Value(-1), Value(L"kg"), Value(L"2"), Value(),
                            Value::null(), Value::nothing()}) {
    EXPECT_EQ(shown(10, 1, unit, -1, kValueAndUnit), L"36 m3/h") << testing::PrintToString(unit);
  }
}

TEST_F(ToUnit, UnknownDimensionShowsNothing) {
  for (const Value& dimension : {Value(3), Value(0), Value(L"Mass"), Value(L"1"), Value::null()}) {
    EXPECT_EQ(shown(10, dimension, 1), L"") << testing::PrintToString(dimension);
    EXPECT_EQ(shown(10, dimension, 1, -1, kUnitOnly), L"");
    EXPECT_EQ(shown(10, dimension, 1, -1, kValueAndUnit), L"");
  }
}

TEST_F(ToUnit, UnknownDimensionIsNotTheNinth) {
  for (int i = 3; i <= 9; ++i) {
    add_dimension(dimensions, (L"D" + std::to_wstring(i)).c_str(), {{L"one", 1, 0}});
  }
  EXPECT_EQ(shown(10, 9, 1), L"10");
  EXPECT_EQ(shown(10, 99, 1), L"");
}

TEST_F(ToUnit, DirtyValueOfAnUnknownDimensionIsAQuestionMarkOnlyWithoutUnit) {
  EXPECT_EQ(shown(10, 3, 1, -1, kValueOnly, true), L"?");
  EXPECT_EQ(shown(10, 3, 1, -1, kValueAndUnit, true), L"");
  EXPECT_EQ(shown(10, 3, 1, -1, kUnitOnly, true), L"");
}

TEST_F(ToUnit, DimensionWithoutUnitsShowsNothing) {
  dimensions.call(L"Add", L"Empty", L"Empty", Value::nothing());
  EXPECT_EQ(shown(10, L"Empty", 1), L"");
  dimensions.get_object(L"Item", 1).set(L"Units", Value::nothing());
  EXPECT_EQ(shown(10, 1, 1), L"");
}

TEST_F(ToUnit, FindsByKeyWithoutRegardToCase) {
  EXPECT_EQ(shown(300, L"TEMPERATURE", L"°c", 2), in_user_locale(L"26.85"));
}

TEST_F(ToUnit, IdentifiersMayComeByReferenceAndAsAnyNumber) {
  Value dimension(2.0), unit(L"°C");
  EXPECT_EQ(shown(300, by_ref(dimension), by_ref(unit), 2), in_user_locale(L"26.85"));
  EXPECT_EQ(shown(300, as_type(VT_UI1, 2), as_type(VT_CY, 2), 2), in_user_locale(L"26.85"));
}

TEST_F(ToUnit, ValueMayBeOfAnyType) {
  EXPECT_EQ(shown(short{10}, 1, 1), L"36");
  EXPECT_EQ(shown(2.5F, 1, 2), in_user_locale(L"2.5"));
  EXPECT_EQ(shown(L"10", 1, 1), L"36");
  EXPECT_EQ(shown(in_user_locale(L"2.5"), 1, 2), in_user_locale(L"2.5"));
  EXPECT_EQ(shown(true, 1, 2), L"-1");
  EXPECT_EQ(shown(Value(), 2, 2), in_user_locale(L"-273.15"));
  Value variable(10);
  EXPECT_EQ(shown(by_ref(variable), 1, 1), L"36");
}

TEST_F(ToUnit, ValueThatIsNoNumberShowsNothing) {
  EXPECT_EQ(shown(L"abc", 1, 1), L"");
  EXPECT_EQ(shown(L"abc", 1, 1, -1, kValueAndUnit), L"");
  EXPECT_EQ(shown(L"abc", 1, 1, -1, kUnitOnly), L"m3/h");
  EXPECT_EQ(shown(dimensions, 1, 1), L"");
}

TEST_F(ToUnit, ValueBeyondTheRangeShowsNothing) { EXPECT_EQ(shown(1.7e308, 1, 1), L""); }

TEST_F(ToUnit, NeedsValueDimensionAndUnit) {
  EXPECT_EQ(dimensions.try_call(L"ToUnit", 10, 1).result, DISP_E_BADPARAMCOUNT);
}

TEST(ToBase, SubtractsTheOffsetAndDividesByTheSlope) {
  const Object dimensions = flow_and_temperature();
  const Value base = dimensions.call(L"ToBase", 36, 1, 1);
  EXPECT_EQ(base.vt, VT_R8);
  EXPECT_EQ(base, 10.0);
  EXPECT_EQ(dimensions.call(L"ToBase", -273.15, 2, L"°C"), 0.0);
}

TEST(ToBase, SlopeZeroIsLikeOne) {
  const Object dimensions = make_dimensions();
  add_dimension(dimensions, L"Flat", {{L"u", 0, 2}});
  EXPECT_EQ(dimensions.call(L"ToBase", 5, 1, 1), 3.0);
}

TEST(ToBase, UnknownUnitIsTheDimensionsFirst) {
  EXPECT_EQ(flow_and_temperature().call(L"ToBase", 36, 1, 7), 10.0);
}

TEST(ToBase, UnknownDimensionGivesEmpty) {
  EXPECT_EQ(flow_and_temperature().call(L"ToBase", 36, 3, 1), Value());
}

TEST(ToBase, ValueThatIsNoNumberGivesEmpty) {
  const Object dimensions = flow_and_temperature();
  EXPECT_EQ(dimensions.call(L"ToBase", L"abc", 1, 1), Value());
  EXPECT_EQ(dimensions.call(L"ToBase", Value::nothing(), 1, 1), Value());
}

TEST(ToBase, ReadsTextAsTheUserWritesNumbers) {
  const Object dimensions = flow_and_temperature();
  EXPECT_EQ(dimensions.call(L"ToBase", in_user_locale(L"2.5"), 1, 2), 2.5);
}

TEST(ToBase, UndoesToUnit) {
  const Object dimensions = flow_and_temperature();
  for (const double base : {0.0, 1.5, -20.25, 1e6}) {
    const Value text = dimensions.call(L"ToUnit", base, 2, 2);
    EXPECT_NEAR(dimensions.call(L"ToBase", text, 2, 2).real(), base, 1e-9);
  }
}

TEST(GetUnitObject, GivesTheUnitItself) {
  const Object dimensions = flow_and_temperature();
  const Object units = dimensions.get_object(L"Item", 1).get_object(L"Units");
  EXPECT_EQ(dimensions.call(L"GetUnitObject", 1, 2), units.get(L"Item", 2));
  EXPECT_EQ(dimensions.call(L"GetUnitObject", L"flow", L"L/S"), units.get(L"Item", 2));
}

TEST(GetUnitObject, GivesTheFirstForAnUnknownUnit) {
  const Object dimensions = flow_and_temperature();
  const Object units = dimensions.get_object(L"Item", 1).get_object(L"Units");
  EXPECT_EQ(dimensions.call(L"GetUnitObject", 1, 3), units.get(L"Item", 1));
  EXPECT_EQ(dimensions.call(L"GetUnitObject", 1, Value::null()), units.get(L"Item", 1));
}

TEST(GetUnitObject, GivesNothingForAnUnknownDimension) {
  const Object dimensions = flow_and_temperature();
  EXPECT_TRUE(dimensions.call(L"GetUnitObject", 3, 1).is_nothing());
  EXPECT_TRUE(dimensions.call(L"GetUnitObject", L"Mass", 1).is_nothing());
  EXPECT_TRUE(make_dimensions().call(L"GetUnitObject", 1, 1).is_nothing());
}

}  // namespace
}  // namespace pv::test
