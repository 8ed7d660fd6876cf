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
#include "tests/support/module.h"
#include "tests/support/program.h"

namespace pv::test {
namespace {

using PlatformLimit = FreeThreaded;

constexpr wchar_t kStranger[] = L"Software\\Classes\\CLSID\\{5B0D2B8E-6C32-4B5B-9A3B-6F0B7C6F4A11}";
constexpr CLSID kStrangerId = {
    0x5B0D2B8E, 0x6C32, 0x4B5B, {0x9A, 0x3B, 0x6F, 0x0B, 0x7C, 0x6F, 0x4A, 0x11}};

void write(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

/// The class of somebody else, registered as long as this lives.
class Stranger {
 public:
  Stranger() : module_(program_folder() + L"apartments_stranger.dll") {
    const std::wstring server = std::wstring(kStranger) + L"\\InprocServer32";
    write(server, nullptr, module_.path());
    write(server, L"ThreadingModel", L"Apartment");
  }
  ~Stranger() { RegDeleteTreeW(HKEY_LOCAL_MACHINE, kStranger); }
  Stranger(const Stranger&) = delete;
  Stranger& operator=(const Stranger&) = delete;

  static Ref<IUnknown> create() {
    Ref<IUnknown> object;
    CoCreateInstance(kStrangerId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                     reinterpret_cast<void**>(object.put()));
    return object;
  }
  bool is_released() const {
    return holds_soon([&] { return module_.can_unload() == S_OK; });
  }

 private:
  Module module_;
};

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

bool platform_keeps_class_objects() {
  static const bool keeps = [] {
    const Stranger stranger;
    on_thread(COINIT_MULTITHREADED, [&] { EXPECT_TRUE(stranger.create()); });
    return !stranger.is_released();
  }();
  if (keeps) library_stays_loaded();
  return keeps;
}

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
