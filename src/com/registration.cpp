// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/registration.h"

#include <algorithm>
#include <cwchar>
#include <string>

#include "com/automation.h"
#include "com/boundary.h"
#include "com/classes_root.h"
#include "com/module.h"
#include "com/type_library.h"

// Missing in the cross-compiler's headers.
extern "C" HRESULT STDMETHODCALLTYPE RegisterTypeLibForUser(ITypeLib* library, OLECHAR* full_path,
                                                            OLECHAR* help_directory);
extern "C" HRESULT STDMETHODCALLTYPE UnRegisterTypeLibForUser(REFGUID guid, WORD major, WORD minor,
                                                              LCID locale, SYSKIND system);

namespace pv {
namespace {

struct TypeLibrary {
  GUID guid;
  WORD major, minor;
  LCID locale;
  SYSKIND system;
};

TypeLibrary identity_of(ITypeLib* library) {
  TLIBATTR* attributes = nullptr;
  check(library->GetLibAttr(&attributes));
  const TypeLibrary identity{attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
                             attributes->lcid, attributes->syskind};
  library->ReleaseTLibAttr(attributes);
  return identity;
}

std::wstring version_of(const TypeLibrary& library) {
  return std::to_wstring(library.major) + L"." + std::to_wstring(library.minor);
}

struct Names {
  explicit Names(const ClassEntry& entry)
      : general(std::wstring(library().name) + L"." + entry.name),
        versioned(general + L".1"),
        clsid(text_of_guid(*entry.clsid)),
        key(L"CLSID\\" + clsid) {}
  std::wstring general, versioned, clsid, key;
};

void write_class(const ClassesRoot& registry, const ClassEntry& entry, const TypeLibrary& types) {
  const Names names(entry);
  registry.write(names.general, nullptr, names.general);
  registry.write(names.general + L"\\CLSID", nullptr, names.clsid);
  registry.write(names.general + L"\\CurVer", nullptr, names.versioned);
  registry.write(names.versioned, nullptr, names.general);
  registry.write(names.versioned + L"\\CLSID", nullptr, names.clsid);
  registry.write(names.key, nullptr, names.general);
  registry.write(names.key + L"\\InprocServer32", nullptr, module_path());
  registry.write(names.key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  registry.write(names.key + L"\\ProgID", nullptr, names.versioned);
  registry.write(names.key + L"\\VersionIndependentProgID", nullptr, names.general);
  registry.write(names.key + L"\\TypeLib", nullptr, text_of_guid(types.guid));
  registry.write(names.key + L"\\Version", nullptr, version_of(types));
  registry.write(names.key + L"\\Programmable", nullptr, L"");
}

void erase_classes(const ClassesRoot& registry) {
  for (const ClassEntry& entry : library().classes) registry.erase(Names(entry).key);
}

void erase_names(const ClassesRoot& registry) {
  for (const ClassEntry& entry : library().classes) {
    const Names names(entry);
    registry.erase(names.general);
    registry.erase(names.versioned);
  }
}

bool has_server(const ClassesRoot& registry) {
  return std::any_of(library().classes.begin(), library().classes.end(), [&](const auto& entry) {
    return registry.has(Names(entry).key + L"\\InprocServer32");
  });
}

// The type library's entry for programs of our own number of bits.
std::wstring platform_key(const TypeLibrary& types) {
  wchar_t locale[9];
  std::swprintf(locale, ARRAYSIZE(locale), L"%lx", types.locale);
  return L"TypeLib\\" + text_of_guid(types.guid) + L"\\" + version_of(types) + L"\\" + locale +
         (types.system == SYS_WIN64 ? L"\\win64" : L"\\win32");
}

void register_library(ITypeLib* library, Registration scope) {
  const std::wstring path = module_path();
  auto* full_path = const_cast<wchar_t*>(path.c_str());
  check(scope == Registration::kUser ? RegisterTypeLibForUser(library, full_path, nullptr)
                                     : RegisterTypeLib(library, full_path, nullptr));
}

void unregister_library(const TypeLibrary& id, Registration scope) {
  const HRESULT result =
      scope == Registration::kUser
          ? UnRegisterTypeLibForUser(id.guid, id.major, id.minor, id.locale, id.system)
          : UnRegisterTypeLib(id.guid, id.major, id.minor, id.locale, id.system);
  // It was not registered: systems differ in how they say so.
  if (result != TYPE_E_REGISTRYACCESS && result != E_INVALIDARG) check(result);
}

}  // namespace

HRESULT register_classes(Registration scope) noexcept {
  return guarded(library().name, "register", [&] {
    const Ref<ITypeLib> types = own_type_library();
    register_library(types.get(), scope);
    const TypeLibrary identity = identity_of(types.get());
    for (const ClassEntry& entry : library().classes) {
      write_class(ClassesRoot(scope), entry, identity);
    }
  });
}

// The twin with the other number of bits has the same names, interfaces and type library. Which of
// these keys both views share depends on the system, so they all stay until its classes are gone,
// and are then erased from both views.
HRESULT unregister_classes(Registration scope) noexcept {
  return guarded(library().name, "unregister", [&] {
    const TypeLibrary types = identity_of(own_type_library().get());
    const ClassesRoot own(scope), other(scope, View::kOther);
    erase_classes(own);
    if (has_server(other)) {
      own.erase(platform_key(types));
      return;
    }
    erase_names(own);
    erase_names(other);
    unregister_library(types, scope);
  });
}

}  // namespace pv
