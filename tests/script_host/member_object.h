// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/dispatch_object.h"
#include "tests/support/object.h"

namespace pv::test {

/// An object of the host whose members are functions, which scripts call by name. What a function
/// throws is the script's error.
class MemberObject final : public DispatchObject {
 public:
  /// In the order of the call, without references.
  using Arguments = std::vector<Value>;
  using Function = std::function<Value(const Arguments&)>;
  struct Member {
    std::wstring name;
    Function function;
  };

  explicit MemberObject(std::vector<Member> members) : members_(std::move(members)) {}

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 private:
  DISPID id_of(std::wstring_view name) override;

  const std::vector<Member> members_;
};

/// The argument at a position; throws CallFailed when it was not given.
const Value& required(const MemberObject::Arguments& arguments, std::size_t position);

}  // namespace pv::test
