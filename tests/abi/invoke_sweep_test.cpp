// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Every member of every class, called late-bound with everything that must be refused. A refused
// call runs nothing and changes no reference count.

#include "tests/abi/sweep.h"
#include "tests/support/sample_values.h"

namespace pv::test {
namespace {

constexpr DISPID kUnknownName = 77;

class InvokeSweep : public ClassTest {
 protected:
  struct Given {
    std::vector<Value> values;  // in the order of the parameters
    std::vector<DISPID> extra;  // names of further arguments
  };

  // "Variables(2)" means the default member of the result: there surplus arguments have a use.
  bool passes_arguments_on(const FunctionInfo& function) const {
    return function.description().invkind == INVOKE_PROPERTYGET && function.inputs().empty() &&
           plain_type_of(function.parameters().back()).type == VT_DISPATCH;
  }

  static Outcome invoke(const Object& object, const FunctionInfo& function, const Given& given) {
    std::vector<VARIANT> reversed(given.values.rbegin(), given.values.rend());
    std::vector<DISPID> names;
    if (function.is_put() && !given.values.empty()) names.push_back(DISPID_PROPERTYPUT);
    for (DISPID name : given.extra) {
      reversed.insert(reversed.begin() + static_cast<std::ptrdiff_t>(names.size()), Value(1));
      names.push_back(name);
    }
    const auto flags = static_cast<WORD>(function.description().invkind);
    return object.invoke(function.description().memid, flags, reversed, names);
  }

  void expect_refused(const Object& object, const FunctionInfo& function, const Given& given,
                      HRESULT expected, UINT argument = Outcome::kNoArgument) const {
    const Outcome outcome = invoke(object, function, given);
    EXPECT_EQ(outcome.result, expected);
    EXPECT_EQ(outcome.argument, argument);
    EXPECT_EQ(outcome.value.vt, VT_EMPTY);
    EXPECT_EQ(references_of(object.get()), 1u);
  }

  template <class Check>
  void for_each_function(Check&& check) const {
    for (const FunctionInfo& function : functions()) {
      SCOPED_TRACE(printable(function.name()));
      check(create(), function);
    }
  }
};

TEST_P(InvokeSweep, EveryMemberIsFoundByNameWhateverItsCase) {
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    std::wstring name = function.name();
    EXPECT_EQ(object.id_of(name), function.description().memid);
    for (wchar_t& c : name) c = static_cast<wchar_t>(std::towupper(c));
    EXPECT_EQ(object.id_of(name), function.description().memid);
  });
}

TEST_P(InvokeSweep, EveryParameterIsFoundByName) {
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    for (std::size_t i = 0; i < function.inputs().size(); ++i) {
      std::wstring member = function.name(), parameter = function.parameters()[i].name;
      if (parameter.empty()) continue;  // the new value of a property
      LPOLESTR names[] = {member.data(), parameter.data()};
      DISPID ids[2] = {};
      EXPECT_EQ(object.get()->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids), S_OK);
      EXPECT_EQ(ids[1], static_cast<DISPID>(i)) << printable(parameter);
    }
  });
}

TEST_P(InvokeSweep, TooManyArgumentsAreRefused) {
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    std::vector<Value> values = harmless_values(function);
    if (passes_arguments_on(function)) {
      EXPECT_FALSE(invoke(object, function, {std::vector<Value>(9, Value(1)), {}}).worked());
      return;
    }
    values.insert(values.begin(), Value(1));
    const UINT surplus = function.is_put() ? 1u : 0u;
    expect_refused(object, function, {values, {}}, DISP_E_BADPARAMCOUNT, surplus);
  });
}

TEST_P(InvokeSweep, TooFewArgumentsAreRefused) {
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    bool any_mandatory = false;
    for (const ParameterInfo& input : function.inputs()) {
      any_mandatory = any_mandatory || !input.is_optional();
    }
    if (any_mandatory) expect_refused(object, function, {}, DISP_E_BADPARAMCOUNT);
  });
}

TEST_P(InvokeSweep, MissingMandatoryArgumentIsRefused) {
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    for (std::size_t i = 0; i < function.inputs().size(); ++i) {
      if (function.parameters()[i].is_optional()) continue;
      std::vector<Value> values = harmless_values(function);
      values[i] = Value::missing();
      expect_refused(object, function, {values, {}}, DISP_E_PARAMNOTOPTIONAL,
                     static_cast<UINT>(values.size() - 1 - i));
    }
  });
}

TEST_P(InvokeSweep, WrongTypesAreRefused) {
  const Value wrong = array_of(VT_I4, 1);
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    for (std::size_t i = 0; i < function.inputs().size(); ++i) {
      if (plain_type_of(function.parameters()[i]).type == VT_VARIANT) continue;
      std::vector<Value> values = harmless_values(function);
      values[i] = wrong;
      expect_refused(object, function, {values, {}}, DISP_E_TYPEMISMATCH,
                     static_cast<UINT>(values.size() - 1 - i));
    }
  });
}

TEST_P(InvokeSweep, ObjectsOfOtherClassesAreRefused) {
  const Value stranger(object_for(IID_IDispatch));
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    for (std::size_t i = 0; i < function.inputs().size(); ++i) {
      const PlainType type = plain_type_of(function.parameters()[i]);
      if (type.type != VT_DISPATCH || type.iid == IID_IDispatch) continue;
      std::vector<Value> values = harmless_values(function);
      values[i] = stranger;
      expect_refused(object, function, {values, {}}, DISP_E_TYPEMISMATCH,
                     static_cast<UINT>(values.size() - 1 - i));
    }
  });
}

TEST_P(InvokeSweep, UnknownNamesOfArgumentsAreRefused) {
  for_each_function([&](const Object& object, const FunctionInfo& function) {
    if (passes_arguments_on(function)) return;
    const UINT named = function.is_put() ? 1u : 0u;
    expect_refused(object, function, {harmless_values(function), {kUnknownName}},
                   DISP_E_PARAMNOTFOUND, named);
  });
}

TEST_P(InvokeSweep, UnknownIdsAreRefused) {
  const Object object = create();
  for (DISPID id : {DISPID(9999), DISPID(-1), DISPID(-999), DISPID(INT_MAX), DISPID(INT_MIN)}) {
    for (WORD flags :
         {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF}) {
      EXPECT_EQ(object.invoke(id, flags).result, DISP_E_MEMBERNOTFOUND) << id;
    }
  }
  EXPECT_EQ(references_of(object.get()), 1u);
}

INSTANTIATE_TEST_SUITE_P(Classes, InvokeSweep, testing::ValuesIn(class_names()), class_name);

}  // namespace
}  // namespace pv::test
