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

/// Throws for a failure HRESULT: std::bad_alloc where memory ran out, else com_failure; the error
/// information of the thread goes along.
[[noreturn]] void raise_failure(HRESULT result);
inline void check(HRESULT result) {
  if (FAILED(result)) raise_failure(result);
}

/// Error information as automation clients read it.
Ref<IErrorInfo> make_error_info(const std::wstring& source, const std::wstring& description);

/// Runs a step whose run-time errors are ignored; tells whether it worked. Running out of memory
/// is not ignored: what would be missing then is no fallback that anybody asked for.
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
