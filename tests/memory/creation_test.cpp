// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What is made once: objects of every class, and what their callers get.

#include <gtest/gtest.h>

#include "com/module.h"
#include "com/type_library.h"
#include "pvItems32.h"
#include "tests/memory/failing_memory.h"
#include "tests/memory/host.h"
#include "tests/memory/tables.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/type_library.h"

namespace pv::test {
namespace {

/// Calls `make` with every one of its allocations failing. `make` returns whether it succeeded, and
/// releases what it made.
template <class Make>
void make_with_each_failing(Make&& make) {
  EXPECT_TRUE(make(0));
  bool reached = true;
  for (long failing = 1; reached && !testing::Test::HasFailure(); ++failing) {
    SCOPED_TRACE(testing::Message() << "allocation " << failing);
    const long blocks = living_blocks();
    const long objects = living_objects();
    const AllocationBalance texts;
    reached = !make(failing);
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(living_blocks(), blocks);
    EXPECT_EQ(living_objects(), objects);
    EXPECT_EQ(texts.difference(), 0) << texts.report();
  }
}

TEST(CreatingAnObject, TakesItsMemoryOrLeavesNothing) {
  for (const ClassEntry& entry : library().classes) {
    SCOPED_TRACE(printable(entry.name));
    make_with_each_failing([&](long failing) {
      IDispatch* object = nullptr;
      HRESULT made = S_OK;
      {
        const FailingMemory memory(failing);
        made = entry.create(IID_IDispatch, reinterpret_cast<void**>(&object));
      }
      EXPECT_EQ(FAILED(made), object == nullptr);
      if (object) object->Release();
      return SUCCEEDED(made);
    });
  }
}

// What calls by name have to know of a class is a part of the library.
TEST(LookingUpNames, TakesNoMemory) {
  const Ref<ITypeLib> types = own_type_library();
  const auto classes = classes_of(types.get());
  for (const ClassEntry& entry : library().classes) {
    SCOPED_TRACE(printable(entry.name));
    const std::wstring name(entry.name);
    const ClassInfo& each = class_named(classes, std::string(name.begin(), name.end()));
    Ref<IDispatch> object;
    ASSERT_EQ(entry.create(IID_IDispatch, reinterpret_cast<void**>(object.put())), S_OK);
    for (const FunctionInfo& function : functions_of(each.interface_type)) {
      auto* text = const_cast<LPOLESTR>(function.name().c_str());
      DISPID id = DISPID_UNKNOWN;
      HRESULT found = S_OK;
      {
        const FailingMemory memory(1);
        found = object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
      }
      EXPECT_EQ(found, S_OK) << printable(function.name());
      EXPECT_EQ(id, function.description().memid) << printable(function.name());
    }
  }
}

TEST(ConnectingAListener, TakesItOrLeavesItAlone) {
  const Object events = create(L"CTxmEvents");
  const auto container = query<IConnectionPointContainer>(events.get());
  Ref<IConnectionPoint> point;
  ASSERT_EQ(container->FindConnectionPoint(__uuidof(__CTxmEvents), point.put()), S_OK);
  long heard = 0;
  const Object listener = host_object([&](const std::wstring&, const HostArguments&) {
    ++heard;
    return Value();
  });
  make_with_each_failing([&](long failing) {
    DWORD cookie = 0;
    HRESULT connected = S_OK;
    {
      const FailingMemory memory(failing);
      connected = point->Advise(listener.get(), &cookie);
    }
    heard = 0;
    events.call(L"RaiseSending");
    EXPECT_EQ(heard, SUCCEEDED(connected) ? 1 : 0);
    EXPECT_EQ(cookie != 0, SUCCEEDED(connected));
    if (SUCCEEDED(connected)) {
      EXPECT_EQ(point->Unadvise(cookie), S_OK);
    }
    return SUCCEEDED(connected);
  });
}

TEST(CopyingAnEnumerator, GivesACopyOrNothing) {
  const Object items = two_items();
  const Value held = items.get(L"NewEnum");
  const auto members = query<IEnumVARIANT>(held.punkVal);
  make_with_each_failing([&](long failing) {
    Ref<IEnumVARIANT> copy;
    HRESULT copied = S_OK;
    {
      const FailingMemory memory(failing);
      copied = members->Clone(copy.put());
    }
    EXPECT_EQ(SUCCEEDED(copied), static_cast<bool>(copy));
    return SUCCEEDED(copied);
  });
}

}  // namespace
}  // namespace pv::test
