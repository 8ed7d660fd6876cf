// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Hosts whose floating-point unit is set otherwise than the platform sets it.

#include <gtest/gtest.h>

#include <functional>

#include "pvItems32.h"
#include "tests/automation/txm/txm_support.h"
#include "tests/automation/units/dimension_support.h"
#include "tests/support/dispatch_object.h"
#include "tests/support/fake_object.h"
#include "tests/support/trapping_host.h"

namespace pv::test {
namespace {

// --- The traps of this process

volatile double zero = 0;
std::atomic<DWORD> trapping_thread{0};
std::atomic<DWORD> trapped{0};

LONG CALLBACK end_trapping_thread(EXCEPTION_POINTERS* exception) {
  if (GetCurrentThreadId() != trapping_thread) return EXCEPTION_CONTINUE_SEARCH;
  trapped = exception->ExceptionRecord->ExceptionCode;
  kMasked.set();
  ExitThread(0);
}

DWORD WINAPI divide_with_sse(void*) {
  kTraps.set();
  volatile double result = 1 / zero;
  static_cast<void>(result);
  return 0;
}

DWORD WINAPI divide_with_x87(void*) {
  kTraps.set();
  asm volatile("fldz\n\tfld1\n\tfdivp\n\tfwait\n\tfstp %%st(0)" : : : "memory");
  return 0;
}

// The code of the exception that ends the thread; 0 when it comes to its end.
DWORD exception_of(LPTHREAD_START_ROUTINE function) {
  trapped = 0;
  void* const handler = AddVectoredExceptionHandler(1, end_trapping_thread);
  DWORD id = 0;
  const HANDLE thread = CreateThread(nullptr, 0, function, nullptr, CREATE_SUSPENDED, &id);
  trapping_thread = id;
  ResumeThread(thread);
  EXPECT_EQ(WaitForSingleObject(thread, 10'000), WAIT_OBJECT_0);
  CloseHandle(thread);
  trapping_thread = 0;
  RemoveVectoredExceptionHandler(handler);
  return trapped;
}

// Without traps the other tests would prove nothing.
TEST(TrappingHost, DoesTrap) {
  const auto is_trap = [](DWORD code) {
    return code == EXCEPTION_FLT_DIVIDE_BY_ZERO || code == STATUS_FLOAT_MULTIPLE_TRAPS;
  };
  EXPECT_PRED1(is_trap, exception_of(divide_with_sse));
  EXPECT_PRED1(is_trap, exception_of(divide_with_x87));
}

// --- Members

class FloatingPoint : public testing::TestWithParam<FloatingPointControl> {
 protected:
  static Object one_unit(double slope, double offset) {
    const Object dimensions = make_dimensions();
    add_dimension(dimensions, L"Flow", {{L"m3/h", slope, offset}});
    return dimensions;
  }
  // What a call of such a host answers. The host looks after its state.
  template <class Call>
  static auto by_host(Call&& call) {
    const TrappingHost host(GetParam());
    return call();
  }
};

INSTANTIATE_TEST_SUITE_P(Hosts, FloatingPoint, testing::Values(kTraps, kTrapsRoundingUp, kMasked));

TEST_P(FloatingPoint, ConvertsUnits) {
  const Object large = one_unit(1e300, 0), small = one_unit(1e-300, 1), none = one_unit(0, 2);
  EXPECT_EQ(by_host([&] { return large.call(L"ToUnit", 1e300, 1, 1); }), L"");
  EXPECT_EQ(by_host([&] { return large.call(L"ToUnit", 1e300, 1, 1, -1, smUnitOnly); }), L"m3/h");
  EXPECT_EQ(by_host([&] { return small.call(L"ToBase", 1e300, 1, 1); }), 1e300);
  EXPECT_EQ(by_host([&] { return none.call(L"ToBase", 5, 1, 1); }), 3.0);
  EXPECT_EQ(by_host([&] { return one_unit(2, 1).call(L"ToUnit", 3, 1, 1); }), L"7");
}

TEST_P(FloatingPoint, CountsReadings) {
  const Object series = Object::create(L"pvItems32.CStatistics");
  for (const float reading : {3e38f, -3e38f}) {
    by_host([&] { return series.call(L"Add", reading); });
  }
  by_host([&] { return series.call(L"Refresh"); });
  EXPECT_EQ(by_host([&] { return series.get(L"Range"); }), 0.0f);
  EXPECT_EQ(by_host([&] { return series.get(L"Max"); }), 3e38f);
  EXPECT_EQ(by_host([&] { return series.get(L"SD2"); }),
            2 * (static_cast<double>(3e38f) * static_cast<double>(3e38f)));
  EXPECT_EQ(by_host([&] { return series.call(L"FPMin", 3e38f, -3e38f); }), -3e38f);
  EXPECT_EQ(by_host([&] { return series.call(L"FPMax", 3e38f, -3e38f); }), 3e38f);
}

// The mean of ten readings is 0.7, which is nearest to a number below it.
TEST_P(FloatingPoint, RoundsToNearest) {
  const Object series = Object::create(L"pvItems32.CStatistics");
  for (const double reading : {7, 0, 0, 0, 0, 0, 0, 0, 0, 0}) {
    by_host([&] { return series.call(L"Add", reading); });
  }
  by_host([&] { return series.call(L"Refresh"); });
  EXPECT_EQ(by_host([&] { return series.get(L"Average"); }), 0.7f);
}

TEST_P(FloatingPoint, ConvertsTexts) {
  const Object utility = Object::create(L"pvItems32.CUtility");
  EXPECT_EQ(by_host([&] { return utility.call(L"pvCDbl", L"1e400"); }), 0.0);
  EXPECT_EQ(by_host([&] { return utility.call(L"pvCDbl", L"1e-400"); }), 0.0);
  EXPECT_EQ(by_host([&] { return utility.call(L"pvCDbl", L"0.1"); }), 0.1);
  EXPECT_EQ(by_host([&] { return utility.call(L"pvCLng", 1e300); }), 0);
}

TEST_P(FloatingPoint, IsTheHostsAfterErrors) {
  const Object utility = Object::create(L"pvItems32.CUtility");
  const Object series = Object::create(L"pvItems32.CStatistics");
  EXPECT_EQ(by_host([&] { return utility.try_call(L"pvCSng", L"1e39"); }).number(), 6);
  EXPECT_FALSE(by_host([&] { return series.try_call(L"Add", 1e39); }).worked());
  EXPECT_FALSE(by_host([&] { return series.try_call(L"Add"); }).worked());
}

TEST_P(FloatingPoint, DoesNotMatterForTheLifeOfAnObject) {
  by_host([&] {
    const Object series = Object::create(L"pvItems32.CStatistics");
    EXPECT_EQ(series.get(L"Sample"), 0);
    return 0;
  });
}

TEST_P(FloatingPoint, DoesNotMatterForCallsByVtable) {
  const Object series = Object::create(L"pvItems32.CStatistics");
  const auto direct = series.as<_CStatistics>();
  const TrappingHost host(GetParam());
  float least = 0;
  EXPECT_EQ(direct->Add(3e38f), S_OK);
  EXPECT_EQ(direct->FPMin(3e38f, -3e38f, &least), S_OK);
  EXPECT_EQ(least, -3e38f);
}

// --- Calls of the host

TEST_P(FloatingPoint, IsTheHostsInObjectsOfTheHost) {
  const Object lists = Object::create(L"pvItems32.CDLists");
  const Object members = Object::create(L"pvItems32.CDListMembers");
  members.call(L"Add", L"1", L"On", 1);
  lists.call(L"Add", L"Switch", members, L"Switch");
  const Object utility = Object::create(L"pvItems32.CUtility");
  FakeObject control;
  FloatingPointControl seen[2];
  control.expect_call(L"Clear").does([&] {
    seen[0] = FloatingPointControl::current();
    EXPECT_EQ(utility.call(L"pvCDbl", L"1e400"), 0.0);  // the library within the library
    kMasked.set();                                      // and a host that does not clean up
  });
  control.expect_call(L"AddItem", {L"On"}).does([&] { seen[1] = FloatingPointControl::current(); });
  EXPECT_EQ(by_host([&] { return lists.call(L"FillList", 1, control); }), true);
  EXPECT_EQ(seen[0], GetParam());
  EXPECT_EQ(seen[1], GetParam());
}

TEST_P(FloatingPoint, IsTheHostsInListeners) {
  CallLog log;
  HubListener listener(log);
  FloatingPointControl seen;
  listener.sink.on(L"Finished", [&](const Arguments&) {
    seen = FloatingPointControl::current();
    return Value();
  });
  const Object hub = Object::create(L"pvItems32.CTxmEvents");
  const Connection connection(hub, listener.sink);
  by_host([&] { return hub.call(L"RaiseFinished"); });
  EXPECT_EQ(seen, GetParam());
}

// Stands for the number 1, and does not clean up.
class NumberObject final : public DispatchObject {
 public:
  explicit NumberObject(FloatingPointControl& seen) : seen_(seen) {}
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    seen_ = FloatingPointControl::current();
    kMasked.set();
    *result = Value(1).detach();
    return S_OK;
  }

 protected:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }

 private:
  FloatingPointControl& seen_;
};

TEST_P(FloatingPoint, IsTheHostsInObjectsThatStandForNumbers) {
  const Object series = Object::create(L"pvItems32.CStatistics");
  FloatingPointControl seen;
  const Value number(new NumberObject(seen));
  EXPECT_EQ(by_host([&] { return series.call(L"FPMin", number, 2); }), 1.0f);
  EXPECT_EQ(seen, GetParam());
}

TEST_P(FloatingPoint, IsTheHostsInListenersThatRaiseErrors) {
  const Object lists = Object::create(L"pvItems32.CDLists");
  lists.call(L"Add", L"None", Object::create(L"pvItems32.CDListMembers"), L"None");
  FakeObject control;
  control.expect_call(L"Clear").raises(E_FAIL);
  EXPECT_EQ(by_host([&] { return lists.call(L"FillList", 1, control); }), false);
}

// --- Exceptions that wait

std::uint16_t waiting_exceptions() {
  std::uint16_t status = 0;
  asm volatile("fnstsw %0" : "=m"(status));
  return status & 0x3F;
}

// An exception that the x87 unit remembers traps at the next instruction for it when it becomes
// unmasked: not in the library, and the host finds it where it left it.
TEST(WaitingException, StaysTheHosts) {
  constexpr std::uint16_t kDivisionByZero = 4;
  const Object large = make_dimensions();
  add_dimension(large, L"Flow", {{L"m3/h", 1e300, 0}});
  const auto direct = large.as<_CDimensions>();
  const Variant base(1e300), one(1L);
  Variant decimals(static_cast<short>(-1));
  BSTR text = nullptr;
  HRESULT called = E_FAIL;
  std::uint16_t waiting = 0;
  {
    const TrappingHost host;
    kMasked.set();
    asm volatile("fldz\n\tfld1\n\tfdivp\n\tfstp %%st(0)" : : : "memory");
    asm volatile("fldcw %0" : : "m"(kTraps.x87));
    called = direct->ToUnit(base, one, one, &decimals, smValueOnly, VARIANT_FALSE, &text);
    waiting = waiting_exceptions();
    kTraps.set();  // forgets it
  }
  EXPECT_EQ(called, S_OK);
  EXPECT_EQ(SysStringLen(text), 0u);
  EXPECT_EQ(waiting & 0x0D, kDivisionByZero);
  SysFreeString(text);
}

}  // namespace
}  // namespace pv::test
