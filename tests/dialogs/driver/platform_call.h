// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <windows.h>

namespace pv::dialogs_test {

/// Puts a function of the test in the place of one that the library imports, as long as it lives.
class PlatformCall {
 public:
  template <class Function>
  PlatformCall(const char* name, Function* replacement)
      : PlatformCall(name, reinterpret_cast<ULONG_PTR>(replacement)) {}
  ~PlatformCall();
  PlatformCall(const PlatformCall&) = delete;
  PlatformCall& operator=(const PlatformCall&) = delete;

 private:
  PlatformCall(const char* name, ULONG_PTR replacement);

  ULONG_PTR* slot_;
  ULONG_PTR former_ = 0;
};

}  // namespace pv::dialogs_test
