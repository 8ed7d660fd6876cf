// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Protocol connections and their collection.

#include <gtest/gtest.h>

#include "tests/automation/items/item_support.h"
#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

struct Protocol : testing::Test {
  Protocol() {
    log.name(item, "item");
    protocol.set(L"Server", server.get());
  }
  ~Protocol() override { protocol.set(L"Server", Value::nothing()); }

  CallLog log;
  HostObject server{log, "wire"};
  Object protocol = Object::create(L"pvItems32.CProtocol");
  Object items = Object::create(L"pvItems32.CItems");
  Object item = make_item(7);

  Object make_item(int id) const {
    const Object made = items.call_object(L"Add", std::to_wstring(id), id, true, 0, false, false,
                                          0.5f, 4, Value::missing());
    made.get_object(L"Variables").call(L"Add", L"1", L"", L"", L"", 0, 17, 1, 2, 0, 0, 4);
    return made;
  }
};

TEST_F(Protocol, ForwardsAddressAndItem) {
  server.answer(L"ReadTxm", true);
  server.answer(L"WriteTxm", true);
  EXPECT_EQ(protocol.call(L"ReadTxm", 5, ItemVariable(item)), true);
  EXPECT_EQ(protocol.call(L"WriteTxm", 6, ItemVariable(item)), true);
  EXPECT_EQ(log.taken(), (Lines{"call wire.ReadTxm(I2 5, DISPATCH& item)",
                                "call wire.WriteTxm(I2 6, DISPATCH& item)"}));
  EXPECT_EQ(item.get(L"Dirty", 1), false);
}

TEST_F(Protocol, TheItemThatComesBackIsTheCallersItem) {
  const Object other = make_item(8);
  for (const wchar_t* method : {L"ReadTxm", L"WriteTxm"}) {
    server.on(method, [&](const Arguments& a) {
      a.set(1, other);
      return Value(false);
    });
    const ItemVariable variable(item);
    EXPECT_EQ(protocol.call(method, 1, variable), false);
    EXPECT_EQ(variable.object(), other);
  }
}

TEST_F(Protocol, TheDisplayTextComesBack) {
  server.on(L"ReadDisplay", [](const Arguments& a) {
    a.set(1, L"12.5");
    return Value(true);
  });
  Value answer(L"");
  EXPECT_EQ(protocol.call(L"ReadDisplay", 1, by_ref(answer)), true);
  EXPECT_EQ(answer, L"12.5");
  EXPECT_EQ(log.taken(), Lines{"call wire.ReadDisplay(I2 1, BSTR& \"\")"});
}

TEST_F(Protocol, LengthAndBusyAreAskedFor) {
  server.answer(L"ItemComLength", 70000);
  server.answer(L"Busy", true);
  EXPECT_EQ(protocol.call(L"ItemComLength", item), 70000);
  EXPECT_EQ(protocol.call(L"ItemComLength", item, 3), 70000);
  EXPECT_EQ(protocol.get(L"Busy"), true);
  EXPECT_EQ(log.taken(), (Lines{"call wire.ItemComLength(DISPATCH item, I2 1)",
                                "call wire.ItemComLength(DISPATCH item, I2 3)", "get wire.Busy"}));
}

TEST_F(Protocol, TheHubIsSetByReference) {
  const Object hub = Object::create(L"pvItems32.CTxmEvents");
  log.name(hub, "hub");
  protocol.set(L"TxmEvents", hub);
  EXPECT_EQ(log.taken(), Lines{"set wire.TxmEvents = DISPATCH hub"});
}

TEST_F(Protocol, ErrorsOfTheProtocolObjectPass) {
  for (const wchar_t* member : {L"ReadTxm", L"WriteTxm", L"Busy"}) server.fail(member);
  EXPECT_EQ(protocol.try_call(L"ReadTxm", 1, ItemVariable(item)).number(), 1234);
  EXPECT_EQ(protocol.try_call(L"WriteTxm", 1, ItemVariable(item)).number(), 1234);
  EXPECT_EQ(protocol.try_get(L"Busy").number(), 1234);
}

TEST_F(Protocol, WithoutAnObjectItAnswersNo) {
  protocol.set(L"Server", Value::nothing());
  Value answer(L"kept");
  EXPECT_EQ(protocol.call(L"WriteTxm", 1, ItemVariable(item)), false);
  EXPECT_EQ(item.get(L"Dirty", 1), false);
  EXPECT_EQ(protocol.call(L"ReadTxm", 1, ItemVariable(item)), false);
  EXPECT_EQ(item.get(L"Dirty", 1), true);
  EXPECT_EQ(protocol.call(L"ReadTxm", 1, Value::nothing()), false);
  EXPECT_EQ(protocol.call(L"ReadDisplay", 1, by_ref(answer)), false);
  EXPECT_EQ(answer, L"kept");
  EXPECT_EQ(protocol.call(L"ItemComLength", item), 0);
  EXPECT_EQ(protocol.get(L"Busy"), false);
  protocol.set(L"TxmEvents", Object::create(L"pvItems32.CTxmEvents"));
}

TEST(Protocols, AddsUnderKeysAndWithout) {
  CallLog log;
  HostObject wire(log, "wire");
  const Object protocols = Object::create(L"pvItems32.CProtocols");
  const Object first = protocols.call_object(L"Add", wire, L"Norvak", 1, L"n");
  const Object second = protocols.call_object(L"Add", Value::nothing(), L"Other", -1);
  EXPECT_EQ(protocols.get(L"Count"), 2);
  EXPECT_EQ(first.get(L"Server"), Value(wire));
  EXPECT_EQ(first.get(L"Name"), L"Norvak");
  EXPECT_EQ(first.get(L"Index"), 1);
  EXPECT_EQ(first.get(L"Key"), L"n");
  EXPECT_EQ(protocols.get(L"Item", L"N"), first);
  EXPECT_EQ(protocols.get(L"Item", 2), second);
  EXPECT_EQ(second.get(L"Key"), L"");
  EXPECT_EQ(log.taken(), Lines());
}

TEST(Protocols, ErrorsOfTheCollectionReachTheCaller) {
  const Object protocols = Object::create(L"pvItems32.CProtocols");
  protocols.call(L"Add", Value::nothing(), L"a", 1, L"n");
  EXPECT_EQ(protocols.try_call(L"Add", Value::nothing(), L"b", 1, L"N").number(), 457);
  EXPECT_EQ(protocols.get(L"Count"), 1);
  EXPECT_EQ(protocols.try_get(L"Item", L"x").number(), 5);
  EXPECT_EQ(protocols.try_get(L"Item", L"").number(), 5);
  EXPECT_EQ(protocols.try_get(L"Item", 2).number(), 9);
  EXPECT_EQ(protocols.try_call(L"Remove", 0).number(), 9);
  protocols.call(L"Remove", L"n");
  EXPECT_EQ(protocols.get(L"Count"), 0);
  protocols.call(L"Add", Value::nothing(), L"a", 1);
  protocols.call(L"Clear");
  EXPECT_EQ(protocols.get(L"Count"), 0);
}

TEST(Protocols, TheActiveOneIsOnlyStored) {
  const Object protocols = Object::create(L"pvItems32.CProtocols");
  protocols.put(L"ActiveProtocol", -1);
  EXPECT_EQ(protocols.get(L"ActiveProtocol"), -1);
  protocols.put(L"ActiveProtocol", 99);
  EXPECT_EQ(protocols.get(L"ActiveProtocol"), 99);
}

TEST(Protocols, AreEnumeratedInTheirOrder) {
  const Object protocols = Object::create(L"pvItems32.CProtocols");
  for (const wchar_t* name : {L"b", L"a", L"c"}) {
    protocols.call(L"Add", Value::nothing(), name, 1, name);
  }
  EXPECT_EQ(texts_of(protocols, L"Name"), (Texts{L"b", L"a", L"c"}));
}

}  // namespace
}  // namespace pv::test
