// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Finding the transmitter, and what is known of it then.

#include "tests/serial/line_test.h"

namespace pv::test {
namespace {

using Connection = LineTest;

TEST_F(Connection, FindsTheTransmitterWithItsOwnSettings) {
  EXPECT_TRUE(connect());
  EXPECT_EQ(transmitter_.get(L"Connected"), true);
  EXPECT_EQ(transmitter_.get(L"Version"), L"2.30");
  EXPECT_EQ(transmitter_.get(L"ComSettings"), L"4800,n,8,1");
}

TEST_F(Connection, FindsTheBaudRateOfTheTransmitter) {
  transmitter_.put(L"ComSettings", L"19200,n,8,1");
  EXPECT_TRUE(connect());
  EXPECT_EQ(transmitter_.get(L"ComSettings"), L"4800,n,8,1");
  EXPECT_TRUE(read(L"110")) << "the line stays open with what was found";
}

TEST_F(Connection, KeepsTheBaudRateWhenToldSo) {
  transmitter_.put(L"ComSettings", L"9600,n,8,1");
  EXPECT_EQ(transmitter_.call(L"AutoConnect", false), false);
  EXPECT_EQ(transmitter_.get(L"Connected"), false);
  EXPECT_EQ(transmitter_.get(L"ComSettings"), L"9600,n,8,1");
  EXPECT_EQ(com_error(), kReceiveTimeOut);
}

TEST_F(Connection, FindsNobodyAtAnotherAddress) {
  transmitter_.put(L"Address", short{7});
  EXPECT_EQ(transmitter_.call(L"AutoConnect", false), false);
  EXPECT_EQ(com_error(), kReceiveTimeOut);
}

TEST_F(Connection, RefusesImpossibleAddressesWithoutATelegram) {
  for (const short address : {-1, 0, 100}) {
    transmitter_.put(L"Address", address);
    const Listener listener;
    EXPECT_EQ(transmitter_.call(L"AutoConnect", false), false);
    EXPECT_EQ(com_error(), kIllegalAddress);
    EXPECT_EQ(listener.count(kSending), 0);
  }
}

TEST_F(Connection, NeedsAPortThatIsThere) {
  transmitter_.put(L"ComPort", short{7});
  EXPECT_EQ(connect(), false);
  EXPECT_EQ(com_error(), kPortNotOpen);
  EXPECT_EQ(read(L"1"), false);
  EXPECT_EQ(com_error(), kPortNotOpen);
  EXPECT_EQ(item(L"1").get(L"Dirty", 1), true);
}

TEST_F(Connection, NeedsSettingsThatMeanSomething) {
  for (const wchar_t* settings : {L"", L"fast", L"4800", L"4800,n,8", L"0,n,8,1", L"-1,n,8,1",
                                  L"4800,x,8,1", L"4800,n,9,1", L"4800,n,8,3", L"4800,,8,1"}) {
    transmitter_.put(L"ComSettings", settings);
    EXPECT_EQ(transmitter_.call(L"AutoConnect", false), false) << printable(settings);
    EXPECT_EQ(com_error(), kPortNotOpen) << printable(settings);
  }
}

TEST_F(Connection, AProtocolThatTheServerDoesNotSpeakFails) {
  transmitter_.put(L"Protocol", -1);
  EXPECT_EQ(connect(), false);
  EXPECT_EQ(read(L"1"), false);
  EXPECT_EQ(com_error(), kIllegalCommand);
  EXPECT_EQ(item(L"1").get(L"Dirty", 1), true);
}

TEST_F(Connection, EventsTellOfTheAttempt) {
  be_patient();
  const Listener listener;
  ASSERT_TRUE(connect());
  EXPECT_EQ(listener.events(), (std::vector<DISPID>{kAutoConnet, kSending, kReceiving,
                                                    kHistoryChanged, kFinished, kTxmConnected}));
}

TEST_F(Connection, FollowsTheTransmitterToAnotherBaudRate) {
  ASSERT_TRUE(connect());
  enter(L"2222");
  ASSERT_TRUE(write(L"101", 3));
  EXPECT_EQ(read(L"110"), false);
  EXPECT_TRUE(connect());
  EXPECT_EQ(transmitter_.get(L"ComSettings"), L"9600,n,8,1");
  EXPECT_TRUE(write(L"101", 2));
  EXPECT_TRUE(connect());
  EXPECT_EQ(transmitter_.get(L"ComSettings"), L"4800,n,8,1");
}

TEST_F(Connection, FollowsTheTransmitterToAnotherAddress) {
  ASSERT_TRUE(connect());
  enter(L"2222");
  ASSERT_TRUE(write(L"100", 99));
  transmitter_.put(L"Address", short{99});
  EXPECT_TRUE(read(L"110"));
  ASSERT_TRUE(write(L"100", 1));
  transmitter_.put(L"Address", short{1});
  EXPECT_TRUE(read(L"110"));
}

TEST_F(Connection, ReadsTheDisplay) {
  Value shown(L"");
  ASSERT_EQ(transmitter_.call(L"ReadDisplay", by_ref(shown)), true);
  EXPECT_EQ(shown.text().size(), 32u);
  EXPECT_EQ(shown.text().substr(0, 16), L"FT-1203 COOLING ");
}

TEST_F(Connection, TwoTransmittersShareNothing) {
  be_patient();
  const Object other = Object::create(L"Fluxor.Server");
  ASSERT_TRUE(connect());
  EXPECT_EQ(other.get(L"GetMessage"), L"Norvak: 0 exchanges, 0 repeats, 0 time-outs, 0 failed");
  EXPECT_EQ(server_.get(L"GetMessage"), L"Norvak: 1 exchanges, 0 repeats, 0 time-outs, 0 failed");
}

}  // namespace
}  // namespace pv::test
