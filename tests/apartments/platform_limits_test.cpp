// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What this platform does with any object of another apartment, where the tests of the library have
// to look away. Each is shown with an object that is not the library's. A platform without these
// limits fails here: then the tests that name them can ask for more.

#include "tests/apartments/apartment.h"
#include "tests/apartments/platform.h"
#include "tests/bench/dictionary.h"
#include "tests/support/counted.h"
#include "tests/support/fake_object.h"
#include "tests/support/memory/allocation_spy.h"

namespace pv::test {
namespace {

using PlatformLimit = FreeThreaded;

/// A class object of the test itself.
class LocalFactory final : public Counted<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

/// What an object answers to a caller in another apartment.
template <class I>
Ref<I> from_apartment(ApartmentThread& thread, const std::function<Ref<I>()>& make) {
  IStream* packed = nullptr;
  thread.run([&] { CoMarshalInterThreadInterfaceInStream(__uuidof(I), make().get(), &packed); });
  Ref<I> object;
  CoGetInterfaceAndReleaseStream(packed, __uuidof(I), reinterpret_cast<void**>(object.put()));
  return object;
}

}  // namespace

TEST(PlatformLimits, ClassObjectsOfHostedClassesAreKept) {
  EXPECT_TRUE(platform_keeps_class_objects());
}

// Its listener waits for one more handle with each apartment that others have called, and ends with
// the sixty-fourth: whoever makes the next one hangs. The program of these tests runs in several
// parts therefore, and this test, which hangs, by itself.
TEST_F(PlatformLimit, DISABLED_AProcessHasManyApartments) {
  constexpr int kMany = 70;
  for (int i = 0; i < kMany; ++i) {
    ApartmentThread thread;
    FakeObject callee;
    callee.expect_call(L"Call").returns(i);
    const Object object = thread.make([&] { return Object(Ref<IDispatch>(callee.get())); });
    ASSERT_EQ(object.call(L"Call"), i);
  }
}

TEST_F(PlatformLimit, ClassObjectsOfOthersCannotBeLocked) {
  ApartmentThread thread;
  const auto factory =
      from_apartment<IClassFactory>(thread, [] { return Ref<IClassFactory>(new LocalFactory); });
  ASSERT_TRUE(factory);
  EXPECT_EQ(factory->LockServer(TRUE), E_NOTIMPL);
}

TEST_F(PlatformLimit, CallsThroughTheVtableLoseMemoryForPointersToValues) {
  constexpr int kCalls = 10;
  ApartmentThread thread;
  const Object dictionary = thread.create(L"Scripting.Dictionary");
  Ref<bench::IScriptDictionary> early;
  dictionary.get()->QueryInterface(bench::kDictionary, reinterpret_cast<void**>(early.put()));
  ASSERT_TRUE(early);
  Value key(1), item(2);
  const LostByThePlatform lost;
  ASSERT_EQ(early->put_Item(&key, &item), S_OK);
  const AllocationBalance balance;
  for (int call = 0; call < kCalls; ++call) early->put_Item(&key, &item);
  EXPECT_GE(balance.difference(), kCalls);
}

// Where the platform's stubs keep arguments, they lose nothing else; others lose nothing.
TEST_F(PlatformLimit, CallsByNameLoseNoMoreThanArgumentsOfStubs) {
  ApartmentThread thread;
  FakeObject callee;
  const Object object = thread.make([&] { return Object(Ref<IDispatch>(callee.get())); });
  const AllocationBalance balance;
  const std::size_t before = living_arguments_of_stubs();
  Value changed(L"");
  callee.expect_call(L"Call", {7, Expected::anything()}).sets(1, L"changed").returns(L"answer");
  EXPECT_EQ(object.call(L"Call", 7, by_ref(changed)), L"answer");
  EXPECT_EQ(changed, L"changed");
  const long arguments = static_cast<long>(living_arguments_of_stubs() - before);
  EXPECT_EQ(arguments > 0, platform_keeps_arguments());
  changed = Value();
  EXPECT_EQ(balance.difference(), arguments) << balance.report();
}

TEST_F(PlatformLimit, AVariableForAnObjectCannotBeEmptied) {
  ApartmentThread thread;
  FakeObject emptying, passed;
  emptying.expect_call(L"Empty", {Expected::anything()}).sets(0, Value::nothing());
  const Object object = thread.make([&] { return Object(Ref<IDispatch>(emptying.get())); });
  IDispatch* variable = Ref<IDispatch>(passed.get()).detach();
  object.call(L"Empty", by_ref(variable));
  EXPECT_EQ(variable, passed.get());
  variable->Release();
}

}  // namespace pv::test
