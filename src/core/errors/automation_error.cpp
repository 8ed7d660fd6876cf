// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/errors/automation_error.h"

namespace pv {

std::wstring error_text(ErrorCode code) {
  switch (code) {
    case ErrorCode::kInvalidCall:
      return L"Invalid procedure call or argument";
    case ErrorCode::kOverflow:
      return L"Overflow";
    case ErrorCode::kOutOfMemory:
      return L"Out of memory";
    case ErrorCode::kSubscript:
      return L"Subscript out of range";
    case ErrorCode::kDivisionByZero:
      return L"Division by zero";
    case ErrorCode::kTypeMismatch:
      return L"Type mismatch";
    case ErrorCode::kOutOfStack:
      return L"Out of stack space";
    case ErrorCode::kObjectNotSet:
      return L"Object variable not set";
    case ErrorCode::kInvalidNull:
      return L"Invalid use of Null";
    case ErrorCode::kNoSuchMember:
      return L"Object doesn't support this property or method";
    case ErrorCode::kWrongArguments:
      return L"Wrong number of arguments or invalid property assignment";
    case ErrorCode::kKeyInUse:
      return L"This key is already associated with an element of this collection";
  }
  return L"Automation error";
}

}  // namespace pv
