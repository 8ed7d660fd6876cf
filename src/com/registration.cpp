#include "com/registration.h"

#include <string>

#include "com/automation.h"
#include "com/boundary.h"
#include "com/module.h"
#include "com/type_library.h"

// Missing in the cross-compiler's headers.
extern "C" HRESULT STDMETHODCALLTYPE RegisterTypeLibForUser(ITypeLib* library, OLECHAR* full_path,
                                                            OLECHAR* help_directory);
extern "C" HRESULT STDMETHODCALLTYPE UnRegisterTypeLibForUser(REFGUID guid, WORD major, WORD minor,
                                                              LCID locale, SYSKIND system);

namespace pv {
namespace {

const std::wstring kClasses = L"Software\\Classes\\";

HKEY root_of(Registration scope) {
  return scope == Registration::kUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

void check_registry(LSTATUS status) { check(HRESULT_FROM_WIN32(static_cast<DWORD>(status))); }

std::wstring text_of_guid(REFGUID guid) {
  wchar_t text[40];
  StringFromGUID2(guid, text, ARRAYSIZE(text));
  return text;
}

struct Library {
  GUID guid;
  WORD major, minor;
  LCID locale;
  SYSKIND system;
};

Library identity_of(ITypeLib* library) {
  TLIBATTR* attributes = nullptr;
  check(library->GetLibAttr(&attributes));
  const Library identity{attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
                         attributes->lcid, attributes->syskind};
  library->ReleaseTLibAttr(attributes);
  return identity;
}

class Registry {
 public:
  explicit Registry(Registration scope) : root_(root_of(scope)) {}

  void write(const std::wstring& key, const wchar_t* name, const std::wstring& text) const {
    HKEY opened = nullptr;
    check_registry(RegCreateKeyExW(root_, (kClasses + key).c_str(), 0, nullptr, 0, KEY_WRITE,
                                   nullptr, &opened, nullptr));
    const DWORD bytes = (text.size() + 1) * sizeof(wchar_t);
    const LSTATUS written =
        RegSetValueExW(opened, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
    RegCloseKey(opened);
    check_registry(written);
  }

  void erase(const std::wstring& key) const {
    const LSTATUS erased = RegDeleteTreeW(root_, (kClasses + key).c_str());
    if (erased != ERROR_FILE_NOT_FOUND) check_registry(erased);
  }

 private:
  HKEY root_;
};

struct Names {
  explicit Names(const ClassEntry& entry)
      : general(std::wstring(library().name) + L"." + entry.name),
        versioned(general + L".1"),
        clsid(text_of_guid(*entry.clsid)),
        key(L"CLSID\\" + clsid) {}
  std::wstring general, versioned, clsid, key;
};

void write_class(const Registry& registry, const ClassEntry& entry, const std::wstring& library) {
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
  registry.write(names.key + L"\\TypeLib", nullptr, library);
  registry.write(names.key + L"\\Programmable", nullptr, L"");
}

void erase_class(const Registry& registry, const ClassEntry& entry) {
  const Names names(entry);
  registry.erase(names.general);
  registry.erase(names.versioned);
  registry.erase(names.key);
}

void register_library(ITypeLib* library, Registration scope) {
  const std::wstring path = module_path();
  auto* full_path = const_cast<wchar_t*>(path.c_str());
  check(scope == Registration::kUser ? RegisterTypeLibForUser(library, full_path, nullptr)
                                     : RegisterTypeLib(library, full_path, nullptr));
}

void unregister_library(const Library& id, Registration scope) {
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
    const std::wstring guid = text_of_guid(identity_of(types.get()).guid);
    for (const ClassEntry& entry : library().classes) write_class(Registry(scope), entry, guid);
  });
}

HRESULT unregister_classes(Registration scope) noexcept {
  return guarded(library().name, "unregister", [&] {
    for (const ClassEntry& entry : library().classes) erase_class(Registry(scope), entry);
    unregister_library(identity_of(own_type_library().get()), scope);
  });
}

}  // namespace pv
