// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// A host that reaches the library through the platform's surrogate process, as hosts do that cannot
// load it themselves: those of 64 bits the 32-bit library. Each object that is created may have a
// process of its own.

#include "tests/apartments/platform.h"
#include "tests/automation/txm/txm_support.h"
#include "tests/support/fake_object.h"
#include "tests/support/members.h"
#include "tests/support/module.h"
#include "tests/support/own_file.h"
#include "tests/support/source_tree.h"

namespace pv::test {
namespace {

HRESULT try_create(const wchar_t* name, DWORD context, Ref<IDispatch>& object) {
  CLSID clsid{};
  CLSIDFromProgID((std::wstring(L"pvItems32.") + name).c_str(), &clsid);
  return CoCreateInstance(clsid, nullptr, context, IID_IDispatch,
                          reinterpret_cast<void**>(object.put()));
}

/// Creates in the surrogate, though the program may be able to load the library.
Object create(const wchar_t* name) {
  Ref<IDispatch> object;
  const HRESULT created = try_create(name, CLSCTX_LOCAL_SERVER, object);
  if (FAILED(created)) throw CallFailed("create: " + std::to_string(created));
  return Object(object);
}

std::wstring example(std::string_view extension) {
  return source_file("examples/data/fluxor" + std::string(extension)).wstring();
}

class Surrogate : public testing::Test {
 protected:
  Surrogate() { platform_keeps_arguments(); }
  // What is used lives elsewhere: the library beside this program never has an object.
  ~Surrogate() override { EXPECT_EQ(Module().can_unload(), S_OK); }
};

TEST_F(Surrogate, ServesHostsThatCannotLoadTheLibrary) {
  if (sizeof(void*) == 4) GTEST_SKIP() << "this host can";
  Ref<IDispatch> file;
  EXPECT_EQ(try_create(L"CFile", CLSCTX_INPROC_SERVER, file), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(try_create(L"CFile", CLSCTX_SERVER, file), S_OK);
  EXPECT_EQ(Object(file).call(L"GetName", L"C:\\a\\b.itm"), L"b");
}

TEST_F(Surrogate, OpensReadsWritesAndSavesADocument) {
  const Object items = create(L"CItems");
  ASSERT_EQ(items.call(L"LoadSettingsNew", example(".itm")), true);
  EXPECT_EQ(items.get(L"AllItemCount"), 66);
  const Object item = items.get_object(L"Item", L"1");
  EXPECT_EQ(item.get(L"Caption", 1), L"Volume flow");
  item.put(L"Value", 1, 12.5);
  EXPECT_EQ(items.get_object(L"Item", 1).get(L"Value", 1), 12.5);
  EXPECT_EQ(members_of(items).size(), 66u);
  const OwnFile saved(L"saved.itm");
  EXPECT_EQ(items.call(L"SaveSettingsNew", saved), true);
  EXPECT_EQ(items.call(L"LoadSettingsNew", saved), true);
  EXPECT_EQ(items.get(L"AllItemCount"), 66);
}

TEST_F(Surrogate, ChangesArgumentsByReference) {
  const Object dimensions = create(L"CDimensions");
  ASSERT_EQ(dimensions.call(L"LoadSettingsNew", example(".dim")), true);
  Value decimals(99);
  EXPECT_TRUE(dimensions.call(L"ToUnit", 1.5, 1, 1, by_ref(decimals)).is_text());
  EXPECT_LT(decimals.number(), 99);
}

TEST_F(Surrogate, AnswersThroughTheVtable) {
  const auto items = create(L"CItems").as<_CItems>();
  ASSERT_TRUE(items);
  Ref<_CItem> item;
  ASSERT_EQ(items->Add(Bstr(L"key"), 7, VARIANT_TRUE, 3, VARIANT_FALSE, VARIANT_TRUE, 0.5f, 8,
                       nullptr, item.put()),
            S_OK);
  float wait = 0;
  EXPECT_EQ(item->get_SmartWait(&wait), S_OK);
  EXPECT_EQ(wait, 0.5f);
  long count = 0;
  EXPECT_EQ(items->get_AllItemCount(&count), S_OK);
  EXPECT_EQ(count, 1);
}

TEST_F(Surrogate, ErrorsComeWithNumberSourceAndDescription) {
  const Outcome outcome = create(L"CVariables").try_get(L"Item", 9);
  EXPECT_EQ(outcome.number(), 9);
  EXPECT_EQ(outcome.source, L"pvItems32.CVariables");
}

TEST_F(Surrogate, RaisesEventsWhoseArgumentsTheListenerChanges) {
  const Object hub = create(L"CUtility").get_object(L"TxmEvents");
  CallLog log;
  HubListener listener(log);
  listener.sink.on(L"SmartWaiting", [](const Arguments& given) {
    given.set(0, 0.25f);
    return Value();
  });
  listener.sink.on(L"OnServerLoading", [](const Arguments& given) {
    given.set(0, L"another");
    return Value();
  });
  Connection connection(hub, listener.sink);
  float left = 1.5f;
  hub.call(L"RaiseSmartWaiting", by_ref(left));
  EXPECT_EQ(left, 0.25f);
  Value name(L"name");
  hub.call(L"RaiseOnServerLoading", by_ref(name));
  EXPECT_EQ(name, L"another");
  EXPECT_EQ(log.taken().size(), 2u);
  connection.disconnect();
  hub.call(L"RaiseFinished");
  EXPECT_EQ(log.taken(), Lines{});
}

TEST_F(Surrogate, AsksATransmitterServerOfTheHost) {
  CallLog log;
  HostObject server(log, "server"), protocols(log, "protocols");
  const Object items = create(L"CItems"), txm = create(L"CTxm");
  ASSERT_EQ(items.call(L"LoadSettingsNew", example(".itm")), true);
  server.answer(L"Items", items);
  server.answer(L"Protocols", protocols);
  server.on(L"ReadTxm", [](const Arguments& given) {
    Object(given.value(1)).put(L"Value", 1, 12.5);
    return Value(true);
  });
  server.fail(L"WriteTxm");
  txm.set(L"Server", server);
  txm.put(L"Historian", 0);
  const Object item = txm.get_object(L"Items").get_object(L"Item", L"1");
  const ItemVariable variable(item);
  EXPECT_EQ(txm.call(L"ReadTxm", variable), true);
  EXPECT_EQ(item.get(L"Value", 1), 12.5);
  const Outcome outcome = txm.try_call(L"WriteTxm", variable);
  EXPECT_EQ(outcome.number(), 1234);
  EXPECT_EQ(outcome.description, L"line is down");
  txm.set(L"Server", Value::nothing());
}

TEST_F(Surrogate, ObjectsOfSeveralProcessesWorkTogether) {
  const Object items = create(L"CItems"), variables = create(L"CVariables");
  variables.call(L"Add", L"1", L"One", L"", L"", 0, 0, 0, 0, 1.5, 0, 4);
  const Object item = items.call_object(L"Add", L"7", 7, true, 3, true, false, 0.5f, 8, variables);
  EXPECT_EQ(item.get_object(L"Variables"), variables);
  const OwnFile saved(L"saved.itm");
  EXPECT_EQ(items.call(L"SaveSettingsNew", saved), true);
  EXPECT_NE(saved.bytes().find("VAR1=1|One"), std::string::npos);
}

TEST_F(Surrogate, KeepsTheHandlesOfItsPictures) {
  const Object language =
      create(L"CUtility").get_object(L"Languages").get_object(L"ActiveLanguage");
  const Object picture = language.call_object(L"Picture");
  const long handle = picture.get(L"Handle").number();
  EXPECT_NE(handle, 0);
  EXPECT_NE(GetObjectType(reinterpret_cast<HGDIOBJ>(static_cast<LONG_PTR>(handle))),
            static_cast<DWORD>(OBJ_BITMAP));
}

// Microseconds for a property, read by name: the best of some rounds, as others use the machine,
// too.
double time_of_a_call(const Object& file, int calls) {
  constexpr int kRounds = 5;
  LARGE_INTEGER frequency, start, end;
  QueryPerformanceFrequency(&frequency);
  double best = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    QueryPerformanceCounter(&start);
    for (int call = 0; call < calls; ++call) file.get(L"Name");
    QueryPerformanceCounter(&end);
    const auto ticks = static_cast<double>(end.QuadPart - start.QuadPart);
    best = std::min(best, 1e6 * ticks / static_cast<double>(frequency.QuadPart) / calls);
  }
  return best;
}

// The figures of the guide.
TEST_F(Surrogate, CostsTime) {
  Ref<IDispatch> direct;
  ASSERT_EQ(Module()
                .class_factory(__uuidof(CFile))
                ->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(direct.put())),
            S_OK);
  const double inside = time_of_a_call(Object(direct), 20'000);
  const double across = time_of_a_call(create(L"CFile"), 200);
  direct.reset();
  std::printf(
      "a property by name takes %.2f us in the process, %.0f us through the surrogate: %.0f "
      "times as long\n",
      inside, across, across / inside);
  EXPECT_GT(across, inside);
}

}  // namespace
}  // namespace pv::test
