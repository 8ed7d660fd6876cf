// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What is made once: objects of every class, and the tables of their members.

#include <gtest/gtest.h>

#include "com/dispatch/dispatch_table.h"
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

// The tables are cached: a missing name would be missing as long as the library is loaded.
TEST(TheTableOfMembers, IsMadeWholeOrNotAtAll) {
  const Ref<ITypeLib> library = own_type_library();  // loaded before and all the time
  for (const ClassInfo& each : classes_of(library.get())) {
    SCOPED_TRACE(printable(each.name));
    const IID iid = each.interface_type.attributes().guid;
    const auto functions = functions_of(each.interface_type);
    make_with_each_failing([&](long failing) {
      std::optional<DispatchTable> table;
      try {
        const FailingMemory memory(failing);
        table.emplace(iid);
      } catch (const std::bad_alloc&) {
        return false;
      }
      for (const FunctionInfo& function : functions) {
        const DISPID id = function.description().memid;
        EXPECT_EQ(table->id_of(function.name()), id) << printable(function.name());
        const auto inputs = function.inputs();
        for (std::size_t i = 0; i < inputs.size(); ++i) {
          if (inputs[i].name.empty()) continue;
          EXPECT_EQ(table->parameter_id(id, inputs[i].name), static_cast<DISPID>(i))
              << printable(inputs[i].name);
        }
      }
      return true;
    });
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
