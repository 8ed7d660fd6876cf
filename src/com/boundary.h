// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <utility>

#include "com/automation.h"
#include "com/failure.h"
#include "com/floating_point.h"

namespace pv {

/// Turns the exception that is being handled into an HRESULT and the thread's error information.
/// `class_name` and `function`, the name of the C++ function, say which member failed. This is the
/// only such place.
HRESULT report_current_exception(const wchar_t* class_name, const char* function) noexcept;

/// Reports a null out-pointer.
HRESULT report_null_pointer(const wchar_t* class_name, const char* function) noexcept;

/// The client's own variable, for a member that may change it. Error: E_POINTER for null.
template <class T>
T* required(T* variable) {
  if (!variable) throw com_failure(E_POINTER);
  return variable;
}

/// Runs the body of an automation method that computes with no floating-point numbers, in the
/// host's own floating-point state: no exception leaves it, and the error information of an earlier
/// call is cleared on entry.
template <class Body>
HRESULT guarded_plain(const wchar_t* class_name, const char* function, Body&& body) noexcept {
  SetErrorInfo(0, nullptr);
  try {
    body();
    return S_OK;
  } catch (...) {
    return report_current_exception(class_name, function);
  }
}

/// The same for any body: the host's floating-point state does not matter.
template <class Body>
HRESULT guarded(const wchar_t* class_name, const char* function, Body&& body) noexcept {
  const FloatingPointScope masked;
  return guarded_plain(class_name, function, std::forward<Body>(body));
}

}  // namespace pv
