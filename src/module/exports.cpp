// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include <optional>
#include <string_view>

#include "apartment/thread_state.h"
#include "com/automation.h"
#include "com/floating_point.h"
#include "com/module.h"
#include "com/registration.h"
#include "com/surrogate.h"

namespace {

// Frozen: the application of all classes, under which administrators find the surrogate process.
constexpr wchar_t kAppId[] = L"{37D5D503-E0CD-46FB-BB20-CEA6915A50A9}";

struct Installation {
  pv::Registration scope;
  bool surrogate;
};

std::optional<Installation> installation(std::wstring_view command_line) {
  using pv::Registration;
  if (command_line.empty()) return Installation{Registration::kMachine, false};
  if (command_line == L"user") return Installation{Registration::kUser, false};
  if (command_line == L"surrogate") return Installation{Registration::kMachine, true};
  if (command_line == L"user,surrogate") return Installation{Registration::kUser, true};
  return std::nullopt;
}

// Without its classes the surrogate would serve nothing.
HRESULT unregister(pv::Registration scope) {
  const HRESULT result = pv::unregister_surrogate(scope, kAppId);
  return FAILED(result) ? result : pv::unregister_classes(scope);
}

}  // namespace

// At the end of the process the system takes everything back itself.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID process_ends) {
  if (reason == DLL_PROCESS_DETACH && !process_ends) pv::free_thread_slot();
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
  const pv::FloatingPointScope masked;
  return pv::get_class_object(clsid, iid, object);
}

STDAPI DllCanUnloadNow() { return pv::living_objects() == 0 ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() { return pv::register_classes(pv::Registration::kMachine); }

STDAPI DllUnregisterServer() { return unregister(pv::Registration::kMachine); }

// "regsvr32 /n /i:user" registers for the current user, "regsvr32 /n /i" for the machine. With
// "surrogate" and "user,surrogate" the classes that are registered get their surrogate process.
STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  const auto wanted = installation(command_line ? command_line : L"");
  if (!wanted) return E_INVALIDARG;
  if (!wanted->surrogate) {
    return install ? pv::register_classes(wanted->scope) : unregister(wanted->scope);
  }
  return install ? pv::register_surrogate(wanted->scope, kAppId)
                 : pv::unregister_surrogate(wanted->scope, kAppId);
}
