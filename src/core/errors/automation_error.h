// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

namespace pv {

/// Run-time errors as automation clients know them; scripts see the bare number in Err.Number.
enum class ErrorCode : std::int32_t {
  kInvalidCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscript = 9,
  kDivisionByZero = 11,
  kTypeMismatch = 13,
  kOutOfStack = 28,
  kObjectNotSet = 91,
  kInvalidNull = 94,
  kNoSuchMember = 438,
  kWrongArguments = 450,
  kKeyInUse = 457,
};

/// The HRESULT that carries a run-time error to automation clients.
constexpr std::int32_t hresult_of(ErrorCode code) {
  return static_cast<std::int32_t>(0x800A0000u + static_cast<std::uint32_t>(code));
}

/// What a run-time error means, without its context.
std::wstring error_text(ErrorCode code);

/// A run-time error on its way to the caller. `detail` names the value that caused it.
class automation_error : public std::exception {
 public:
  explicit automation_error(ErrorCode code, std::wstring detail = {})
      : code_(code), detail_(std::move(detail)) {}
  ErrorCode code() const { return code_; }
  const std::wstring& detail() const { return detail_; }
  const char* what() const noexcept override { return "automation error"; }

 private:
  ErrorCode code_;
  std::wstring detail_;
};

}  // namespace pv
