// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/sample_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <string_view>

#include "tests/support/module.h"

namespace pv::test {
namespace {

// Longer ones overrun the buffers of Wine's private profile functions when they are file names.
constexpr std::size_t kLongText = 200;

std::wstring file_name() { return scratch_folder() + L"sample.txt"; }

std::vector<Value> numbers(VARTYPE type, std::initializer_list<double> values) {
  std::vector<Value> samples;
  for (double value : values) samples.push_back(with_type(type, value));
  return samples;
}

std::vector<Value> texts() {
  Value null_text;
  null_text.vt = VT_BSTR;
  using namespace std::string_view_literals;
  return {Value(L""), null_text, Value(file_name()),
          Value(std::wstring_view(L"a\0b;|\x150\xD83D"sv)), Value(std::wstring(kLongText, L'x'))};
}

}  // namespace

Value with_type(VARTYPE type, double number) {
  Value value(number);
  Value typed;
  if (FAILED(VariantChangeType(&typed, &value, 0, type))) typed.vt = type;
  return typed;
}

Value array_of(VARTYPE element, ULONG length) {
  Value value;
  value.parray = SafeArrayCreateVector(element, 0, length);
  value.vt = static_cast<VARTYPE>(VT_ARRAY | element);
  return value;
}

Value usual_value(VARTYPE type) {
  switch (type) {
    case VT_BSTR:
      return Value(file_name());
    case VT_BOOL:
      return Value(true);
    case VT_R4:
    case VT_R8:
    case VT_DATE:
      return Value(2.5);
    default:
      return Value(1);
  }
}

std::vector<Value> limit_values(VARTYPE type) {
  switch (type) {
    case VT_BSTR:
      return texts();
    case VT_BOOL:
      return numbers(VT_BOOL, {0, -1});
    case VT_UI1:
      return numbers(VT_UI1, {0, 1, 255});
    case VT_I2:
      return numbers(VT_I2, {0, 1, -1, 2, 32767, -32768});
    case VT_I4:
      return numbers(VT_I4, {0, 1, -1, 2, 2147483647.0, -2147483648.0});
    case VT_R4:
      return {Value(0.0f), Value(-1.5f), Value(3e38f), Value(std::nanf(""))};
    case VT_R8:
    case VT_DATE:
      return numbers(type, {0, -1.5, 1e300});
    default:
      ADD_FAILURE() << "there are no values of type " << type;
      return {Value()};
  }
}

std::vector<Value> values_of_all_types(const Ref<IDispatch>& object) {
  Value error;
  error.vt = VT_ERROR;
  error.scode = E_FAIL;
  return {Value(),      Value(1),      Value(L"text"),    Value(0),
          Value(-1),    Value(999999), Value(1e300),      Value(2.5f),
          Value(true),  Value(L""),    Value(L"1"),       Value::null(),
          Value(L"\0"), error,         Value::nothing(),  Value(object),
          Value(-0.5),  Value(NAN),    array_of(VT_I4, 3)};
}

}  // namespace pv::test
