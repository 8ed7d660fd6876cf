// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <exception>
#include <new>
#include <string>
#include <utility>

#include "com/automation.h"
#include "com/ref.h"
#include "core/errors/automation_error.h"

namespace pv {

/// A failed call on another object, with the error information that came with it. It passes the
/// boundary unchanged.
class com_failure : public std::exception {
 public:
  explicit com_failure(HRESULT result, Ref<IErrorInfo> info = {})
      : result_(result), info_(std::move(info)) {}
  HRESULT result() const { return result_; }
  const Ref<IErrorInfo>& info() const { return info_; }
  const char* what() const noexcept override { return "COM call failed"; }

 private:
  HRESULT result_;
  Ref<IErrorInfo> info_;
};

/// Whether a call answered that it ran out of memory, as an HRESULT or as a run-time error.
bool is_out_of_memory(HRESULT result);

/// Throws for the failure of a call on an object of a host or of a third party: com_failure with
/// the error information of the thread. That the object lacks memory is an error like any other.
[[noreturn]] void raise_foreign_failure(HRESULT result);

/// Throws for the failure of a call on the platform or on an object of our own: std::bad_alloc
/// where memory ran out, else as above.
[[noreturn]] void raise_failure(HRESULT result);
inline void check(HRESULT result) {
  if (FAILED(result)) raise_failure(result);
}

/// Error information as automation clients read it.
Ref<IErrorInfo> make_error_info(const std::wstring& source, const std::wstring& description,
                                const std::wstring& help_file = {}, DWORD help_context = 0);

/// Runs a step whose run-time errors are ignored; tells whether it worked. Running out of memory
/// is not ignored: what would be missing then is no fallback that anybody asked for. It is ignored
/// as an answer of a foreign object.
template <class Step>
bool attempt(Step&& step) {
  try {
    step();
    return true;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (...) {
    return false;
  }
}

}  // namespace pv
