// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Every member of every class, called from a free thread as it is called directly: the answers are
// the same, through the vtable and by name.

#include <algorithm>
#include <sstream>

#include "tests/abi/sweep.h"
#include "tests/apartments/apartment.h"
#include "tests/apartments/platform.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/raw_call.h"
#include "tests/support/silent_streams.h"

namespace pv::test {
namespace {

/// What a call answered; of an object only that there is one.
std::string text_of(const Value& value) {
  if (value.is_object()) return value.is_nothing() ? "nothing" : "an object";
  return testing::PrintToString(value);
}

class FromAFreeThread : public ClassTest {
 protected:
  enum class How { kVtable, kName };

  /// A new object's answers to a call of each member; calls of members that are left out are empty.
  std::vector<std::string> answers(How how, const std::vector<bool>& left_out) const {
    const SilentStreams silence;
    std::vector<std::string> all;
    for (std::size_t i = 0; i < functions().size(); ++i) {
      all.push_back(left_out[i] ? "" : answer(how, functions()[i]));
    }
    return all;
  }

  std::string answer(How how, const FunctionInfo& function) const {
    std::ostringstream text;
    text << printable(function.name()) << ": " << std::hex;
    if (how == How::kVtable) {
      RawCall call(tested().interface_type, function, values_for(function));
      const HRESULT result = call.on(create_raw().get());
      text << result << std::dec;
      for (const Value& input : call.inputs()) text << " " << text_of(input);
      if (SUCCEEDED(result)) text << " gives " << text_of(call.take_result());
    } else {
      std::vector<Value> values = values_for(function);
      std::reverse(values.begin(), values.end());
      const std::vector<VARIANT> passed(values.begin(), values.end());
      const DISPID new_value = DISPID_PROPERTYPUT;
      const Outcome outcome = create().invoke(function.description().memid,
                                              static_cast<WORD>(function.description().invkind),
                                              passed, {&new_value, function.is_put() ? 1u : 0u});
      text << outcome.result << " " << outcome.code << " " << printable(outcome.description)
           << " gives " << text_of(outcome.value);
    }
    return text.str();
  }

  // The second sample says more than the first, which is nothing, zero and the like.
  std::vector<Value> values_for(const FunctionInfo& function) const {
    std::vector<Value> values;
    for (const ParameterInfo& input : function.inputs()) values.push_back(samples_for(input)[1]);
    return values;
  }

  // Nobody answers windows in the hosting apartment, so members that open one are left out there.
  std::vector<bool> members_with_windows() const {
    std::vector<bool> found;
    for (const FunctionInfo& function : functions()) {
      const DialogPresser presser;
      const SilentStreams silence;
      answer(How::kName, function);
      found.push_back(presser.windows_seen() > 0);
    }
    return found;
  }

  void expect_the_same(How how) const {
    platform_keeps_class_objects();
    platform_keeps_arguments();
    const std::vector<bool> left_out = members_with_windows();
    const std::vector<std::string> expected = answers(how, left_out);
    on_thread(COINIT_MULTITHREADED, [&] {
      ASSERT_TRUE(is_proxy(create(), tested().clsid));
      EXPECT_EQ(answers(how, left_out), expected);
    });
  }
};

TEST_P(FromAFreeThread, EveryMemberIsCalledThroughTheVtable) {
  const LostByThePlatform lost;
  expect_the_same(How::kVtable);
}

TEST_P(FromAFreeThread, EveryMemberIsCalledByName) { expect_the_same(How::kName); }

INSTANTIATE_TEST_SUITE_P(Classes, FromAFreeThread, testing::ValuesIn(class_names()), class_name);

}  // namespace
}  // namespace pv::test
