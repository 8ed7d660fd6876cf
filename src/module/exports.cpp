
#include <cwchar>

#include "apartment/thread_state.h"
#include "com/automation.h"
#include "com/floating_point.h"
#include "com/module.h"
#include "com/registration.h"

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

STDAPI DllUnregisterServer() { return pv::unregister_classes(pv::Registration::kMachine); }

// "regsvr32 /n /i:user" registers for the current user, "regsvr32 /n /i" for the machine.
STDAPI DllInstall(BOOL install, LPCWSTR command_line) {
  const bool for_user = command_line && std::wcscmp(command_line, L"user") == 0;
  if (!for_user && command_line && *command_line) return E_INVALIDARG;
  const auto scope = for_user ? pv::Registration::kUser : pv::Registration::kMachine;
  return install ? pv::register_classes(scope) : pv::unregister_classes(scope);
}
