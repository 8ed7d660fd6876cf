// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A line that loses, damages and delays telegrams: exchanges are repeated, end in time and never
// bring wrong values.

#include "tests/serial/line_test.h"

namespace pv::test {
namespace {

class FaultyLine : public LineTest {
 protected:
  // Reads some items often and writes one; all of it has to succeed.
  void expect_that_all_succeeds(int rounds) {
    allow_attempts(12);  // so many never fail in a row
    for (int i = 0; i < rounds; ++i) {
      ASSERT_TRUE(read(L"110")) << i;
      EXPECT_EQ(value(L"110"), L"FT-1203 COOLING");
      ASSERT_TRUE(read(L"70")) << i;
      EXPECT_NEAR(value(L"70", 3).real(), 5.55555555555556, 1e-5);
      ASSERT_TRUE(read(L"104")) << i;
      EXPECT_EQ(value(L"104"), 500);
      ASSERT_TRUE(write(L"105", 1 + i % 6)) << i;
      item(L"105").put(L"Value", 1, 0);
      ASSERT_TRUE(read(L"105")) << i;
      EXPECT_EQ(value(L"105"), 1 + i % 6);
    }
    EXPECT_TRUE(write(L"105", 1));
    EXPECT_NE(server_.get(L"GetMessage").text().find(L", 0 failed"), std::wstring::npos);
    EXPECT_EQ(server_.get(L"GetMessage").text().find(L", 0 repeats"), std::wstring::npos);
  }
};

TEST_F(FaultyLine, OneTelegramInFiveLost) {
  set_faults("drop=20");
  expect_that_all_succeeds(10);
}

TEST_F(FaultyLine, OneAnswerInThreeBetweenGarbage) {
  set_faults("noise=33");
  expect_that_all_succeeds(10);
}

TEST_F(FaultyLine, OneAnswerInThreeBrokenOff) {
  set_faults("half=33");
  expect_that_all_succeeds(10);
}

TEST_F(FaultyLine, OneChecksumInThreeWrong) {
  set_faults("checksum=33");
  expect_that_all_succeeds(10);
}

TEST_F(FaultyLine, EverythingAtOnce) {
  set_faults("drop=10\nnoise=10\nhalf=10\nchecksum=10\ndelay=20");
  expect_that_all_succeeds(10);
}

TEST_F(FaultyLine, ConnectsWhileOneTelegramInFiveIsLost) {
  set_faults("drop=20");
  for (int i = 0; i < 4; ++i) {
    transmitter_.put(L"ComSettings", L"9600,n,8,1");
    // All attempts at the right baud rate are lost once in 600 times: a user tries again then.
    EXPECT_TRUE(connect() || connect()) << i;
    EXPECT_EQ(transmitter_.get(L"Version"), L"2.30");
  }
}

TEST_F(FaultyLine, SlowAnswersAreWaitedFor) {
  be_patient();
  set_faults("delay=150");
  EXPECT_TRUE(read(L"110"));
  EXPECT_EQ(record().get(L"Repeat"), 1);
}

TEST_F(FaultyLine, ALateAnswerIsNotTakenForAnother) {
  allow_attempts(1);
  set_faults("delay=600");
  EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(com_error(), kReceiveTimeOut);
  set_faults("delay=0");
  allow_attempts(6);
  EXPECT_TRUE(read(L"101"));
  EXPECT_EQ(value(L"101"), 2);
  EXPECT_EQ(record().get(L"AnswItemID"), 101);
}

TEST_F(FaultyLine, PulledLineTimesOut) {
  set_faults("pulled=1");
  transmitter_.put(L"Connected", true);
  const StopWatch watch;
  EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(com_error(), kReceiveTimeOut);
  EXPECT_EQ(item(L"110").get(L"Dirty", 1), true);
  EXPECT_EQ(transmitter_.get(L"Connected"), true) << "only a parent's failure disconnects";
  EXPECT_EQ(write(L"105", 1), false);
  EXPECT_LT(watch.seconds(), 15);
}

TEST_F(FaultyLine, PulledLineDisconnectsWhenTheParentFails) {
  set_faults("pulled=1");
  transmitter_.put(L"Connected", true);
  EXPECT_EQ(transmitter_.call(L"ReadTxm", item(L"30"), true), false);
  EXPECT_EQ(transmitter_.get(L"Connected"), false);
  EXPECT_EQ(record().get(L"CmdItemID"), 1);
}

TEST_F(FaultyLine, PulledLineLetsNoLevelThrough) {
  enter(L"2222");
  set_faults("pulled=1");
  EXPECT_EQ(transmitter_.call(L"GetPassword"), 0);
}

TEST_F(FaultyLine, PulledLineShowsNoDisplay) {
  set_faults("pulled=1");
  Value shown(L"before");
  EXPECT_EQ(transmitter_.call(L"ReadDisplay", by_ref(shown)), false);
  EXPECT_EQ(shown, L"before");
}

TEST_F(FaultyLine, PluggedInAgainItGoesOn) {
  allow_attempts(1);
  set_faults("pulled=1");
  EXPECT_EQ(read(L"110"), false);
  set_faults("");
  EXPECT_TRUE(read(L"110"));
}

TEST_F(FaultyLine, NothingButWrongChecksums) {
  set_faults("checksum=100");
  EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(com_error(), kShortAnswer);
  EXPECT_EQ(record().get(L"Repeat"), 6);
  EXPECT_EQ(item(L"110").get(L"Dirty", 1), true);
}

TEST_F(FaultyLine, NothingButHalfTelegrams) {
  set_faults("half=100");
  EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(com_error(), kReceiveTimeOut);
  EXPECT_NE(record().get(L"InBuffer"), L"");
}

TEST_F(FaultyLine, NothingButGarbageEndsInTime) {
  set_faults("noise=100\nchecksum=100");
  const StopWatch watch;
  for (int i = 0; i < 5; ++i) EXPECT_EQ(read(L"110"), false);
  EXPECT_LT(watch.seconds(), 20);
}

}  // namespace
}  // namespace pv::test
