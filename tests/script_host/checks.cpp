// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/checks.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "tests/script_host/lent_collection.h"
#include "tests/script_host/member_object.h"

namespace pv::test {
namespace {

using Arguments = MemberObject::Arguments;

std::wstring kind_of(const Value& value) {
  static const std::map<VARTYPE, std::wstring> names = {
      {VT_EMPTY, L"Empty"},     {VT_NULL, L"Null"},       {VT_I2, L"Integer"},
      {VT_I4, L"Long"},         {VT_R4, L"Single"},       {VT_R8, L"Double"},
      {VT_CY, L"Currency"},     {VT_DATE, L"Date"},       {VT_BSTR, L"String"},
      {VT_DISPATCH, L"Object"}, {VT_ERROR, L"Error"},     {VT_BOOL, L"Boolean"},
      {VT_VARIANT, L"Variant"}, {VT_DECIMAL, L"Decimal"}, {VT_UI1, L"Byte"}};
  const VARTYPE type = value.vt & VT_TYPEMASK;
  const auto name = names.find(type);
  const std::wstring text = name != names.end() ? name->second : std::to_wstring(type);
  return value.vt & VT_ARRAY ? text + L" array" : text;
}

// In the neutral locale: a point is the decimal separator.
Value converted(const Arguments& arguments, VARTYPE type) {
  Value given(required(arguments, 0)), result;
  if (FAILED(VariantChangeTypeEx(&result, &given, LOCALE_INVARIANT, 0, type))) {
    throw CallFailed("no value of this kind");
  }
  return result;
}

Value safe_array_of(const Arguments& elements) {
  Value array;
  array.vt = VT_ARRAY | VT_VARIANT;
  array.parray = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(elements.size()));
  for (LONG i = 0; i < static_cast<LONG>(elements.size()); ++i) {
    Value element = elements[static_cast<std::size_t>(i)];
    SafeArrayPutElement(array.parray, &i, &element);
  }
  return array;
}

Value call_named(const Arguments& arguments) {
  const Object object(required(arguments, 0));
  std::vector<std::wstring> words = {required(arguments, 1).text()};
  std::vector<VARIANT> values;
  for (std::size_t i = 2; i < arguments.size(); i += 2) {
    words.push_back(arguments[i].text());
    values.push_back(required(arguments, i + 1));
  }
  std::vector<LPOLESTR> names;
  for (std::wstring& word : words) names.push_back(word.data());
  std::vector<DISPID> ids(names.size());
  if (FAILED(object.get()->GetIDsOfNames(IID_NULL, names.data(), static_cast<UINT>(names.size()),
                                         LOCALE_USER_DEFAULT, ids.data()))) {
    throw CallFailed("no such names");
  }
  const Outcome outcome = object.invoke(ids[0], DISPATCH_METHOD | DISPATCH_PROPERTYGET, values,
                                        std::span(ids).subspan(1));
  if (!outcome.worked()) throw CallFailed("error " + std::to_string(outcome.number()));
  return outcome.value;
}

Value check(const Arguments& arguments) {
  const Value &actual = required(arguments, 0), &expected = required(arguments, 1);
  EXPECT_EQ(actual, expected);
  return actual == expected;
}

}  // namespace

NamedItem checks_of(ScriptHost& host, int& checks) {
  const auto lent = std::make_shared<LentEnumerators>();
  return {L"Test",
          new MemberObject({
              {L"Check",
               [&checks](const Arguments& a) {
                 ++checks;
                 return check(a);
               }},
              {L"KindOf", [](const Arguments& a) { return Value(kind_of(required(a, 0))); }},
              {L"DecimalOf", [](const Arguments& a) { return converted(a, VT_DECIMAL); }},
              {L"CurrencyOf", [](const Arguments& a) { return converted(a, VT_CY); }},
              {L"DateOf", [](const Arguments& a) { return converted(a, VT_DATE); }},
              {L"SafeArrayOf", safe_array_of},
              {L"CallNamed", call_named},
              {L"LentMembers",
               [lent](const Arguments& a) { return lent->lend(Object(required(a, 0))); }},
              {L"MissingEvents",
               [&host](const Arguments& a) {
                 return Value(host.missing_events(Object(required(a, 0))));
               }},
          }),
          true};
}

}  // namespace pv::test
