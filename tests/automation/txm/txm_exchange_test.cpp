// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Reading and writing one item: which calls the server gets, in which order and with which kinds
// of arguments.

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

constexpr int kHistDisabled = 0;
constexpr int kHistSilent = 1;
constexpr int kModemPort = 9;

struct Exchange : testing::Test, Transmitter {
  Exchange() {
    device_answers(true);
    txm.put(L"Historian", kHistDisabled);
  }
  Object named_item(short id, short access = 0) {
    const Object item = add_item(id, access);
    log.name(item, id == 7 ? "item" : "item " + std::to_string(id));
    return item;
  }
};
using Reading = Exchange;
using Writing = Exchange;

const Lines kNothing;

TEST_F(Reading, SelectsTheProtocolThenAsksTheServer) {
  const ItemVariable item(named_item(7));
  EXPECT_EQ(txm.call(L"ReadTxm", item), true);
  EXPECT_EQ(calls(), exchange_lines("ReadTxm"));
}

TEST_F(Reading, PassesTheSettingsOfThatMoment) {
  txm.put(L"Address", 32767);
  txm.put(L"ComPort", 4);
  txm.put(L"ComSettings", L"9600,e,7,2");
  txm.put(L"Protocol", -1);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(named_item(7))), true);
  EXPECT_EQ(calls(), (Lines{"get server.Protocols", "put protocols.ActiveProtocol = I4 -1",
                            "call server.ReadTxm(I2 32767, DISPATCH& item, I2 4, "
                            "BSTR \"9600,e,7,2\")"}));
}

TEST_F(Reading, TheAnswerIsTakenAsABoolean) {
  const ItemVariable item(named_item(7));
  for (const Value& answer : {Value(1), Value(-1), Value(L"True"), Value(0.5)}) {
    server.answer(L"ReadTxm", answer);
    EXPECT_EQ(txm.call(L"ReadTxm", item), true);
  }
  for (const Value& answer : {Value(0), Value(false), Value()}) {
    server.answer(L"ReadTxm", answer);
    EXPECT_EQ(txm.call(L"ReadTxm", item), false);
  }
  server.answer(L"ReadTxm", L"maybe");
  EXPECT_EQ(txm.try_call(L"ReadTxm", item).number(), 13);
  calls();
}

TEST_F(Reading, AFailedReadOfTheItemLeavesConnectedAlone) {
  server.answer(L"ReadTxm", false);
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(named_item(7))), false);
  EXPECT_EQ(txm.get(L"Connected"), true);
}

TEST_F(Reading, OffLineMakesNoCallAndDisconnects) {
  txm.put(L"OffLine", true);
  txm.put(L"Connected", true);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(named_item(7, 56)), true, true), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  EXPECT_EQ(calls(), kNothing);
  EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(Reading, AModemThatIsMissingMakesNoCallAndDisconnects) {
  txm.put(L"ComPort", kModemPort);
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(named_item(7))), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  EXPECT_EQ(calls(), kNothing);
}

TEST_F(Reading, WithoutAServerRaisesNinetyOne) {
  txm.set(L"Server", Value::nothing());
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.try_call(L"ReadTxm", ItemVariable(named_item(7))).number(), 91);
  EXPECT_EQ(txm.get(L"Connected"), true);
}

TEST_F(Reading, WithoutProtocolsRaisesNinetyOneBeforeTheExchange) {
  server.answer(L"Protocols", Value::nothing());
  EXPECT_EQ(txm.try_call(L"ReadTxm", ItemVariable(named_item(7))).number(), 91);
  EXPECT_EQ(calls(), Lines{"get server.Protocols"});
}

TEST_F(Reading, ErrorsOfTheServerPassUnchanged) {
  server.fail(L"ReadTxm");
  const Outcome outcome = txm.try_call(L"ReadTxm", ItemVariable(named_item(7)));
  EXPECT_EQ(outcome.number(), 1234);
  EXPECT_EQ(outcome.source, L"Host");
  EXPECT_EQ(outcome.description, L"line is down");
}

TEST_F(Reading, NothingGoesToTheServerAsNothing) {
  EXPECT_EQ(txm.call(L"ReadTxm", Value::nothing()), true);
  EXPECT_EQ(calls(), exchange_lines("ReadTxm", "Nothing"));
}

// --- The item that comes back -----------------------------------------------------------------

TEST_F(Reading, TheItemThatTheServerPutsInPlaceComesBack) {
  const Object other = named_item(8);
  server.on(L"ReadTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(true);
  });
  const ItemVariable item(named_item(7));
  EXPECT_EQ(txm.call(L"ReadTxm", item), true);
  EXPECT_EQ(item.object(), other);
}

TEST_F(Reading, AScriptVariableGetsTheNewItemToo) {
  const Object other = named_item(8);
  server.on(L"ReadTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(false);
  });
  Value variable = named_item(7);
  EXPECT_EQ(txm.call(L"ReadTxm", by_ref(variable)), false);
  EXPECT_EQ(Object(variable), other);
}

TEST_F(Reading, TheServerMayEmptyTheItem) {
  server.on(L"ReadTxm", [](const Arguments& a) {
    a.set(1, Value::nothing());
    return Value(true);
  });
  const ItemVariable item(named_item(7));
  EXPECT_EQ(txm.call(L"ReadTxm", item), true);
  EXPECT_FALSE(item.object());
}

TEST_F(Reading, AnObjectOfAnotherClassIsATypeMismatch) {
  server.on(L"ReadTxm", [&](const Arguments& a) {
    a.set(1, items);
    return Value(true);
  });
  const Object first = named_item(7);
  const ItemVariable item(first);
  EXPECT_EQ(txm.try_call(L"ReadTxm", item).number(), 13);
  EXPECT_EQ(item.object(), first);
}

// --- Parents ----------------------------------------------------------------------------------

TEST_F(Reading, AParentIsReadFirst) {
  const Object item = named_item(7);
  named_item(8);
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"ParentVariable", 8);
  txm.put(L"Version", L"V2");
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item), true), true);
  EXPECT_EQ(calls(),
            (Lines{"get server.Protocols", "put protocols.ActiveProtocol = I4 1",
                   "put server.Version = BSTR \"V2\"", "get server.Items",
                   "call server.ReadTxm(I2 1, DISPATCH& item 8, I2 1, BSTR \"4800,n,8,1\")",
                   "call server.ReadTxm(I2 1, DISPATCH& item, I2 1, BSTR \"4800,n,8,1\")"}));
}

TEST_F(Reading, AParentThatCannotBeReadEndsTheReading) {
  const Object item = named_item(7);
  named_item(8);
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"ParentVariable", 8);
  server.answer(L"ReadTxm", false);
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item), true), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  EXPECT_EQ(calls().back(),
            "call server.ReadTxm(I2 1, DISPATCH& item 8, I2 1, BSTR \"4800,n,8,1\")");
}

TEST_F(Reading, AParentThatDoesNotExistCountsAsFailed) {
  const Object item = named_item(7);
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"ParentVariable", 99);
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item), true), false);
  EXPECT_EQ(txm.get(L"Connected"), false);
  EXPECT_EQ(calls().back(), "get server.Items");
}

TEST_F(Reading, ZeroAndNegativeParentsAreNone) {
  const Object item = named_item(7);
  for (int parent : {0, -1, -32768}) {
    item.get_object(L"Variables").get_object(L"Item", 1).put(L"ParentVariable", parent);
    EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item), true), true);
    EXPECT_EQ(calls(), exchange_lines("ReadTxm"));
  }
}

TEST_F(Reading, AParentIsReadOnlyWhenAskedFor) {
  const Object item = named_item(7);
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"ParentVariable", 99);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item), false), true);
  EXPECT_EQ(calls(), exchange_lines("ReadTxm"));
}

// --- Writing ----------------------------------------------------------------------------------

TEST_F(Writing, SelectsTheProtocolThenTellsTheServer) {
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(named_item(7))), true);
  EXPECT_EQ(calls(), exchange_lines("WriteTxm"));
  server.answer(L"WriteTxm", false);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(named_item(8))), false);
}

TEST_F(Writing, OffLineMakesNoCallAndLeavesConnectedAlone) {
  txm.put(L"OffLine", true);
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(named_item(7, 7)), true), false);
  EXPECT_EQ(txm.get(L"Connected"), true);
  EXPECT_EQ(calls(), kNothing);
}

TEST_F(Writing, AModemThatIsMissingMakesNoCallAndLeavesConnectedAlone) {
  txm.put(L"ComPort", kModemPort);
  txm.put(L"Connected", true);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(named_item(7))), false);
  EXPECT_EQ(txm.get(L"Connected"), true);
  EXPECT_EQ(calls(), kNothing);
}

TEST_F(Writing, WithoutAServerRaisesNinetyOne) {
  txm.set(L"Server", Value::nothing());
  EXPECT_EQ(txm.try_call(L"WriteTxm", ItemVariable(named_item(7))).number(), 91);
}

TEST_F(Writing, ErrorsOfTheServerPassUnchanged) {
  server.fail(L"WriteTxm");
  EXPECT_EQ(txm.try_call(L"WriteTxm", ItemVariable(named_item(7, 64))).number(), 1234);
  EXPECT_EQ(calls(), exchange_lines("WriteTxm"));
}

TEST_F(Writing, NothingGoesToTheServerThenItsRulesAreMissed) {
  EXPECT_EQ(txm.try_call(L"WriteTxm", Value::nothing()).number(), 91);
  EXPECT_EQ(calls(), exchange_lines("WriteTxm", "Nothing"));
}

TEST_F(Writing, TheLevelIsReadBackWhenTheItemAsksForIt) {
  server.on(L"ReadPassword", [](const Arguments& a) {
    a.set(1, 3);
    return Value(true);
  });
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(named_item(7, 64))), true);
  EXPECT_EQ(txm.get(L"Password"), 3);
  EXPECT_EQ(calls(),
            joined({exchange_lines("WriteTxm"),
                    {"call server.ReadPassword(I2 1, I2& 0, I2 1, BSTR \"4800,n,8,1\")"}}));
}

TEST_F(Writing, TheLevelIsReadBackWhateverTheWriteAnswered) {
  txm.put(L"Password", 4);
  server.answer(L"WriteTxm", false);
  server.answer(L"ReadPassword", false);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(named_item(7, 64)), true), false);
  EXPECT_EQ(txm.get(L"Password"), 0);
}

TEST_F(Writing, TheItemThatComesBackDecidesAboutTheLevel) {
  const Object other = named_item(8, 64);
  server.on(L"WriteTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(true);
  });
  server.answer(L"ReadPassword", true);
  const ItemVariable item(named_item(7));
  EXPECT_EQ(txm.call(L"WriteTxm", item), true);
  EXPECT_EQ(item.object(), other);
  EXPECT_EQ(calls().back(), "call server.ReadPassword(I2 1, I2& 0, I2 1, BSTR \"4800,n,8,1\")");
}

// --- Servers of script engines ----------------------------------------------------------------

TEST(ScriptServer, GetsReferencesToValuesAndMayChangeThem) {
  Transmitter host(HostObject::Kind::kScript);
  host.txm.put(L"Historian", kHistDisabled);
  const Object first = host.add_item(7, 64);
  const Object other = host.add_item(8, 64);
  host.log.name(first, "item");
  host.server.on(L"WriteTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(true);
  });
  host.server.on(L"ReadPassword", [](const Arguments& a) {
    a.set(1, 2);
    return Value(true);
  });
  const ItemVariable item(first);
  EXPECT_EQ(host.txm.call(L"WriteTxm", item), true);
  EXPECT_EQ(item.object(), other);
  EXPECT_EQ(host.txm.get(L"Password"), 2);
  EXPECT_EQ(host.calls(),
            (Lines{"get server.Protocols", "put protocols.ActiveProtocol = I4 1",
                   "call server.WriteTxm(I2 1, VARIANT& DISPATCH item, I2 1, BSTR \"4800,n,8,1\")",
                   "call server.ReadPassword(I2 1, VARIANT& I2 0, I2 1, BSTR \"4800,n,8,1\")"}));
}

}  // namespace
}  // namespace pv::test
