// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/memory/trial.h"

#include <gtest/gtest.h>

#include "com/module.h"
#include "tests/memory/failing_memory.h"
#include "tests/support/memory/allocation_spy.h"

namespace pv::test {
namespace {

constexpr long kMostAllocations = 1'000'000;
constexpr long kAllTried = 400;  // from here on by steps
constexpr long kOutOfMemory = 7;

/// A call, ready to be made without an allocation of its own.
class Call {
 public:
  Call(const Scene& scene, std::wstring_view member, WORD kind)
      : object_(scene.object),
        id_(object_.id_of(member)),
        kind_(kind),
        reversed_(scene.arguments.rbegin(), scene.arguments.rend()) {
    if (id_ == DISPID_UNKNOWN) throw CallFailed("no such member: " + printable(member));
  }

  /// With the allocation of that number failing; tells whether there were so many.
  bool make(long failing) {
    const bool is_put = kind_ & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF);
    DISPID new_value = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{reversed_.data(), is_put ? &new_value : nullptr,
                          static_cast<UINT>(reversed_.size()), is_put ? 1u : 0u};
    EXCEPINFO exception{};
    bool reached = false;
    {
      const FailingMemory memory(failing);
      outcome_.result = object_.get()->Invoke(id_, IID_NULL, LOCALE_USER_DEFAULT, kind_,
                                              &parameters, &outcome_.value, &exception, nullptr);
      reached = memory.reached();
    }
    outcome_.code = exception.scode;
    for (BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile})
      SysFreeString(text);
    return reached;
  }
  const Outcome& outcome() const { return outcome_; }

 private:
  Object object_;
  DISPID id_;
  WORD kind_;
  std::vector<VARIANT> reversed_;
  Outcome outcome_;
};

/// What is seen of a call from outside.
struct Seen {
  bool reached = false;
  bool failed = false, out_of_memory = false;
  std::wstring before, after;  // of the scene
  std::wstring answer;
};

std::wstring portrait_of_scene(const Trial& trial, const Scene& scene) {
  std::wstring words = portrait_of(scene.object);
  for (const Value& argument : scene.arguments) words += L"; " + portrait_of(argument);
  return trial.surroundings ? words + L"; " + trial.surroundings() : words;
}

std::wstring answer_of(const Outcome& outcome) {
  if (!outcome.worked()) return L"error " + std::to_wstring(outcome.number());
  return portrait_of(outcome.value);
}

Seen call_with_failing(const Trial& trial, long failing) {
  Seen seen;
  const Scene scene = trial.prepare();
  seen.before = portrait_of_scene(trial, scene);
  Call call(scene, trial.member, trial.kind);
  seen.reached = call.make(failing);
  const Outcome& outcome = call.outcome();
  seen.out_of_memory = outcome.result == E_OUTOFMEMORY || outcome.number() == kOutOfMemory;
  seen.failed = !outcome.worked();
  seen.answer = answer_of(outcome);
  seen.after = portrait_of_scene(trial, scene);
  SetErrorInfo(0, nullptr);
  return seen;
}

}  // namespace

int fail_everywhere(const Trial& trial) {
  SCOPED_TRACE(printable(trial.member));
  call_with_failing(trial, 0);  // what is made once for all calls
  const Seen normal = call_with_failing(trial, 0);
  EXPECT_FALSE(normal.out_of_memory);
  if (trial.works) {
    EXPECT_FALSE(normal.failed) << printable(normal.answer);
  }
  int ran_out = 0;
  long failing = 1;
  for (bool reached = true; reached && !testing::Test::HasFailure();
       failing += failing < kAllTried ? 1 : trial.step) {
    SCOPED_TRACE(testing::Message() << "allocation " << failing);
    const long blocks = living_blocks();
    const long objects = living_objects();
    const AllocationBalance texts;
    {
      const Seen seen = call_with_failing(trial, failing);
      reached = seen.reached && failing < kMostAllocations;
      if (seen.out_of_memory) {
        ++ran_out;
        EXPECT_TRUE(seen.reached);
        EXPECT_EQ(printable(seen.after), printable(seen.before));
      } else {
        EXPECT_EQ(printable(seen.answer), printable(normal.answer));
        EXPECT_EQ(printable(seen.after), printable(normal.after));
      }
    }
    if (testing::Test::HasFailure()) break;  // the report of a failure allocates, too
    EXPECT_EQ(living_blocks(), blocks);
    EXPECT_EQ(living_objects(), objects);
    EXPECT_EQ(texts.difference(), 0) << texts.report();
  }
  EXPECT_LT(failing, kMostAllocations);
  return ran_out;
}

int fail_everywhere(const std::function<Object()>& object, const std::wstring& member,
                    const std::vector<Value>& arguments, WORD kind, long step) {
  return fail_everywhere({[&] { return Scene{object(), arguments}; }, member, kind, step});
}

}  // namespace pv::test
