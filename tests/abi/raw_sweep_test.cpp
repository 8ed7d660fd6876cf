// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Every member of every class, called through its vtable as compiled clients do.

#include <sstream>

#include "tests/abi/sweep.h"
#include "tests/support/raw_call.h"
#include "tests/support/silent_streams.h"

namespace pv::test {
namespace {

class RawSweep : public ClassTest {
 protected:
  // The harmless values, and then each input through all of its samples.
  template <class Visit>
  void for_each_combination(const FunctionInfo& function, Visit&& visit) const {
    visit(harmless_values(function));
    const auto inputs = function.inputs();
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      const std::vector<Value> samples = samples_for(inputs[i]);
      for (std::size_t k = 1; k < samples.size(); ++k) {
        std::vector<Value> values = harmless_values(function);
        values[i] = samples[k];
        visit(std::move(values));
      }
    }
  }

  std::string text_of_call(const FunctionInfo& function, const std::vector<Value>& values) const {
    std::ostringstream text;
    text << GetParam() << "." << printable(function.name());
    for (const Value& value : values) {
      text << " " << testing::PrintToString(value).substr(0, 60);
    }
    return text.str();
  }
};

// Some members write to the file of a given number, which may be a standard stream.
HRESULT call_silently(RawCall& call, const Ref<IDispatch>& object) {
  const SilentStreams silence;
  return call.on(object.get());
}

void expect_error_information(HRESULT result) {
  if (result == static_cast<HRESULT>(0x800A0007)) return;  // no memory for a text either
  Ref<IErrorInfo> info;
  ASSERT_EQ(GetErrorInfo(0, info.put()), S_OK) << "no error information";
  BSTR source = nullptr, description = nullptr;
  info->GetSource(&source);
  info->GetDescription(&description);
  EXPECT_FALSE(view_of(source).empty());
  EXPECT_FALSE(view_of(description).empty());
  SysFreeString(source);
  SysFreeString(description);
}

TEST_P(RawSweep, NullPointerForTheResultIsRefused) {
  const Ref<IDispatch> object = create_raw();
  for (const FunctionInfo& function : functions()) {
    if (!function.has_result()) continue;
    SCOPED_TRACE(printable(function.name()));
    RawCall call(tested().interface_type, function, harmless_values(function));
    call.pass_null_result();
    EXPECT_EQ(call_silently(call, object), E_POINTER);
    EXPECT_EQ(references_of(object.get()), 1u);
  }
}

TEST_P(RawSweep, NullPointerForAByReferenceArgumentDoesNoHarm) {
  for (const FunctionInfo& function : functions()) {
    const auto inputs = function.inputs();
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      if (plain_type_of(inputs[i]).pointers == 0) continue;
      SCOPED_TRACE(printable(function.name()) + " argument " + std::to_string(i));
      const Ref<IDispatch> object = create_raw();
      RawCall call(tested().interface_type, function, harmless_values(function));
      call.pass_null(i);
      const HRESULT result = call_silently(call, object);
      if (!inputs[i].is_optional()) {
        EXPECT_EQ(result, E_POINTER);
      }
      EXPECT_EQ(call.fault_of_result(), "");
    }
  }
}

TEST_P(RawSweep, PoisonedResultsAreSetOrCleared) {
  for (const FunctionInfo& function : functions()) {
    for_each_combination(function, [&](const std::vector<Value>& values) {
      SCOPED_TRACE(text_of_call(function, values));
      const Ref<IDispatch> object = create_raw();
      RawCall call(tested().interface_type, function, values);
      const HRESULT result = call_silently(call, object);
      if (FAILED(result)) expect_error_information(result);
      EXPECT_EQ(call.fault_of_result(), "");
      EXPECT_EQ(references_of(object.get()), 1u);
    });
  }
}

TEST_P(RawSweep, ObjectsPassedInAreReleasedWithTheObject) {
  for (const FunctionInfo& function : functions()) {
    for (const ParameterInfo& parameter : function.inputs()) {
      const PlainType type = plain_type_of(parameter);
      const bool takes_object = type.is_interface() || type.type == VT_VARIANT;
      const Ref<IDispatch> passed =
          takes_object ? object_for(type.is_interface() ? type.iid : IID_IDispatch) : nullptr;
      if (!passed) continue;
      SCOPED_TRACE(printable(function.name()) + " " + printable(parameter.name));
      std::vector<Value> values;
      for (const ParameterInfo& input : function.inputs()) {
        values.push_back(input.name == parameter.name ? Value(passed) : samples_for(input).front());
      }
      {
        const Ref<IDispatch> object = create_raw();
        RawCall call(tested().interface_type, function, std::move(values));
        call_silently(call, object);
        EXPECT_EQ(call.fault_of_result(), "");
      }
      EXPECT_EQ(references_of(passed.get()), 1u);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Classes, RawSweep, testing::ValuesIn(class_names()), class_name);

}  // namespace
}  // namespace pv::test
