// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"
#include "com/ref.h"

namespace pv::test {

/// The library under test, pvItems32.dll beside the test program, loaded until the program ends.
class Module {
 public:
  Module();  // of pvItems32.dll beside the program
  explicit Module(const std::wstring& path);
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module();

  HMODULE handle() const { return handle_; }
  std::wstring path() const;

  Ref<IClassFactory> class_factory(REFCLSID clsid) const;
  HRESULT get_class_object(REFCLSID clsid, REFIID iid, void** object) const;
  HRESULT can_unload() const;
  HRESULT register_server() const;
  HRESULT unregister_server() const;
  HRESULT install(bool install, const wchar_t* command_line) const;

  /// The type library inside the module.
  Ref<ITypeLib> type_library() const;

 private:
  template <class Function>
  Function* entry(const char* name) const;

  HMODULE handle_;
};

/// The folder of the test program, with its trailing backslash.
std::wstring program_folder();

/// An empty folder of this process, removed with its files at the end of the program.
std::wstring scratch_folder();

}  // namespace pv::test
