// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Free threads of hosts that bring the library along: its classes, and the way between apartments,
// come from the side-by-side manifest.

#include "tests/apartments/apartment.h"
#include "tests/automation/txm/txm_support.h"
#include "tests/support/activation.h"
#include "tests/support/members.h"
#include "tests/support/module.h"

namespace pv::test {
namespace {

/// Leaves the library registered for the tests that follow.
struct Unregistered : FreeThreaded {
  Unregistered() { module.unregister_server(); }
  ~Unregistered() override { EXPECT_EQ(module.register_server(), S_OK); }

  const Module module;
};

TEST_F(Unregistered, NothingIsFoundWithoutTheManifest) {
  EXPECT_THROW(Object::create(L"pvItems32.CItems"), CallFailed);
}

TEST_F(Unregistered, ObjectsAreCreatedAndCalled) {
  const Activation activation(program_folder() + L"pvItems32.manifest");
  ASSERT_TRUE(activation.is_active());
  const Object items = Object::create(L"pvItems32.CItems");
  EXPECT_TRUE(is_proxy(items, __uuidof(CItems)));
  const auto early = items.as<_CItems>();
  ASSERT_TRUE(early);
  long count = -1;
  EXPECT_EQ(early->get_AllItemCount(&count), S_OK);
  EXPECT_EQ(count, 0);
  const Object item =
      items.call_object(L"Add", L"1", 1, false, 0, false, false, 0.0f, 0, Value::missing());
  EXPECT_EQ(texts_of(items), Texts{L"1"});
  EXPECT_EQ(item, items.get_object(L"Item", 1));
}

TEST_F(Unregistered, EventsAreHeard) {
  const Activation activation(program_folder() + L"pvItems32.manifest");
  ASSERT_TRUE(activation.is_active());
  CallLog log;
  HubListener listener(log);
  const Object hub = event_hub();
  Connection connection(hub, listener.sink);
  hub.call(L"RaiseFinished");
  EXPECT_EQ(log.taken(), Lines{"call events.Finished"});
}

}  // namespace
}  // namespace pv::test
