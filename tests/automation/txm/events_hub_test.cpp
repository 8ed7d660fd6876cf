// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The event hub: every event with its number and arguments, and what listeners may do.

#include <gtest/gtest.h>

#include <memory>

#include "pvItems32.h"
#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

struct Hub : testing::Test {
  CallLog log;
  HubListener listener{log};
  Object hub = Object::create(L"pvItems32.CTxmEvents");
  Connection connection{hub, listener.sink};

  // Lets the listener change the first argument of an event.
  void changes(const wchar_t* event, const Value& value) {
    listener.sink.on(event, [value](const Arguments& a) {
      a.set(0, value);
      return Value();
    });
  }
};

TEST_F(Hub, EventsWithoutArguments) {
  const std::pair<const wchar_t*, const char*> events[] = {
      {L"RaiseFinished", "call events.Finished"},
      {L"RaiseSending", "call events.Sending"},
      {L"RaiseReceiving", "call events.Receiving"},
      {L"RaiseTimeOut", "call events.TimeOut"},
      {L"RaiseOnTimeInterrupt", "call events.OnTimeInterrupt"}};
  for (const auto& [method, line] : events) {
    EXPECT_EQ(hub.call(method), Value());
    EXPECT_EQ(log.taken(), Lines{line});
  }
}

TEST_F(Hub, EventsWithATransmitter) {
  const std::pair<const wchar_t*, const wchar_t*> events[] = {
      {L"RaiseTransmitterAdded", L"TransmitterAdded"},
      {L"RaiseActiveTxmChanged", L"ActiveTxmChanged"},
      {L"RaiseTxmConnected", L"TxmConnected"},
      {L"TxmNotConnected", L"TxmNotConnected"}};
  const Object txm = Object::create(L"pvItems32.CTxm");
  const Object other = Object::create(L"pvItems32.CTxm");
  log.name(txm, "txm");
  for (const auto& [method, event] : events) {
    Value variable = txm;
    EXPECT_EQ(hub.call(method, by_ref(variable)), Value());
    EXPECT_EQ(log.taken(), Lines{"call events." + printable(event) + "(DISPATCH& txm)"});
    EXPECT_EQ(variable, Value(txm));
    changes(event, other);
    hub.call(method, by_ref(variable));
    EXPECT_EQ(variable, Value(other));
    changes(event, Value::nothing());
    hub.call(method, by_ref(variable));
    EXPECT_TRUE(variable.is_nothing());
    log.taken();
  }
}

TEST_F(Hub, TheHistoryGoesThroughByReference) {
  Value history = Object::create(L"pvItems32.CComHistory");
  const Value other = Object::create(L"pvItems32.CComHistory");
  log.name(history, "history");
  changes(L"HistoryChanged", other);
  hub.call(L"RaiseHistoryChanged", by_ref(history));
  EXPECT_EQ(log.taken(), Lines{"call events.HistoryChanged(DISPATCH& history)"});
  EXPECT_EQ(history, other);
}

TEST_F(Hub, AListenerMustPutTheSameClassInPlace) {
  const Value first = Object::create(L"pvItems32.CTxm");
  Value variable = first;
  changes(L"TxmConnected", hub);
  EXPECT_EQ(hub.try_call(L"RaiseTxmConnected", by_ref(variable)).number(), 13);
  EXPECT_EQ(variable, first);
}

TEST_F(Hub, EventsWithAText) {
  for (const wchar_t* event : {L"OnServerLoading", L"OnServerLoaded"}) {
    const std::wstring method = L"Raise" + std::wstring(event);
    Value name(std::wstring(L"a\0é", 3));
    changes(event, L"changed");
    EXPECT_EQ(hub.call(method, by_ref(name)), Value());
    EXPECT_EQ(name, L"changed");
    BSTR typed = SysAllocString(L"typed");
    hub.call(method, by_ref(typed));
    EXPECT_EQ(std::wstring(typed), L"changed");
    SysFreeString(typed);
    EXPECT_EQ(log.taken().back(), "call events." + printable(event) + "(BSTR& \"typed\")");
  }
}

TEST_F(Hub, ArgumentsByValueAreReferencesToListenersOnly) {
  changes(L"AutoConnet", L"changed");
  changes(L"TransmitterRemoved", 77);
  Value settings(L"COM1:x");
  Value index(3);
  hub.call(L"RaiseAutoConnect", by_ref(settings));
  hub.call(L"RaiseTransmitterRemoved", by_ref(index));
  EXPECT_EQ(settings, L"COM1:x");
  EXPECT_EQ(index, 3);
  EXPECT_EQ(log.taken(), (Lines{"call events.AutoConnet(BSTR& \"COM1:x\")",
                                "call events.TransmitterRemoved(I2& 3)"}));
}

TEST_F(Hub, TheTimeLeftComesBackChanged) {
  changes(L"SmartWaiting", 0.5);
  float left = 2.5f;
  hub.call(L"RaiseSmartWaiting", by_ref(left));
  EXPECT_EQ(left, 0.5f);
  EXPECT_EQ(log.taken(), Lines{"call events.SmartWaiting(R4& 2.500000)"});
}

TEST_F(Hub, AnErrorOfTheDeviceComesBackChanged) {
  listener.sink.on(L"OnAnswerError", [](const Arguments& a) {
    a.set(0, 9);
    a.set(1, L"other");
    return Value();
  });
  Value code(4), text(L"four");
  hub.call(L"RaiseAnswerError", by_ref(code), by_ref(text));
  EXPECT_EQ(code, 9);
  EXPECT_EQ(text, L"other");
  EXPECT_EQ(log.taken(), Lines{"call events.OnAnswerError(I2& 4, BSTR& \"four\")"});
}

TEST_F(Hub, AWindowListEventChangesBothDocuments) {
  listener.sink.on(L"OnWindowList", [](const Arguments& a) {
    a.set(0, L"n");
    a.set(2, L"o");
    return Value();
  });
  Value fresh(L"new"), old(L"old");
  hub.call(L"RaiseOnWindowList", by_ref(fresh), 2, by_ref(old));
  EXPECT_EQ(fresh, L"n");
  EXPECT_EQ(old, L"o");
  EXPECT_EQ(log.taken(), Lines{"call events.OnWindowList(BSTR& \"new\", I4 2, BSTR& \"old\")"});
}

TEST_F(Hub, WithoutListenersEveryCallIsTaken) {
  connection.disconnect();
  EXPECT_EQ(hub.call(L"RaiseFinished"), Value());
  EXPECT_EQ(hub.call(L"RaiseAutoConnect", L"x"), Value());
  EXPECT_EQ(hub.call(L"RaiseTransmitterRemoved", 1), Value());
  EXPECT_EQ(hub.call(L"RaiseOnServerLoading", L"x"), Value());
  EXPECT_EQ(hub.call(L"TxmNotConnected", Value::nothing()), Value());
  EXPECT_EQ(log.taken(), Lines());
}

TEST_F(Hub, ListenersAreCalledInTheirOrderAndSeeEarlierChanges) {
  HubListener second(log, "second");
  const Connection later(hub, second.sink);
  changes(L"SmartWaiting", 1.0);
  float left = 2;
  hub.call(L"RaiseSmartWaiting", by_ref(left));
  EXPECT_EQ(log.taken(), (Lines{"call events.SmartWaiting(R4& 2.000000)",
                                "call second.SmartWaiting(R4& 1.000000)"}));
}

TEST_F(Hub, AListenerThatFailsDisturbsNobody) {
  HubListener second(log, "second");
  const Connection later(hub, second.sink);
  listener.sink.fail(L"Finished");
  EXPECT_EQ(hub.call(L"RaiseFinished"), Value());
  EXPECT_EQ(log.taken(), (Lines{"call events.Finished", "call second.Finished"}));
}

TEST_F(Hub, AListenerMayRaiseAgain) {
  listener.sink.on(L"Sending", [&](const Arguments&) {
    hub.call(L"RaiseReceiving");
    return Value();
  });
  hub.call(L"RaiseSending");
  EXPECT_EQ(log.taken(), (Lines{"call events.Sending", "call events.Receiving"}));
}

TEST_F(Hub, AListenerMayLeaveInsideItsHandler) {
  HubListener second(log, "second");
  Connection later(hub, second.sink);
  listener.sink.on(L"Sending", [&](const Arguments&) {
    connection.disconnect();
    later.disconnect();
    return Value();
  });
  hub.call(L"RaiseSending");
  log.taken();
  hub.call(L"RaiseSending");
  EXPECT_EQ(log.taken(), Lines());
}

TEST_F(Hub, AListenerMayBringAnotherOne) {
  HubListener second(log, "second");
  std::unique_ptr<Connection> later;
  listener.sink.on(L"Sending", [&](const Arguments&) {
    if (!later) later = std::make_unique<Connection>(hub, second.sink);
    return Value();
  });
  hub.call(L"RaiseSending");
  EXPECT_EQ(log.taken(), Lines{"call events.Sending"});
  hub.call(L"RaiseSending");
  EXPECT_EQ(log.taken(), (Lines{"call events.Sending", "call second.Sending"}));
}

TEST_F(Hub, IsOneForTheWholeThread) {
  EXPECT_EQ(event_hub(), event_hub());
  EXPECT_FALSE(event_hub() == hub);
}

// The host releases its last reference while the transmitter is in a call; the raw call holds none.
TEST(HubOfTransmitter, AListenerMayLetGoOfTheTransmitter) {
  for (const wchar_t* event : {L"AutoConnet", L"TxmNotConnected"}) {
    CallLog log;
    HostObject server(log, "server"), protocols(log, "protocols");
    server.answer(L"Protocols", protocols);
    server.answer(L"AutoConnect", false);
    HubListener listener(log);
    const Connection connection(event_hub(), listener.sink);
    const ULONG before = server.references();
    auto* txm = Object::create(L"pvItems32.CTxm").as<_CTxm>().detach();
    ASSERT_EQ(txm->putref_Server(server.get()), S_OK);
    listener.sink.on(event, [&](const Arguments& a) {
      if (a.value(0).is_object()) a.set(0, Value::nothing());
      if (txm) std::exchange(txm, nullptr)->Release();
      return Value();
    });
    VARIANT_BOOL connected = VARIANT_TRUE;
    EXPECT_EQ(txm->AutoConnect(VARIANT_TRUE, &connected), S_OK);
    EXPECT_EQ(connected, VARIANT_FALSE);
    EXPECT_FALSE(txm);
    EXPECT_EQ(log.taken().back().substr(0, 27), "call events.TxmNotConnected");
    EXPECT_EQ(server.references(), before);
  }
}

}  // namespace
}  // namespace pv::test
