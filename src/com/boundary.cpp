// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/boundary.h"

#include <new>
#include <string_view>

#include "com/module.h"

namespace pv {
namespace {

// "get_Count" becomes "Count".
std::wstring member_name(std::string_view name) {
  for (std::string_view prefix : {"get_", "putref_", "put_"}) {
    if (name.starts_with(prefix)) {
      name.remove_prefix(prefix.size());
      break;
    }
  }
  return std::wstring(name.begin(), name.end());
}

// The number of an error counts more than its text, for which there may be no memory.
template <class Text>
HRESULT report(const wchar_t* class_name, const char* function, HRESULT result, Text&& text) {
  Ref<IErrorInfo> info;
  try {
    const std::wstring name(class_name);
    info = make_error_info(library().name + (L"." + name),
                           name + L"." + member_name(function) + L": " + text());
  } catch (const std::bad_alloc&) {
  }
  SetErrorInfo(0, info.get());
  return result;
}

std::wstring system_text(HRESULT result) {
  wchar_t text[256] = L"";
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                     static_cast<DWORD>(result), 0, text, ARRAYSIZE(text), nullptr);
  std::wstring_view trimmed(text, length);
  while (!trimmed.empty() && (trimmed.back() == L'\n' || trimmed.back() == L'\r')) {
    trimmed.remove_suffix(1);
  }
  return trimmed.empty() ? L"Automation error" : std::wstring(trimmed);
}

HRESULT report_failure(const wchar_t* class_name, const char* function,
                       const com_failure& failure) {
  if (!failure.info()) {
    return report(class_name, function, failure.result(),
                  [&] { return system_text(failure.result()); });
  }
  SetErrorInfo(0, failure.info().get());
  return failure.result();
}

HRESULT report_error(const wchar_t* class_name, const char* function,
                     const automation_error& error) {
  return report(class_name, function, hresult_of(error.code()), [&] {
    const std::wstring what = error_text(error.code());
    return error.detail().empty() ? what : what + L" (" + error.detail() + L")";
  });
}

HRESULT report_unguarded(const wchar_t* class_name, const char* function) {
  try {
    throw;
  } catch (const automation_error& error) {
    return report_error(class_name, function, error);
  } catch (const com_failure& failure) {
    return report_failure(class_name, function, failure);
  } catch (const std::bad_alloc&) {
    return hresult_of(ErrorCode::kOutOfMemory);
  } catch (const std::exception& error) {
    const std::string_view what(error.what());
    return report(class_name, function, E_FAIL,
                  [&] { return std::wstring(what.begin(), what.end()); });
  }
}

}  // namespace

HRESULT report_current_exception(const wchar_t* class_name, const char* function) noexcept {
  try {
    return report_unguarded(class_name, function);
  } catch (...) {
    return E_FAIL;
  }
}

HRESULT report_null_pointer(const wchar_t* class_name, const char* function) noexcept {
  return report(class_name, function, E_POINTER,
                [] { return std::wstring(L"a pointer for a result is null"); });
}

}  // namespace pv
