// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/surrogate.h"

#include <algorithm>
#include <string>

#include "com/boundary.h"
#include "com/classes_root.h"
#include "com/module.h"

namespace pv {
namespace {

constexpr wchar_t kAppId[] = L"AppID";

std::wstring key_of(const ClassEntry& entry) { return L"CLSID\\" + text_of_guid(*entry.clsid); }

std::wstring key_of(const wchar_t* app_id) { return std::wstring(L"AppID\\") + app_id; }

void check_registered(const ClassesRoot& root) {
  for (const ClassEntry& entry : library().classes) {
    if (!root.has(key_of(entry))) check(REGDB_E_CLASSNOTREG);
  }
}

bool has_application(const ClassesRoot& root) {
  return std::any_of(library().classes.begin(), library().classes.end(),
                     [&](const auto& entry) { return root.has_value(key_of(entry), kAppId); });
}

}  // namespace

// An empty name stands for the platform's own surrogate.
HRESULT register_surrogate(Registration scope, const wchar_t* app_id) noexcept {
  return guarded(library().name, "register surrogate", [&] {
    const ClassesRoot root(scope);
    check_registered(root);
    root.write(key_of(app_id), nullptr, library().name);
    root.write(key_of(app_id), L"DllSurrogate", L"");
    for (const ClassEntry& entry : library().classes) root.write(key_of(entry), kAppId, app_id);
  });
}

// Both views of the registry share the application: the library with the other number of bits may
// have a surrogate, too.
HRESULT unregister_surrogate(Registration scope, const wchar_t* app_id) noexcept {
  return guarded(library().name, "unregister surrogate", [&] {
    const ClassesRoot root(scope);
    for (const ClassEntry& entry : library().classes) root.erase_value(key_of(entry), kAppId);
    if (!has_application(ClassesRoot(scope, View::kOther))) root.erase(key_of(app_id));
  });
}

}  // namespace pv
