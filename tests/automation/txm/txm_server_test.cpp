// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What a transmitter keeps itself, and what its server answers for it.

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

struct Forwarding : testing::Test, Transmitter {};

TEST(NewTransmitter, BeginsWithItsDefaults) {
  const Object txm = Object::create(L"pvItems32.CTxm");
  const std::pair<const wchar_t*, Value> defaults[] = {{L"Name", L"Untitled TXM"},
                                                       {L"FileName", L""},
                                                       {L"Version", L""},
                                                       {L"Address", 1},
                                                       {L"ComPort", 1},
                                                       {L"ComSettings", L"4800,n,8,1"},
                                                       {L"Protocol", 1},
                                                       {L"TxmType", 1},
                                                       {L"Index", 1},
                                                       {L"Connected", false},
                                                       {L"OffLine", false},
                                                       {L"Selected", false},
                                                       {L"Historian", 2},
                                                       {L"HistorianTechName", L""},
                                                       {L"HistorianComment", L""},
                                                       {L"Password", 0},
                                                       {L"Modem", false}};
  for (const auto& [property, value] : defaults) EXPECT_EQ(txm.get(property), value);
  EXPECT_TRUE(txm.get(L"Server").is_nothing());
  EXPECT_TRUE(txm.get(L"Parent").is_nothing());
}

TEST(NewTransmitter, KeepsWhatIsSet) {
  const Object txm = Object::create(L"pvItems32.CTxm");
  const std::wstring odd(L"a\0ő", 3);
  const std::pair<const wchar_t*, Value> values[] = {{L"Name", odd},
                                                     {L"FileName", odd},
                                                     {L"Version", odd},
                                                     {L"Address", -32768},
                                                     {L"ComPort", 32767},
                                                     {L"ComSettings", odd},
                                                     {L"Protocol", -1},
                                                     {L"TxmType", 99},
                                                     {L"Index", -5},
                                                     {L"Connected", true},
                                                     {L"OffLine", true},
                                                     {L"Selected", true},
                                                     {L"Historian", 7},
                                                     {L"HistorianTechName", odd},
                                                     {L"HistorianComment", odd},
                                                     {L"Password", -1}};
  for (const auto& [property, value] : values) {
    txm.put(property, value);
    EXPECT_EQ(txm.get(property), value);
  }
}

TEST(NewTransmitter, WithoutAServerSomeMembersAnswerNothingAndOthersRaise) {
  const Object txm = Object::create(L"pvItems32.CTxm");
  for (const wchar_t* property : {L"Items", L"Dimensions", L"Lists", L"Functions"}) {
    EXPECT_TRUE(txm.get(property).is_nothing()) << printable(property);
  }
  for (const wchar_t* property : {L"TxmTypeName", L"DefaultItem", L"PictureTransmitter",
                                  L"ComError", L"ComAnswerError", L"ComAnswerErrorText"}) {
    EXPECT_EQ(txm.try_get(property).number(), 91) << printable(property);
  }
  EXPECT_EQ(txm.try_get(L"PictureFunction", 1).number(), 91);
  EXPECT_EQ(txm.try_call(L"FunctionTitle", 1).number(), 91);
  EXPECT_EQ(txm.try_call(L"StartFunction", 1).number(), 91);
  EXPECT_EQ(txm.call(L"SendMessage", L"x"), 0);
  EXPECT_EQ(txm.call(L"GetMessage"), L"");
  EXPECT_EQ(txm.call(L"LoadSettings", L"a.ini"), false);
  EXPECT_EQ(txm.get(L"FileName"), L"a.ini");
  EXPECT_EQ(txm.call(L"SaveSettings", L"b.ini"), false);
  EXPECT_EQ(txm.get(L"FileName"), L"b.ini");
}

TEST_F(Forwarding, ItemsGetTheVersionFirst) {
  txm.put(L"Version", L"V2");
  EXPECT_EQ(txm.get(L"Items"), items);
  EXPECT_EQ(calls(), (Lines{"put server.Version = BSTR \"V2\"", "get server.Items"}));
  EXPECT_EQ(txm.get(L"Dimensions"), dimensions);
  EXPECT_EQ(txm.get(L"Lists"), lists);
  EXPECT_EQ(calls(), (Lines{"get server.Dimensions", "get server.Lists"}));
  server.answer(L"Items", dimensions);
  EXPECT_EQ(txm.try_get(L"Items").number(), 13);
  server.answer(L"Items", Value::nothing());
  EXPECT_TRUE(txm.get(L"Items").is_nothing());
}

TEST_F(Forwarding, TheFileNameIsTheServersOnceThereIsOne) {
  server.answer(L"FileName", L"server.ini");
  txm.put(L"FileName", L"own.ini");
  EXPECT_EQ(txm.get(L"FileName"), L"server.ini");
  EXPECT_EQ(calls(), (Lines{"put server.FileName = BSTR \"own.ini\"", "get server.FileName"}));
  txm.set(L"Server", Value::nothing());
  EXPECT_EQ(txm.get(L"FileName"), L"own.ini");
}

TEST_F(Forwarding, SettingsAreLoadedUnderTheStoredName) {
  server.on(L"LoadSettings", [](const Arguments& a) {
    a.set(0, L"changed.ini");
    return Value(true);
  });
  server.answer(L"SaveSettings", true);
  EXPECT_EQ(txm.call(L"LoadSettings", L"a.ini"), true);
  EXPECT_EQ(txm.call(L"LoadSettings"), true);
  EXPECT_EQ(txm.call(L"LoadSettings", L""), true);
  EXPECT_EQ(txm.call(L"SaveSettings"), true);
  EXPECT_EQ(txm.call(L"SaveSettings", L"b.ini"), true);
  EXPECT_EQ(calls(), (Lines{"call server.LoadSettings(BSTR& \"a.ini\")",
                            "call server.LoadSettings(BSTR& \"a.ini\")",
                            "call server.LoadSettings(BSTR& \"a.ini\")",
                            "call server.SaveSettings(BSTR& \"a.ini\")",
                            "call server.SaveSettings(BSTR& \"b.ini\")"}));
  server.fail(L"LoadSettings");
  EXPECT_EQ(txm.try_call(L"LoadSettings").number(), 1234);
}

TEST_F(Forwarding, ErrorsAndMessages) {
  server.answer(L"ComError", 7);
  server.answer(L"ComAnswerError", 300);
  server.answer(L"ComAnswerErrorText", L"no answer");
  server.answer(L"SendMessage", 5);
  server.answer(L"GetMessage", L"hello");
  EXPECT_EQ(txm.get(L"ComError"), 7);
  EXPECT_EQ(txm.get(L"ComAnswerError"), 300);
  EXPECT_EQ(txm.get(L"ComAnswerErrorText"), L"no answer");
  EXPECT_EQ(txm.call(L"SendMessage", L"x"), 5);
  EXPECT_EQ(txm.call(L"GetMessage"), L"hello");
  EXPECT_EQ(calls(), (Lines{"get server.ComError", "get server.ComAnswerError",
                            "get server.ComAnswerErrorText", "call server.SendMessage(BSTR \"x\")",
                            "call server.GetMessage"}));
  for (const wchar_t* member : {L"SendMessage", L"GetMessage", L"ComError"}) server.fail(member);
  EXPECT_EQ(txm.call(L"SendMessage", L"x"), 0);
  EXPECT_EQ(txm.call(L"GetMessage"), L"");
  EXPECT_EQ(txm.try_get(L"ComError").number(), 1234);
}

// Whose lack of memory it is, a bare code does not tell; it is not the library's.
TEST(ServerOfATransmitter, MayLackMemory) {
  for (const HRESULT answer : {E_OUTOFMEMORY, static_cast<HRESULT>(0x800A0007)}) {
    FakeObject server;
    const Object txm = Object::create(L"pvItems32.CTxm");
    txm.set(L"Server", server);
    server.expect_call(L"SendMessage", {L"x"}).fails(answer);
    server.expect_call(L"GetMessage").fails(answer);
    server.expect_get(L"ComError").fails(answer);
    EXPECT_EQ(txm.call(L"SendMessage", L"x"), 0);
    EXPECT_EQ(txm.call(L"GetMessage"), L"");
    EXPECT_EQ(txm.try_get(L"ComError").code, answer);
  }
}

TEST_F(Forwarding, TheTitleOfAFunctionGoesByReference) {
  server.on(L"FunctionTitle", [](const Arguments& a) {
    a.set(0, 9);
    return Value(L"Calibration");
  });
  Value id(3);
  EXPECT_EQ(txm.call(L"FunctionTitle", by_ref(id)), L"Calibration");
  EXPECT_EQ(id, 9);
  EXPECT_EQ(calls(), Lines{"call server.FunctionTitle(I2& 3)"});
}

TEST_F(Forwarding, AFunctionIsStartedWithTheTransmitterItself) {
  server.answer(L"StartFunction", true);
  EXPECT_EQ(txm.call(L"StartFunction", L"key"), true);
  EXPECT_EQ(txm.call(L"StartFunction", static_cast<short>(2)), true);
  EXPECT_EQ(calls(), (Lines{"get server.Protocols", "put protocols.ActiveProtocol = I4 1",
                            "call server.StartFunction(BSTR \"key\", DISPATCH txm)",
                            "get server.Protocols", "put protocols.ActiveProtocol = I4 1",
                            "call server.StartFunction(I2 2, DISPATCH txm)"}));
}

TEST_F(Forwarding, PicturesAreAskedForByNumber) {
  const Object functions = Object::create(L"pvItems32.CFunctions");
  functions.call(L"Add", L"f", Value::nothing(), 0.0, L"", 77);
  server.answer(L"Functions", functions);
  server.answer(L"Picture", Value::nothing());
  EXPECT_TRUE(txm.get(L"PictureTransmitter").is_nothing());
  txm.put(L"Connected", true);
  EXPECT_TRUE(txm.get(L"PictureTransmitter").is_nothing());
  EXPECT_TRUE(txm.get(L"PictureFunction", L"f").is_nothing());
  EXPECT_EQ(calls(), (Lines{"call server.Picture(I2 201)", "call server.Picture(I2 200)",
                            "get server.Functions", "call server.Picture(I2 77)"}));
  EXPECT_FALSE(txm.try_get(L"PictureFunction", L"none").worked());
}

TEST_F(Forwarding, TheDefaultItemComesFromTheServer) {
  const Object item = add_item(7);
  server.answer(L"DefaultItem", item);
  EXPECT_EQ(txm.get(L"DefaultItem"), item);
}

TEST_F(Forwarding, TheNameAsksForTheTypeOnlyWhereItShows) {
  txm.put(L"Index", 3);
  txm.put(L"Name", L"A");
  const wchar_t* const names[] = {L"",       L"TXM#3",          L"A",          L"TXM#3:A",
                                  L"Fluxor", L"TXM#3 (Fluxor)", L"A (Fluxor)", L"TXM#3:A (Fluxor)"};
  for (int mode = 0; mode < 8; ++mode) {
    EXPECT_EQ(txm.call(L"NameFormatted", mode), names[mode]);
    EXPECT_EQ(calls(), mode & 4 ? Lines{"get server.TypeName"} : Lines());
  }
  EXPECT_EQ(txm.call(L"NameFormatted"), names[7]);
  txm.set(L"Server", Value::nothing());
  EXPECT_EQ(txm.call(L"NameFormatted", 3), names[3]);
  EXPECT_EQ(txm.try_call(L"NameFormatted").number(), 91);
}

TEST_F(Forwarding, LettingGoReleasesServerAndParent) {
  Object other = Object::create(L"pvItems32.CTxm");
  HostObject parent(log, "parent");
  const ULONG before = server.references();
  other.set(L"Server", server.get());
  other.set(L"Parent", parent.get());
  EXPECT_EQ(other.get(L"Server"), Value(server));
  EXPECT_EQ(other.get(L"Parent"), Value(parent));
  other = Object();
  EXPECT_EQ(server.references(), before);
}

}  // namespace
}  // namespace pv::test
