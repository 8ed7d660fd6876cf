// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <set>
#include <string>
#include <vector>

#include "tests/support/type_library.h"
#include "tests/support/value.h"

namespace pv::test {

/// One call of a member through the vtable, as compiled clients make it.
class RawCall {
 public:
  /// `inputs` hold a value for every parameter but the result, of the parameter's type.
  RawCall(const TypeInfo& owner, const FunctionInfo& function, std::vector<Value> inputs);

  /// Passes a null pointer for a by-reference parameter, by its position among the inputs.
  void pass_null(std::size_t position) { null_positions_.insert(position); }
  void pass_null_result() { null_result_ = true; }

  /// Calls the object's interface of the type that the member belongs to.
  HRESULT on(IUnknown* object);

  /// After the call: what the members left in them.
  const std::vector<Value>& inputs() const { return inputs_; }

  /// After the call, one of these. The result, which then belongs to the caller; Empty for none.
  Value take_result();
  /// What is wrong with the result, which was poisoned before; empty when it is cleared after a
  /// failure and a proper value of its type after success. Frees the result.
  std::string fault_of_result();

 private:
  std::string fault_of_success();
  bool is_cleared() const;

  std::size_t slot_;
  std::vector<Value> inputs_;
  std::vector<PlainType> types_;
  std::set<std::size_t> null_positions_;
  PlainType result_type_;
  bool has_result_;
  bool null_result_ = false;
  HRESULT answer_ = S_OK;
  alignas(8) unsigned char result_[sizeof(VARIANT)];
};

}  // namespace pv::test
