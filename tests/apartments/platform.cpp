// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/apartments/platform.h"

#include "tests/apartments/apartment.h"
#include "tests/support/fake_object.h"
#include "tests/support/memory/allocation_spy.h"
#include "tests/support/module.h"
#include "tests/support/program.h"

namespace pv::test {
namespace {

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

bool platform_keeps_arguments() {
  static const bool keeps = [] {
    ApartmentThread thread;
    FakeObject callee;
    callee.expect_call(L"Call");
    const Object object = thread.make([&] { return Object(Ref<IDispatch>(callee.get())); });
    const std::size_t before = living_arguments_of_stubs();
    object.call(L"Call");
    return living_arguments_of_stubs() > before;
  }();
  if (keeps) stubs_keep_arguments();
  return keeps;
}

}  // namespace pv::test
