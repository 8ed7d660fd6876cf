// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What an exchange leaves behind: its record, and the events on its way.

#include "tests/serial/line_test.h"

namespace pv::test {
namespace {

using Record = LineTest;

TEST_F(Record, DescribesCommandAndAnswer) {
  be_patient();
  ASSERT_TRUE(read(L"101"));
  const Object detail = record();
  EXPECT_EQ(detail.get(L"Protocol"), L"Norvak");
  EXPECT_EQ(detail.get(L"Connection"), 1);
  EXPECT_EQ(detail.get(L"ComSettings"), L"4800,n,8,1");
  EXPECT_EQ(detail.get(L"TxmType"), 1);
  EXPECT_EQ(detail.get(L"CmdString"),
            L"\x02"
            L"01R006505EF\x03");
  EXPECT_EQ(detail.get(L"CmdLength"), 13);
  EXPECT_EQ(detail.get(L"CmdLetter"), L"R");
  EXPECT_EQ(detail.get(L"CmdItemID"), 101);
  EXPECT_EQ(detail.get(L"CmdAddress"), 1);
  EXPECT_EQ(detail.get(L"CmdData"), L"");
  EXPECT_EQ(detail.get(L"AnswString").text().substr(0, 12),
            L"\x02"
            L"01r00006502");
  EXPECT_EQ(detail.get(L"InBuffer"), detail.get(L"AnswString"));
  EXPECT_EQ(detail.get(L"AnswLength"), 17);
  EXPECT_EQ(detail.get(L"AnswData"), L"02");
  EXPECT_EQ(detail.get(L"AnswItemID"), 101);
  EXPECT_EQ(detail.get(L"AnswAddress"), 1);
  EXPECT_EQ(detail.get(L"AnswError"), 0);
  EXPECT_EQ(detail.get(L"ComError"), kNoError);
  EXPECT_EQ(detail.get(L"Repeat"), 1);
  EXPECT_GT(detail.get(L"TimeOut").real(), 10) << "the characters take their time as well";
}

TEST_F(Record, TheTimeOutCountsTheBitsOfEachCharacter) {
  transmitter_.put(L"ComSettings", L"4800,n,8,1");
  ASSERT_TRUE(read(L"119"));
  const double short_characters = record().get(L"TimeOut").real();
  transmitter_.put(L"ComSettings", L"4800,e,8,2");
  ASSERT_TRUE(read(L"119"));
  constexpr double kCharacters = 13 + 15 + 150;
  EXPECT_NEAR(record().get(L"TimeOut").real() - short_characters, kCharacters * 2 / 4800, 1e-4)
      << "a parity bit and a stop bit more";
}

TEST_F(Record, ShowsTheDataOfAWrite) {
  EXPECT_EQ(write(L"32", 1), false);
  EXPECT_EQ(record().get(L"CmdLetter"), L"W");
  EXPECT_EQ(record().get(L"CmdData"), L"0000803F");
  EXPECT_EQ(record().get(L"AnswError"), kPasswordWrong);
}

TEST_F(Record, WithoutAnAnswerKeepsItsDefaults) {
  allow_attempts(2);
  set_faults("pulled=1");
  EXPECT_EQ(read(L"101"), false);
  EXPECT_EQ(record().get(L"ComError"), kReceiveTimeOut);
  EXPECT_EQ(record().get(L"Repeat"), 2);
  EXPECT_EQ(record().get(L"AnswString"), L"0");
  EXPECT_EQ(record().get(L"AnswLength"), 0);
}

TEST_F(Record, TheNewestSixteenAreKept) {
  for (int i = 0; i < 20; ++i) ASSERT_TRUE(read(i == 19 ? L"110" : L"101"));
  EXPECT_EQ(record().get(L"CmdItemID"), 110);
  EXPECT_EQ(record(15).get(L"CmdItemID"), 101);
  EXPECT_THROW(record(16), CallFailed);
}

TEST_F(Record, EventsFollowTheExchange) {
  be_patient();
  const Listener listener;
  ASSERT_TRUE(read(L"110"));
  EXPECT_EQ(listener.events(),
            (std::vector<DISPID>{kSending, kReceiving, kHistoryChanged, kFinished}));
}

TEST_F(Record, EveryAttemptIsReported) {
  allow_attempts(2);
  set_faults("pulled=1");
  const Listener listener;
  EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(listener.events(),
            (std::vector<DISPID>{kSending, kReceiving, kTimeOut, kSending, kReceiving, kTimeOut,
                                 kHistoryChanged, kFinished}));
}

TEST_F(Record, AListenerThatReadsDuringAnExchangeIsRefused) {
  Value inner(true);
  bool asked = false;
  const Object other = item(L"112");
  const Listener listener([&](DISPID event, DISPPARAMS&) {
    if (event != kReceiving || asked) return;
    asked = true;
    inner = transmitter_.call(L"ReadTxm", other);
  });
  EXPECT_TRUE(read(L"110"));
  EXPECT_TRUE(asked);
  EXPECT_EQ(inner, false);
  EXPECT_EQ(value(L"110"), L"FT-1203 COOLING");
}

TEST_F(Record, TheProtocolIsBusyDuringAnExchangeOnly) {
  be_patient();
  const Object protocol = server_.get_object(L"Protocols").get_object(L"Item", L"Norvak");
  std::vector<Value> busy{protocol.get(L"Busy")};
  const Listener listener([&](DISPID event, DISPPARAMS&) {
    if (event == kReceiving) busy.push_back(protocol.get(L"Busy"));
  });
  ASSERT_TRUE(read(L"110"));
  busy.push_back(protocol.get(L"Busy"));
  EXPECT_EQ(busy, (std::vector<Value>{false, true, false}));
}

}  // namespace
}  // namespace pv::test
