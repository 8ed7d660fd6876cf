// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Finding the transmitter on its port, the modem, and the display.

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

constexpr int kModemPort = 9;
constexpr int kPrompt = 1010;
constexpr int kQuestion = 1021;  // the visible one of the icons

struct Connecting : testing::Test, Transmitter {
  Connecting() {
    port.answer(L"Name", L"COM1");
    port.answer(L"Settings", L"19200,e,8,1");
    server.answer(L"GetComObject", port);
    server.on(L"AutoConnect", [](const Arguments& a) {
      a.set(4, L"V3.1");
      return Value(true);
    });
    parent.answer(L"Modem", modem);
  }
  void use_modem() {
    txm.put(L"ComPort", kModemPort);
    txm.set(L"Parent", parent.get());
  }
  std::wstring text(int id) const { return utility.call(L"pvString", id).text(); }
  ~Connecting() override { txm.set(L"Parent", Value::nothing()); }

  HostObject port{log, "port"};
  HostObject parent{log, "parent"};
  HostObject modem{log, "modem"};
  HubListener listener{log};
  Connection connection{event_hub(), listener.sink};
};
using Modem = Connecting;
using Display = Connecting;

const Lines kNotConnected{"call events.TxmNotConnected(DISPATCH& txm)"};

TEST_F(Connecting, TheWholeRoundInItsOrder) {
  EXPECT_EQ(txm.call(L"AutoConnect"), true);
  EXPECT_EQ(calls(), (Lines{"get server.Protocols", "put protocols.ActiveProtocol = I4 1",
                            "call events.AutoConnet(BSTR& \"COM1:4800,n,8,1\")",
                            "call server.AutoConnect(BOOL& True, I2 1, I2 1, BSTR "
                            "\"4800,n,8,1\", BSTR& \"COM1\")",
                            "call server.GetComObject", "get port.Name", "get port.Settings",
                            "call events.TxmConnected(DISPATCH& txm)"}));
  EXPECT_EQ(txm.get(L"Connected"), true);
  EXPECT_EQ(txm.get(L"Version"), L"V3.1");
  EXPECT_EQ(txm.get(L"ComSettings"), L"19200,e,8,1");
}

TEST_F(Connecting, ChangeBaudIsPassedOn) {
  server.answer(L"AutoConnect", false);
  txm.call(L"AutoConnect", false);
  EXPECT_EQ(
      calls().at(3),
      "call server.AutoConnect(BOOL& False, I2 1, I2 1, BSTR \"4800,n,8,1\", BSTR& \"COM1\")");
}

TEST_F(Connecting, ConnectedIsSetBeforeTheEvent) {
  Value during;
  listener.sink.on(L"TxmConnected", [&](const Arguments& a) {
    during = Object(a.value(0)).get(L"Connected");
    return Value();
  });
  EXPECT_EQ(txm.call(L"AutoConnect"), true);
  EXPECT_EQ(during, true);
}

TEST_F(Connecting, AFailureLeavesVersionAndSettings) {
  server.on(L"AutoConnect", [](const Arguments& a) {
    a.set(4, L"V9");
    return Value(false);
  });
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"AutoConnect"), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  EXPECT_EQ(txm.get(L"Version"), L"");
  EXPECT_EQ(txm.get(L"ComSettings"), L"4800,n,8,1");
  EXPECT_EQ(calls().back(), kNotConnected.front());
}

TEST_F(Connecting, AHartPortNamesItsSettingsByMode) {
  port.answer(L"Name", L"ActiveHART1");
  const struct {
    int mode;
    const wchar_t* settings;
  } modes[] = {{0, L"1200,n,8,1"}, {1, L"9600,n,8,1"}, {2, L"19200,n,8,1"}, {3, L"?"}, {-1, L"?"}};
  for (const auto& [mode, settings] : modes) {
    port.answer(L"cComMode", mode);
    EXPECT_EQ(txm.call(L"AutoConnect"), true);
    EXPECT_EQ(txm.get(L"ComSettings"), settings) << mode;
    const Lines lines = calls();
    EXPECT_EQ(lines[lines.size() - 2], "get port.cComMode");
  }
}

TEST_F(Connecting, OffLineTellsListenersAndCallsNothing) {
  txm.put(L"OffLine", true);
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"AutoConnect"), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  EXPECT_EQ(calls(), kNotConnected);
}

TEST_F(Connecting, WithoutAModemTellsListenersAndCallsNothing) {
  txm.put(L"ComPort", kModemPort);
  EXPECT_EQ(txm.call(L"AutoConnect"), false);
  EXPECT_EQ(calls(), kNotConnected);
}

TEST_F(Connecting, TheModemPortHasItsOwnName) {
  use_modem();
  modem.answer(L"Connected", true);
  EXPECT_EQ(txm.call(L"AutoConnect"), true);
  const Lines lines = calls();
  EXPECT_EQ(lines.at(0), "get parent.Modem");
  EXPECT_EQ(lines.at(1), "get modem.Connected");
  EXPECT_EQ(lines.at(4), "call events.AutoConnet(BSTR& \"MODEM:4800,n,8,1\")");
  EXPECT_EQ(
      lines.at(5),
      "call server.AutoConnect(BOOL& True, I2 1, I2 9, BSTR \"4800,n,8,1\", BSTR& \"MODEM\")");
}

TEST_F(Connecting, ErrorsOfServerAndPortPass) {
  server.fail(L"GetComObject");
  EXPECT_EQ(txm.try_call(L"AutoConnect").number(), 1234);
  EXPECT_EQ(txm.get(L"Version"), L"V3.1");
  EXPECT_EQ(txm.get(L"Connected"), false);
  server.fail(L"AutoConnect");
  EXPECT_EQ(txm.try_call(L"AutoConnect").number(), 1234);
  txm.set(L"Server", Value::nothing());
  EXPECT_EQ(txm.try_call(L"AutoConnect").number(), 91);
}

TEST_F(Connecting, AListenerCannotChangeTheSettingsOfTheAttempt) {
  listener.sink.on(L"AutoConnet", [](const Arguments& a) {
    a.set(0, L"changed");
    return Value();
  });
  EXPECT_EQ(txm.call(L"AutoConnect"), true);
  EXPECT_EQ(calls().at(3),
            "call server.AutoConnect(BOOL& True, I2 1, I2 1, BSTR \"4800,n,8,1\", BSTR& \"COM1\")");
}

// --- The modem --------------------------------------------------------------------------------

TEST_F(Modem, OtherPortsNeedNone) {
  EXPECT_EQ(txm.call(L"CheckModemConnection"), true);
  EXPECT_EQ(calls(), Lines());
}

TEST_F(Modem, IsThePortNineAlone) {
  txm.put(L"Modem", true);
  EXPECT_EQ(txm.get(L"Modem"), false);
  txm.put(L"ComPort", kModemPort);
  EXPECT_EQ(txm.get(L"Modem"), true);
  txm.put(L"Modem", false);
  EXPECT_EQ(txm.get(L"Modem"), true);
}

TEST_F(Modem, WithoutOneNobodyIsAsked) {
  use_modem();
  const DialogResponder dialogs(DialogResponder::kFirst);
  for (const Value& none : {Value::nothing(), Value()}) {
    parent.answer(L"Modem", none);
    EXPECT_EQ(txm.call(L"CheckModemConnection"), false);
  }
  txm.set(L"Parent", Value::nothing());
  EXPECT_EQ(txm.call(L"CheckModemConnection"), false);
  EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(Modem, AConnectedOneIsNotAskedAbout) {
  use_modem();
  modem.answer(L"Connected", true);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"CheckModemConnection"), true);
  EXPECT_EQ(calls(), (Lines{"get parent.Modem", "get modem.Connected"}));
  EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(Modem, YesDials) {
  use_modem();
  for (bool dialled : {true, false}) {
    modem.answer(L"ShowModemDialog", dialled);
    const DialogResponder dialogs(DialogResponder::kFirst);
    EXPECT_EQ(txm.call(L"CheckModemConnection"), dialled);
    EXPECT_EQ(calls(), (Lines{"get parent.Modem", "get modem.Connected", "get server.TypeName",
                              "call modem.ShowModemDialog"}));
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].caption, text(402));
    EXPECT_EQ(dialogs.shown()[0].texts.at(kPrompt), L"TXM#1:Untitled TXM (Fluxor)\r\n" + text(401));
    EXPECT_EQ(dialogs.shown()[0].texts.count(1001), 1u);
    EXPECT_EQ(dialogs.shown()[0].texts.count(1002), 0u);
    EXPECT_EQ(dialogs.shown()[0].texts.count(kQuestion), 1u);
  }
}

TEST_F(Modem, NoLeavesItAlone) {
  use_modem();
  const DialogResponder dialogs(DialogResponder::kSecond);
  EXPECT_EQ(txm.call(L"CheckModemConnection"), false);
  EXPECT_EQ(dialogs.shown().size(), 1u);
  EXPECT_EQ(calls(), (Lines{"get parent.Modem", "get modem.Connected", "get server.TypeName"}));
}

// --- The display ------------------------------------------------------------------------------

TEST_F(Display, TheTextComesBackThroughTheReference) {
  server.on(L"ReadDisplay", [](const Arguments& a) {
    a.set(1, std::wstring(L"12\0x", 4));
    return Value(true);
  });
  Value answer(L"before");
  EXPECT_EQ(txm.call(L"ReadDisplay", by_ref(answer)), true);
  EXPECT_EQ(answer, std::wstring(L"12\0x", 4));
  EXPECT_EQ(calls(), (Lines{"get server.Protocols", "put protocols.ActiveProtocol = I4 1",
                            "call server.ReadDisplay(I2 1, BSTR& \"before\", I2 1, BSTR "
                            "\"4800,n,8,1\")"}));
}

TEST_F(Display, OffLineAndAMissingModemDisconnect) {
  Value answer(L"before");
  txm.put(L"Connected", true);
  txm.put(L"OffLine", true);
  EXPECT_EQ(txm.call(L"ReadDisplay", by_ref(answer)), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  txm.put(L"OffLine", false);
  txm.put(L"Connected", true);
  txm.put(L"ComPort", kModemPort);
  EXPECT_EQ(txm.call(L"ReadDisplay", by_ref(answer)), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  EXPECT_EQ(answer, L"before");
  EXPECT_EQ(calls(), Lines());
}

TEST_F(Display, AFailedReadLeavesConnectedAloneAndErrorsPass) {
  Value answer(L"");
  txm.put(L"Connected", true);
  server.answer(L"ReadDisplay", false);
  EXPECT_EQ(txm.call(L"ReadDisplay", by_ref(answer)), false);
  EXPECT_EQ(txm.get(L"Connected"), true);
  server.fail(L"ReadDisplay");
  EXPECT_EQ(txm.try_call(L"ReadDisplay", by_ref(answer)).number(), 1234);
}

}  // namespace
}  // namespace pv::test
