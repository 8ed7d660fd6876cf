// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// How long objects last that other threads hold.

#include "tests/apartments/apartment.h"
#include "tests/support/fake_object.h"
#include "tests/support/members.h"
#include "tests/support/memory/allocation_spy.h"

namespace pv::test {
namespace {

using GlobalTable = FreeThreaded;

struct EndedThread : FreeThreaded {
  const LostByThePlatform lost;  // the library calls foreign objects through their vtables
};

Object new_variable() { return Object::create(L"pvItems32.CVariable"); }

TEST_F(GlobalTable, KeepsAnObjectForEveryApartment) {
  const GlobalInterfaceTable table;
  DWORD cookie = 0;
  {
    const Object file = Object::create(L"pvItems32.CFile");
    file.put(L"Name", L"settings");
    cookie = table.enter(file);
  }
  EXPECT_EQ(table.object(cookie).get(L"Name"), L"settings");
  ApartmentThread thread;
  thread.run([&] {
    table.object(cookie).put(L"Extension", L"itm");
    EXPECT_EQ(table.object(cookie).call(L"FileTitle"), L"settings.itm");
  });
  on_thread(COINIT_MULTITHREADED,
            [&] { EXPECT_EQ(table.object(cookie).get(L"Extension"), L"itm"); });
  EXPECT_EQ(table.leave(cookie), S_OK);
  EXPECT_FALSE(table.object(cookie));
}

TEST_F(GlobalTable, KeepsAnObjectOfAnApartmentThread) {
  const GlobalInterfaceTable table;
  ApartmentThread thread;
  DWORD cookie = 0;
  thread.run([&] {
    const Object variable = new_variable();
    variable.put(L"Value", 12.5);
    cookie = table.enter(variable);
  });
  EXPECT_EQ(table.object(cookie).get(L"Value"), 12.5);
  EXPECT_EQ(table.leave(cookie), S_OK);
}

// An object whose thread is gone is gone, too: its holders get errors of the platform.
TEST_F(EndedThread, LeavesStandInsThatOnlyFail) {
  ApartmentThread thread;
  const Object variable = thread.make(new_variable);
  const Object variables = thread.create(L"pvItems32.CVariables");
  variable.put(L"Value", 1);
  thread.end();
  EXPECT_FALSE(variable.try_get(L"Value").worked());
  EXPECT_FALSE(variables.try_call(L"Clear").worked());
}

TEST_F(EndedThread, ItsObjectsInsideOthersAreErrorsAndCanBeReplaced) {
  ApartmentThread thread;
  const Object items = Object::create(L"pvItems32.CItems");
  const Object variables = thread.create(L"pvItems32.CVariables");
  const Object item =
      items.call_object(L"Add", L"1", 1, false, 0, false, false, 0.0f, 0, variables);
  variables.call(L"Add", L"1", L"One", L"", L"", 0, 0, 0, 0, 1.5, 0, 4);
  EXPECT_EQ(item.get(L"Value", 1), 1.5);
  thread.end();
  EXPECT_FALSE(item.try_get(L"Value", 1).worked());
  EXPECT_FALSE(items.try_call(L"SaveSettingsNew", L"Z:\\nowhere\\items.itm").worked());
  EXPECT_EQ(item.get(L"Key"), L"1");
  item.set(L"Variables", Object::create(L"pvItems32.CVariables"));
  EXPECT_EQ(item.get_object(L"Variables").get(L"Count"), 0);
}

TEST_F(EndedThread, ListenerThereKeepsNobodyFromHearing) {
  ApartmentThread thread;
  FakeObject gone, alive;
  const Object hub = Object::create(L"pvItems32.CUtility").get_object(L"TxmEvents");
  const auto container = hub.as<IConnectionPointContainer>();
  Ref<IConnectionPoint> point;
  Ref<IEnumConnectionPoints> points;
  ASSERT_EQ(container->EnumConnectionPoints(points.put()), S_OK);
  ULONG fetched = 0;
  ASSERT_EQ(points->Next(1, point.put(), &fetched), S_OK);
  DWORD first = 0, second = 0;
  const Object sink = thread.make([&] { return Object(Ref<IDispatch>(gone.get())); });
  ASSERT_EQ(point->Advise(sink.get(), &first), S_OK);
  alive.knows(L"Finished");
  ASSERT_EQ(point->Advise(alive.get(), &second), S_OK);
  thread.end();
  alive.expect_call(L"Finished");
  hub.call(L"RaiseFinished");
  alive.verify();
  EXPECT_EQ(point->Unadvise(first), S_OK);
  EXPECT_EQ(point->Unadvise(second), S_OK);
}

}  // namespace
}  // namespace pv::test
