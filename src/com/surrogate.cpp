#include "com/surrogate.h"

#include <algorithm>
#include <string>

#include "com/boundary.h"
#include "com/module.h"

namespace pv {
namespace {

constexpr wchar_t kAppId[] = L"AppID";
constexpr wchar_t kSurrogate[] = L"DllSurrogate";
constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

HKEY root_of(Registration scope) {
  return scope == Registration::kUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

std::wstring key_of(const ClassEntry& entry) {
  wchar_t clsid[40];
  StringFromGUID2(*entry.clsid, clsid, ARRAYSIZE(clsid));
  return std::wstring(L"Software\\Classes\\CLSID\\") + clsid;
}

std::wstring key_of(const wchar_t* app_id) {
  return std::wstring(L"Software\\Classes\\AppID\\") + app_id;
}

void check_registry(LSTATUS status) { check(HRESULT_FROM_WIN32(static_cast<DWORD>(status))); }

void check_erased(LSTATUS status) {
  if (status != ERROR_FILE_NOT_FOUND) check_registry(status);
}

void write(Registration scope, const std::wstring& key, const wchar_t* name,
           const std::wstring& text) {
  const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
  check_registry(RegSetKeyValueW(root_of(scope), key.c_str(), name, REG_SZ, text.c_str(), bytes));
}

bool exists(Registration scope, const std::wstring& key) {
  HKEY opened = nullptr;
  const LSTATUS status = RegOpenKeyExW(root_of(scope), key.c_str(), 0, KEY_READ, &opened);
  if (status == ERROR_SUCCESS) RegCloseKey(opened);
  return status == ERROR_SUCCESS;
}

bool has_application(Registration scope, const ClassEntry& entry) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(root_of(scope), key_of(entry).c_str(), 0, KEY_READ | kOtherView, &opened) !=
      ERROR_SUCCESS) {
    return false;
  }
  const LSTATUS status = RegQueryValueExW(opened, kAppId, nullptr, nullptr, nullptr, nullptr);
  RegCloseKey(opened);
  return status == ERROR_SUCCESS;
}

// Both views of the registry share the application: the library with the other number of bits may
// have a surrogate, too.
bool is_used_by_the_other_view(Registration scope) {
  const auto& classes = library().classes;
  return std::any_of(classes.begin(), classes.end(),
                     [&](const ClassEntry& entry) { return has_application(scope, entry); });
}

void check_registered(Registration scope) {
  for (const ClassEntry& entry : library().classes) {
    if (!exists(scope, key_of(entry))) check(REGDB_E_CLASSNOTREG);
  }
}

}  // namespace

// An empty name stands for the platform's own surrogate.
HRESULT register_surrogate(Registration scope, const wchar_t* app_id) noexcept {
  return guarded(library().name, "register surrogate", [&] {
    check_registered(scope);
    write(scope, key_of(app_id), nullptr, library().name);
    write(scope, key_of(app_id), kSurrogate, L"");
    for (const ClassEntry& entry : library().classes) write(scope, key_of(entry), kAppId, app_id);
  });
}

HRESULT unregister_surrogate(Registration scope, const wchar_t* app_id) noexcept {
  return guarded(library().name, "unregister surrogate", [&] {
    for (const ClassEntry& entry : library().classes) {
      check_erased(RegDeleteKeyValueW(root_of(scope), key_of(entry).c_str(), kAppId));
    }
    if (is_used_by_the_other_view(scope)) return;
    check_erased(RegDeleteTreeW(root_of(scope), key_of(app_id).c_str()));
  });
}

}  // namespace pv
