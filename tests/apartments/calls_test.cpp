// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Calls from free threads, through the vtable and by name, with arguments of every kind.

#include "pvItems32.h"
#include "tests/apartments/apartment.h"
#include "tests/support/members.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/sample_values.h"

namespace pv::test {
namespace {

/// Calls through the vtable lose memory on this platform, see the tests of its limits.
struct VtableCalls : FreeThreaded {
  const LostByThePlatform lost;
};
using CallsByName = FreeThreaded;
using Arrays = FreeThreaded;
using Enumeration = FreeThreaded;

template <class I>
Ref<I> create(std::wstring_view prog_id) {
  return Object::create(prog_id).as<I>();
}

Object example_dimensions() {
  const Object dimensions = Object::create(L"pvItems32.CDimensions");
  const Object units = Object::create(L"pvItems32.CUnits");
  units.call(L"Add", L"1", L"m", 1.0, 0.0);
  units.call(L"Add", L"2", L"mm", 1000.0, 0.0);
  dimensions.call(L"Add", L"1", L"Length", units);
  return dimensions;
}

Value number_array(std::initializer_list<double> numbers) {
  Value array = array_of(VT_R8, static_cast<ULONG>(numbers.size()));
  LONG index = 0;
  for (double number : numbers) {
    SafeArrayPutElement(array.parray, &index, &number);
    ++index;
  }
  return array;
}

std::vector<double> numbers_in(const Value& array) {
  std::vector<double> numbers;
  LONG last = -1;
  if (array.vt != (VT_ARRAY | VT_R8)) return numbers;
  SafeArrayGetUBound(array.parray, 1, &last);
  for (LONG i = 0; i <= last; ++i) {
    SafeArrayGetElement(array.parray, &i, &numbers.emplace_back());
  }
  return numbers;
}

TEST_F(VtableCalls, TakeAndGiveTextsNumbersAndObjects) {
  const auto items = create<_CItems>(L"pvItems32.CItems");
  const Bstr key(std::wstring(L"gr\x151\xDF"));
  Ref<_CItem> item;
  ASSERT_EQ(items->Add(key, -5, VARIANT_TRUE, 3, VARIANT_FALSE, VARIANT_TRUE, 0.5f, 8, nullptr,
                       item.put()),
            S_OK);
  Ref<_CVariables> variables;
  ASSERT_EQ(item->get_Variables(variables.put()), S_OK);
  Ref<_CVariable> variable;
  ASSERT_EQ(variables->Add(Bstr(L"1"), Bstr(L"Caption"), Bstr(L""), nullptr, 1, 2, 3, 4, Value(2.5),
                           Value(7), 4, variable.put()),
            S_OK);

  BSTR text = nullptr;
  EXPECT_EQ(item->get_Key(&text), S_OK);
  EXPECT_EQ(view_of(text), view_of(key));
  SysFreeString(text);
  short number = 0;
  EXPECT_EQ(item->get_ItemID(&number), S_OK);
  EXPECT_EQ(number, -5);
  float wait = 0;
  EXPECT_EQ(item->get_SmartWait(&wait), S_OK);
  EXPECT_EQ(wait, 0.5f);
  VARIANT_BOOL flag = 0;
  EXPECT_EQ(item->get_Restore(&flag), S_OK);
  EXPECT_EQ(flag, VARIANT_TRUE);
  Value value;
  EXPECT_EQ(item->get_Value(1, &value), S_OK);
  EXPECT_EQ(value, 2.5);
  long count = 0;
  EXPECT_EQ(items->get_AllItemCount(&count), S_OK);
  EXPECT_EQ(count, 1);
  Ref<_CItem> found;
  EXPECT_EQ(items->get_Item(Value(view_of(key)), found.put()), S_OK);
  EXPECT_EQ(Value(Ref<IDispatch>(found)), Value(Ref<IDispatch>(item)));
}

TEST_F(VtableCalls, TakeAndGiveDoubles) {
  const auto unit = create<_CUnit>(L"pvItems32.CUnit");
  EXPECT_EQ(unit->put_Slope(1.0 / 3), S_OK);
  double slope = 0;
  EXPECT_EQ(unit->get_Slope(&slope), S_OK);
  EXPECT_EQ(slope, 1.0 / 3);
}

TEST_F(VtableCalls, ErrorsComeWithTheirDescription) {
  const auto variables = create<_CVariables>(L"pvItems32.CVariables");
  Ref<_CVariable> none;
  EXPECT_EQ(variables->get_Item(Value(9), none.put()), static_cast<HRESULT>(0x800A0009));
  EXPECT_FALSE(none);
  const auto supported = query<ISupportErrorInfo>(variables.get());
  ASSERT_TRUE(supported);
  EXPECT_EQ(supported->InterfaceSupportsErrorInfo(__uuidof(_CVariables)), S_OK);
}

TEST_F(VtableCalls, ChangeArgumentsOfEveryKind) {
  const auto pictures = create<_CUtility>(L"pvItems32.CUtility");
  const auto utility = create<_CComUtility>(L"pvItems32.CComUtility");
  Value data(L"0A0B0C");
  Value chunk;
  EXPECT_EQ(utility->GetChunk(&data, 4, &chunk), S_OK);
  EXPECT_EQ(chunk, L"0A0B");
  EXPECT_EQ(data, L"0C");

  const auto dimensions = example_dimensions().as<_CDimensions>();
  Value decimals(99);
  BSTR text = nullptr;
  EXPECT_EQ(dimensions->ToUnit(Value(1.5), Value(1), Value(2), &decimals, smValueAndUnit,
                               VARIANT_FALSE, &text),
            S_OK);
  EXPECT_EQ(view_of(text).substr(0, 5), L"1500.");
  EXPECT_LT(decimals.number(), 99);
  SysFreeString(text);

  long height = -1, width = -1;
  EXPECT_EQ(pictures->GetPictureSize(0, 0, &height, &width), S_OK);
  EXPECT_EQ(height, 0);
  EXPECT_EQ(width, 0);
}

TEST_F(CallsByName, ChangeArgumentsOfEveryKind) {
  const Object utility = Object::create(L"pvItems32.CComUtility");
  Value data(L"0A0B0C");
  EXPECT_EQ(utility.call(L"GetChunk", by_ref(data), 2), L"0A");
  EXPECT_EQ(data, L"0B0C");

  Value decimals(99);
  example_dimensions().call(L"ToUnit", 1.5, 1, 2, by_ref(decimals), 2);
  EXPECT_LT(decimals.number(), 99);

  long height = -1;
  Value width(-1);
  Object::create(L"pvItems32.CUtility")
      .call(L"GetPictureSize", 0, 0, by_ref(height), by_ref(width));
  EXPECT_EQ(height, 0);
  EXPECT_EQ(width, 0);
}

TEST_F(CallsByName, TakeNamedAndOmittedArguments) {
  const Object item = Object::create(L"pvItems32.CItem");
  item.get_object(L"Variables").call(L"Add", L"1", L"One", L"", L"", 0, 0, 0, 0, 1.5, 0, 4);
  EXPECT_EQ(item.get(L"Value"), 1.5);
  EXPECT_EQ(item.get(L"Value", Value::missing()), 1.5);
  std::wstring member = L"Caption", parameter = L"vIndex";
  LPOLESTR names[] = {member.data(), parameter.data()};
  DISPID ids[2] = {};
  ASSERT_EQ(item.get()->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), S_OK);
  const std::vector<VARIANT> index{Value(1)};
  EXPECT_EQ(item.invoke(ids[0], DISPATCH_PROPERTYGET, index, {&ids[1], 1}).value, L"One");
}

TEST_F(CallsByName, ErrorsComeWithNumberSourceAndDescription) {
  const Object variables = Object::create(L"pvItems32.CVariables");
  const Outcome outcome = variables.try_get(L"Item", 9);
  EXPECT_EQ(outcome.number(), 9);
  EXPECT_EQ(outcome.source, L"pvItems32.CVariables");
  EXPECT_NE(outcome.description.find(L"CVariables.Item"), std::wstring::npos);
}

TEST_F(CallsByName, UnknownMembersAreRefused) {
  EXPECT_EQ(Object::create(L"pvItems32.CFile").id_of(L"NoSuchMember"), DISPID_UNKNOWN);
}

TEST_F(CallsByName, WrongNumbersOfArgumentsAreRefused) {
  EXPECT_EQ(Object::create(L"pvItems32.CVariables").try_call(L"Add", L"1").result,
            DISP_E_BADPARAMCOUNT);
}

TEST_F(CallsByName, ValuesOfEveryTypeStayWhatTheyAre) {
  const Object variable = Object::create(L"pvItems32.CVariable");
  for (const Value& value :
       {Value(), Value(1), Value(short{-2}), Value(2.5f), Value(1e300), Value(true), Value(L"text"),
        Value(L""), Value::null(), Value::nothing(), with_type(VT_DATE, 45000.5),
        with_type(VT_CY, 12.25), with_type(VT_UI1, 200), with_type(VT_DECIMAL, 3.5)}) {
    variable.put(L"Value", value);
    const Value back = variable.get(L"Value");
    EXPECT_EQ(back.vt, value.vt);
    if (!value.is_nothing() && value.vt > VT_NULL) {
      EXPECT_EQ(to_text(back), to_text(value));
    }
  }
}

TEST_F(Arrays, AreStoredAndGivenBack) {
  const LostByThePlatform lost;
  const Value array = number_array({1.5, -2, 1e300});
  const Object variable = Object::create(L"pvItems32.CVariable");
  variable.put(L"Value", array);
  EXPECT_EQ(numbers_in(variable.get(L"Value")), (std::vector<double>{1.5, -2, 1e300}));

  const auto early = variable.as<_CVariable>();
  EXPECT_EQ(early->put_Value(number_array({4, 5})), S_OK);
  Value back;
  EXPECT_EQ(early->get_Value(&back), S_OK);
  EXPECT_EQ(numbers_in(back), (std::vector<double>{4, 5}));
  EXPECT_EQ(numbers_in(Object::create(L"pvItems32.CUtility").call(L"pvCVar", array)),
            numbers_in(array));
}

Object numbered_units(int count) {
  const Object units = Object::create(L"pvItems32.CUnits");
  for (int i = 1; i <= count; ++i) {
    const std::wstring key = std::to_wstring(i);
    units.call(L"Add", key, L"unit " + key, 1.0, 0.0);
  }
  return units;
}

TEST_F(Enumeration, VisitsEveryMemberInOrder) {
  EXPECT_EQ(texts_of(numbered_units(3)), (Texts{L"1", L"2", L"3"}));
}

TEST_F(Enumeration, GivesSeveralSkipsBeginsAnewAndIsCopied) {
  Object units = numbered_units(5);
  const Value held = units.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET).value;
  const auto members = query<IEnumVARIANT>(held.punkVal);
  ASSERT_TRUE(members);
  units.call(L"Clear");
  units = Object();

  const auto keys = [](const Ref<IEnumVARIANT>& from, ULONG wanted) {
    std::vector<Value> values(wanted);
    ULONG fetched = 0;
    from->Next(wanted, values.data(), &fetched);
    Texts texts;
    for (ULONG i = 0; i < fetched; ++i) texts.push_back(Object(values[i]).get(L"Key").text());
    return texts;
  };
  EXPECT_EQ(keys(members, 2), (Texts{L"1", L"2"}));
  Ref<IEnumVARIANT> copy;
  ASSERT_EQ(members->Clone(copy.put()), S_OK);
  EXPECT_EQ(members->Skip(2), S_OK);
  EXPECT_EQ(keys(members, 3), Texts{L"5"});
  EXPECT_EQ(keys(copy, 9), (Texts{L"3", L"4", L"5"}));
  EXPECT_EQ(members->Reset(), S_OK);
  EXPECT_EQ(keys(members, 1), Texts{L"1"});
}

}  // namespace
}  // namespace pv::test
