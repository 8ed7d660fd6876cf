// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Events: listeners hear them in order, may change by-reference arguments, and may come and go
// while they are called.

#include <gtest/gtest.h>

#include "tests/abi/probe_object.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

class Events : public testing::Test {
 protected:
  Events() {
    container_ = probe_.as<IConnectionPointContainer>();
    container_->FindConnectionPoint(__uuidof(__Probe), point_.put());
    // Fakes number their members in the order in which they learn them; the event has the id 1.
    first_.knows(L"Changing");
    second_.knows(L"Changing");
  }

  DWORD connect(const FakeObject& listener) {
    DWORD cookie = 0;
    EXPECT_EQ(point_->Advise(listener.get(), &cookie), S_OK);
    return cookie;
  }

  static std::vector<Expected> event(const wchar_t* text) {
    return {42, Expected::reference_to(text)};
  }

  std::wstring fire(const wchar_t* text) {
    Value variable(text);
    probe_.call(L"FireChanging", by_ref(variable));
    return variable.text();
  }

  const Object probe_ = make_probe();
  Ref<IConnectionPointContainer> container_;
  Ref<IConnectionPoint> point_;
  FakeObject first_, second_;
};

TEST_F(Events, WithoutListenersGoNowhere) { EXPECT_EQ(fire(L"text"), L"text"); }

TEST_F(Events, ReachEveryListenerInOrderWithTheChangesOfTheOnesBefore) {
  connect(first_);
  connect(second_);
  first_.expect_call(L"Changing", event(L"text")).sets(1, L"first");
  second_.expect_call(L"Changing", event(L"first")).sets(1, L"second");
  EXPECT_EQ(fire(L"text"), L"second");
}

TEST_F(Events, FailureOfAListenerStopsNobody) {
  connect(first_);
  connect(second_);
  first_.expect_call(L"Changing", event(L"text")).raises(E_FAIL);
  second_.expect_call(L"Changing", event(L"text")).sets(1, L"heard");
  EXPECT_EQ(fire(L"text"), L"heard");
}

TEST_F(Events, ListenerMayDisconnectItselfWhileItIsCalled) {
  const DWORD cookie = connect(first_);
  connect(second_);
  first_.expect_call(L"Changing", event(L"a")).does([&] { point_->Unadvise(cookie); });
  second_.expect_call(L"Changing", event(L"a"));
  fire(L"a");
  EXPECT_EQ(first_.references(), 0u);
  second_.expect_call(L"Changing", event(L"b"));
  fire(L"b");
}

TEST_F(Events, ListenerThatConnectsMeanwhileHearsTheNextEvent) {
  connect(first_);
  first_.expect_call(L"Changing", event(L"a")).does([&] { connect(second_); });
  fire(L"a");
  first_.expect_call(L"Changing", event(L"b"));
  second_.expect_call(L"Changing", event(L"b"));
  fire(L"b");
}

TEST_F(Events, CookiesAreNotUsedAgain) {
  const DWORD cookie = connect(first_);
  point_->Unadvise(cookie);
  EXPECT_NE(connect(second_), cookie);
  EXPECT_EQ(point_->Unadvise(cookie), CONNECT_E_NOCONNECTION);
}

TEST_F(Events, ListenerWithoutAutomationIsRefused) {
  Ref<ICreateErrorInfo> stranger;
  CreateErrorInfo(stranger.put());
  DWORD cookie = 99;
  EXPECT_EQ(point_->Advise(stranger.get(), &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0u);
}

TEST_F(Events, SourceStaysAliveWhileItFires) {
  Object probe = make_probe();
  Ref<IConnectionPoint> point;
  probe.as<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(__Probe), point.put());
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(first_.get(), &cookie), S_OK);
  point.reset();
  first_.expect_call(L"Changing", event(L"a")).does([&] { probe = Object(); });
  Value variable(L"a");
  const Object caller = probe;
  caller.call(L"FireChanging", by_ref(variable));
}

}  // namespace
}  // namespace pv::test
