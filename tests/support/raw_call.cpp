// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/raw_call.h"

#include <cstring>

#include "com/dispatch/vtable_call.h"
#include "com/variant.h"

namespace pv::test {
namespace {

constexpr unsigned char kPoison = 0xCC;

void* payload_of(Value& value, const PlainType& type) {
  return type.type == VT_VARIANT ? static_cast<void*>(static_cast<VARIANT*>(&value)) : &value.lVal;
}

}  // namespace

RawCall::RawCall(const TypeInfo& owner, const FunctionInfo& function, std::vector<Value> inputs)
    : slot_(static_cast<std::size_t>(function.description().oVft) / sizeof(void*)),
      inputs_(std::move(inputs)),
      has_result_(function.has_result()) {
  for (const ParameterInfo& input : function.inputs()) {
    types_.push_back(plain_type_of(owner, input.type));
  }
  if (has_result_) result_type_ = plain_type_of(owner, function.parameters().back().type);
  std::memset(result_, kPoison, sizeof result_);
}

HRESULT RawCall::on(IUnknown* object) {
  CallWords words;
  words.push(object);
  for (std::size_t i = 0; i < inputs_.size(); ++i) {
    void* const payload = payload_of(inputs_[i], types_[i]);
    if (types_[i].pointers == 0) {
      words.push_value(payload, size_of(types_[i].type));
    } else {
      words.push(null_positions_.contains(i) ? nullptr : payload);
    }
  }
  if (has_result_) words.push(null_result_ ? nullptr : result_);
  SetErrorInfo(0, nullptr);
  answer_ = call_vtable(object, slot_, words);
  return answer_;
}

Value RawCall::take_result() {
  Value taken;
  if (!has_result_ || null_result_) return taken;
  if (result_type_.type == VT_VARIANT) {
    std::memcpy(static_cast<VARIANT*>(&taken), result_, sizeof(VARIANT));
  } else {
    taken.vt = result_type_.type;
    std::memcpy(&taken.lVal, result_, size_of(result_type_.type));
  }
  return taken;
}

bool RawCall::is_cleared() const {
  if (result_type_.type == VT_VARIANT) {
    return reinterpret_cast<const VARIANT*>(result_)->vt == VT_EMPTY;
  }
  const unsigned char nothing[sizeof result_] = {};
  return std::memcmp(result_, nothing, size_of(result_type_.type)) == 0;
}

std::string RawCall::fault_of_result() {
  if (!has_result_ || null_result_) return {};
  if (FAILED(answer_)) return is_cleared() ? "" : "the result is not cleared after a failure";
  return fault_of_success();
}

std::string RawCall::fault_of_success() {
  unsigned char poison[sizeof result_];
  std::memset(poison, kPoison, sizeof poison);
  if (std::memcmp(result_, poison, size_of(result_type_.type)) == 0) return "no result was set";
  if (result_type_.type == VT_VARIANT) {
    return FAILED(VariantClear(reinterpret_cast<VARIANT*>(result_))) ? "no proper value" : "";
  }
  const Value result = take_result();
  if (result_type_.type != VT_BOOL) return {};
  const bool proper = result.boolVal == VARIANT_TRUE || result.boolVal == VARIANT_FALSE;
  return proper ? "" : "a Boolean that is not -1 or 0";
}

}  // namespace pv::test
