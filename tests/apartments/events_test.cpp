// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Listeners and servers that live among the free threads: the library calls them from its own
// apartment, and they may call back meanwhile.

#include "tests/apartments/apartment.h"
#include "tests/automation/txm/txm_support.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

struct HubEvents : FreeThreaded {
  const Object hub = event_hub();
  CallLog log;
  HubListener listener{log};
  Connection connection{hub, listener.sink};
};

TEST_F(HubEvents, ReachAFreeThreadedListener) {
  hub.call(L"RaiseFinished");
  hub.call(L"RaiseAutoConnect", L"9600,n,8,1");
  EXPECT_EQ(log.taken(),
            (Lines{"call events.Finished", "call events.AutoConnet(BSTR& \"9600,n,8,1\")"}));
  connection.disconnect();
  hub.call(L"RaiseFinished");
  EXPECT_EQ(log.taken(), Lines{});
}

TEST_F(HubEvents, ChangesOfEveryKindOfArgumentReachTheCaller) {
  listener.sink.on(L"SmartWaiting", [](const Arguments& given) {
    given.set(0, 0.25f);
    return Value();
  });
  listener.sink.on(L"OnAnswerError", [](const Arguments& given) {
    given.set(0, short{7});
    given.set(1, L"refused");
    return Value();
  });
  const Object replacement = Object::create(L"pvItems32.CTxm");
  listener.sink.on(L"ActiveTxmChanged", [&](const Arguments& given) {
    given.set(0, replacement);
    return Value();
  });

  float left = 1.5f;
  hub.call(L"RaiseSmartWaiting", by_ref(left));
  EXPECT_EQ(left, 0.25f);
  Value script_left(1.5f);
  hub.call(L"RaiseSmartWaiting", by_ref(script_left));
  EXPECT_EQ(script_left, 0.25f);

  short code = 1;
  Value text(L"text");
  hub.call(L"RaiseAnswerError", by_ref(code), by_ref(text.bstrVal));
  EXPECT_EQ(code, 7);
  EXPECT_EQ(text, L"refused");

  const ItemVariable txm(Object::create(L"pvItems32.CTxm"));
  hub.call(L"RaiseActiveTxmChanged", txm);
  EXPECT_EQ(txm.object(), replacement);
}

TEST_F(HubEvents, ListenersMayCallTheLibraryMeanwhile) {
  const Object items = Object::create(L"pvItems32.CItems");
  listener.sink.on(L"Finished", [&](const Arguments&) {
    items.call(L"Add", L"1", 1, false, 0, false, false, 0.0f, 0, Value::missing());
    hub.call(L"RaiseSending");
    connection.disconnect();
    return Value();
  });
  hub.call(L"RaiseFinished");
  hub.call(L"RaiseFinished");
  EXPECT_EQ(items.get(L"AllItemCount"), 1);
  EXPECT_EQ(log.taken(), (Lines{"call events.Finished", "call events.Sending"}));
}

TEST_F(HubEvents, ListenersOfSeveralApartmentsHearThemInOrder) {
  ApartmentThread thread;
  CallLog other_log;
  HubListener other(other_log, "other");
  const Object sink = thread.make([&] { return Object(Ref<IDispatch>(other.sink.get())); });
  const auto container = hub.as<IConnectionPointContainer>();
  Ref<IConnectionPoint> point;
  ASSERT_EQ(container->FindConnectionPoint(__uuidof(__CTxmEvents), point.put()), S_OK);
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(sink.get(), &cookie), S_OK);
  for (auto* const each : {&listener.sink, &other.sink}) {
    each->on(L"OnServerLoading", [each](const Arguments& given) {
      given.set(0, given.value(0).text() + L"+");
      return Value();
    });
  }
  Value name(L"name");
  hub.call(L"RaiseOnServerLoading", by_ref(name));
  EXPECT_EQ(name, L"name++");
  EXPECT_EQ(other_log.taken(), Lines{"call other.OnServerLoading(BSTR& \"name+\")"});
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
}

TEST_F(HubEvents, ConnectionPointsAreEnumerated) {
  const auto container = hub.as<IConnectionPointContainer>();
  Ref<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
  Ref<IConnectionPoint> point;
  ULONG fetched = 0;
  ASSERT_EQ(points->Next(1, point.put(), &fetched), S_OK);
  IID iid{};
  EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
  EXPECT_EQ(iid, __uuidof(__CTxmEvents));
  EXPECT_EQ(points->Next(1, point.put(), &fetched), S_FALSE);
}

TEST_F(HubEvents, SinkIsReleasedWithTheConnection) {
  FakeObject sink;
  Ref<IConnectionPoint> point;
  ASSERT_EQ(
      hub.as<IConnectionPointContainer>()->FindConnectionPoint(__uuidof(__CTxmEvents), point.put()),
      S_OK);
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(sink.get(), &cookie), S_OK);
  EXPECT_GT(sink.references(), 0u);
  EXPECT_EQ(point->Unadvise(cookie), S_OK);
  EXPECT_TRUE(holds_soon([&] { return sink.references() == 0; }));
}

struct LanguageEvent : FreeThreaded {};

TEST_F(LanguageEvent, ReachesAFreeThreadedListener) {
  const Object languages = Object::create(L"pvItems32.CUtility").get_object(L"Languages");
  CallLog log;
  HostObject sink(log, "languages");
  sink.numbers({L"OnLanguageChange"});
  Connection connection(languages, sink, __uuidof(__CLanguages));
  languages.put(L"ActiveLanguageID", 4);
  EXPECT_EQ(log.taken(), Lines{"call languages.OnLanguageChange(I4 4)"});
}

struct FreeServer : FreeThreaded, Transmitter {
  FreeServer() {
    device_answers(true);
    txm.put(L"Historian", 0);
  }
};

TEST_F(FreeServer, IsAskedByTheTransmitter) {
  const Object item = add_item(7);
  log.name(item, "item");
  const ItemVariable variable(item);
  EXPECT_EQ(txm.call(L"ReadTxm", variable), true);
  EXPECT_EQ(calls(), exchange_lines("ReadTxm"));
  EXPECT_EQ(txm.call(L"WriteTxm", variable), true);
  EXPECT_EQ(calls(), exchange_lines("WriteTxm"));
}

TEST_F(FreeServer, MayChangeTheValueAndReplaceTheItem) {
  const Object item = add_item(7), other = add_item(8);
  server.on(L"ReadTxm", [&](const Arguments& given) {
    Object(given.value(1)).put(L"Value", 1, 12.5);
    given.set(1, other);
    return Value(true);
  });
  const ItemVariable variable(item);
  EXPECT_EQ(txm.call(L"ReadTxm", variable), true);
  EXPECT_EQ(item.get(L"Value", 1), 12.5);
  EXPECT_EQ(variable.object(), other);
}

TEST_F(FreeServer, MayChangeTextsAndNumbers) {
  server.on(L"ReadDisplay", [](const Arguments& given) {
    given.set(1, L"12.5 m3/h");
    return Value(true);
  });
  server.on(L"FunctionTitle", [](const Arguments& given) {
    given.set(0, short{9});
    return Value(L"Zero point");
  });
  Value answer(L"");
  EXPECT_EQ(txm.call(L"ReadDisplay", by_ref(answer.bstrVal)), true);
  EXPECT_EQ(answer, L"12.5 m3/h");
  short function = 3;
  EXPECT_EQ(txm.call(L"FunctionTitle", by_ref(function)), L"Zero point");
  EXPECT_EQ(function, 9);
}

TEST_F(FreeServer, ItsErrorsReachTheCaller) {
  server.fail(L"WriteTxm", {static_cast<HRESULT>(0x800A0000u + 1234), L"Server", L"line is down"});
  const Outcome outcome = txm.try_call(L"WriteTxm", ItemVariable(add_item(7)));
  EXPECT_EQ(outcome.number(), 1234);
  EXPECT_EQ(outcome.source, L"Server");
  EXPECT_EQ(outcome.description, L"line is down");
}

TEST_F(FreeServer, GetsTheEventHubOfTheHostingApartment) {
  HubListener listener(log);
  Connection connection(event_hub(), listener.sink);
  server.on(L"ReadTxm", [](const Arguments&) {
    event_hub().call(L"RaiseSending");
    return Value(true);
  });
  const Object item = add_item(7);
  log.name(item, "item");
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item)), true);
  Lines expected = exchange_lines("ReadTxm");
  expected.emplace_back("call events.Sending");
  EXPECT_EQ(calls(), expected);
}

using ServerOfAFreeThread = FreeThreaded;

TEST_F(ServerOfAFreeThread, IsReleasedWithTheTransmitter) {
  const FakeObject server;
  Object txm = Object::create(L"pvItems32.CTxm");
  txm.set(L"Server", server);
  EXPECT_GT(server.references(), 0u);
  txm = Object();
  EXPECT_TRUE(holds_soon([&] { return server.references() == 0; }));
}

}  // namespace
}  // namespace pv::test
