// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/module.h"

#include <filesystem>
#include <stdexcept>

#include "tests/support/value.h"

namespace pv::test {
namespace {

std::wstring path_of(HMODULE module) {
  wchar_t path[MAX_PATH] = L"";
  GetModuleFileNameW(module, path, ARRAYSIZE(path));
  return path;
}

// A program that was killed leaves its folder, and another one gets its number.
class ScratchFolder {
 public:
  ScratchFolder()
      : path_(std::filesystem::temp_directory_path() /
              (L"pvItems32-" + std::to_wstring(GetCurrentProcessId()))) {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::wstring text() const { return path_.wstring() + L"\\"; }

 private:
  std::filesystem::path path_;
};

}  // namespace

Module::Module() : Module(program_folder() + L"pvItems32.dll") {}

Module::Module(const std::wstring& path) : handle_(LoadLibraryW(path.c_str())) {
  if (!handle_) throw std::runtime_error("cannot load " + printable(path));
}

Module::~Module() { FreeLibrary(handle_); }

std::wstring Module::path() const { return path_of(handle_); }

template <class Function>
Function* Module::entry(const char* name) const {
  const FARPROC found = GetProcAddress(handle_, name);
  if (!found) throw std::runtime_error(std::string("the library does not export ") + name);
  return reinterpret_cast<Function*>(reinterpret_cast<std::uintptr_t>(found));
}

HRESULT Module::get_class_object(REFCLSID clsid, REFIID iid, void** object) const {
  return entry<HRESULT STDAPICALLTYPE(REFCLSID, REFIID, void**)>("DllGetClassObject")(clsid, iid,
                                                                                      object);
}

Ref<IClassFactory> Module::class_factory(REFCLSID clsid) const {
  Ref<IClassFactory> factory;
  get_class_object(clsid, IID_IClassFactory, reinterpret_cast<void**>(factory.put()));
  return factory;
}

HRESULT Module::can_unload() const { return entry<HRESULT STDAPICALLTYPE()>("DllCanUnloadNow")(); }
HRESULT Module::register_server() const {
  return entry<HRESULT STDAPICALLTYPE()>("DllRegisterServer")();
}
HRESULT Module::unregister_server() const {
  return entry<HRESULT STDAPICALLTYPE()>("DllUnregisterServer")();
}
HRESULT Module::install(bool install, const wchar_t* command_line) const {
  return entry<HRESULT STDAPICALLTYPE(BOOL, LPCWSTR)>("DllInstall")(install, command_line);
}

Ref<ITypeLib> Module::type_library() const {
  Ref<ITypeLib> library;
  if (FAILED(LoadTypeLibEx(path().c_str(), REGKIND_NONE, library.put()))) {
    throw std::runtime_error("the library has no type library");
  }
  return library;
}

std::wstring program_folder() {
  const std::wstring program = path_of(nullptr);
  return program.substr(0, program.rfind(L'\\') + 1);
}

std::wstring scratch_folder() {
  static const ScratchFolder folder;
  return folder.text();
}

}  // namespace pv::test
