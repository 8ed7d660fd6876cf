// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/fake_object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <sstream>

#include "platform/letter_case.h"

namespace pv::test {

Expected Expected::reference_to(Value value) {
  Expected expected(std::move(value));
  expected.by_reference_ = true;
  return expected;
}

std::string Expected::mismatch(const VARIANT& given, bool for_script) const {
  if (!value_) return {};
  std::ostringstream text;
  const Value plain(dereferenced(given));
  if (!(plain == *value_)) {
    text << "is ";
    PrintTo(plain, &text);
    text << ", expected ";
    PrintTo(*value_, &text);
  } else if (((given.vt & VT_BYREF) != 0) != by_reference_) {
    text << (by_reference_ ? "comes by value" : "comes by reference");
  } else if (by_reference_ && (given.vt == (VT_BYREF | VT_VARIANT)) != for_script) {
    text << "comes by a reference of type " << given.vt;
  }
  return text.str();
}

Answer& Answer::returns(Value value) {
  result_ = std::move(value);
  return *this;
}
Answer& Answer::sets(std::size_t position, Value value) {
  changes_.push_back({position, std::move(value)});
  return *this;
}
Answer& Answer::raises(HRESULT code, std::wstring source, std::wstring description) {
  error_ = RaisedError{code, std::move(source), std::move(description)};
  return *this;
}
Answer& Answer::fails(HRESULT code) {
  code_ = code;
  return *this;
}
Answer& Answer::does(std::function<void()> action) {
  action_ = std::move(action);
  return *this;
}

namespace {

bool same_name(std::wstring_view left, std::wstring_view right) {
  return key_case().fold(left) == key_case().fold(right);
}

}  // namespace

/// The COM object behind a FakeObject; it may outlive it, and expects nothing then.
class FakeDispatch final : public DispatchObject {
 public:
  using DispatchObject::DispatchObject;

  enum class How { kCall, kGet, kPut, kSet };

  Answer& expect(How how, std::wstring member, std::vector<Expected> arguments) {
    knows(member);
    return calls_.emplace_back(Call{how, std::move(member), std::move(arguments), {}}).answer;
  }
  void knows(const std::wstring& member) {
    if (id_of(member) == DISPID_UNKNOWN) members_.push_back(member);
  }
  void verify() {
    for (const Call& call : calls_)
      ADD_FAILURE() << "expected call did not come: " << text_of(call);
    calls_.clear();
  }

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;

 private:
  struct Call {
    How how;
    std::wstring member;
    std::vector<Expected> arguments;
    Answer answer;
  };

  static How how_of(WORD flags) {
    if (flags & DISPATCH_PROPERTYPUTREF) return How::kSet;
    if (flags & DISPATCH_PROPERTYPUT) return How::kPut;
    return flags == DISPATCH_PROPERTYGET ? How::kGet : How::kCall;
  }
  static std::string text_of(How how, std::wstring_view member) {
    const char* const kinds[] = {"call ", "get ", "put ", "set "};
    return kinds[static_cast<int>(how)] + printable(member);
  }
  static std::string text_of(const Call& call) { return text_of(call.how, call.member); }

  DISPID id_of(std::wstring_view name) override {
    const auto found = std::find_if(members_.begin(), members_.end(),
                                    [&](const auto& member) { return same_name(member, name); });
    return found == members_.end() ? DISPID_UNKNOWN
                                   : static_cast<DISPID>(found - members_.begin() + 1);
  }
  std::wstring name_of(DISPID id) const {
    const bool known = id >= 1 && id <= static_cast<DISPID>(members_.size());
    return known ? members_[static_cast<std::size_t>(id - 1)] : L"?";
  }

  bool is_expected(How how, std::wstring_view member, WORD flags) const {
    if (calls_.empty() || !same_name(calls_.front().member, member)) return false;
    const bool method_or_get = calls_.front().how == How::kGet && (flags & DISPATCH_PROPERTYGET);
    return calls_.front().how == how || method_or_get;
  }
  void check_arguments(const Call& call, const DISPPARAMS& given) const {
    ASSERT_EQ(given.cArgs, call.arguments.size()) << "number of arguments of " << text_of(call);
    for (UINT i = 0; i < given.cArgs; ++i) {
      const std::string mismatch =
          call.arguments[i].mismatch(given.rgvarg[given.cArgs - 1 - i], is_script());
      EXPECT_TRUE(mismatch.empty()) << text_of(call) << ": argument " << i << " " << mismatch;
    }
  }
  std::vector<std::wstring> members_;
  std::deque<Call> calls_;
};

STDMETHODIMP FakeDispatch::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                  VARIANT* result, EXCEPINFO* exception, UINT*) {
  const How how = how_of(flags);
  const std::wstring member = name_of(id);
  // Objects that know no setting by reference are asked again for a plain put.
  if (how == How::kSet && is_expected(How::kPut, member, flags)) return DISP_E_MEMBERNOTFOUND;
  if (!is_expected(how, member, flags)) {
    ADD_FAILURE() << "unexpected: " << text_of(how, member)
                  << (calls_.empty() ? "" : ", expected: " + text_of(calls_.front()));
    return DISP_E_MEMBERNOTFOUND;
  }
  const Ref<FakeDispatch> alive(this);
  const Call call = std::move(calls_.front());
  calls_.pop_front();
  check_arguments(call, *parameters);
  const Answer& answer = call.answer;
  if (answer.action_) answer.action_();
  if (FAILED(answer.code_)) return answer.code_;
  if (answer.error_) return raise(*answer.error_, exception);
  for (const auto& [position, value] : answer.changes_) {
    if (position < parameters->cArgs) {
      change_argument(parameters->rgvarg[parameters->cArgs - 1 - position], value);
    }
  }
  if (result) *result = Value(answer.result_).detach();
  return S_OK;
}

FakeObject::FakeObject(Kind kind) : dispatch_(new FakeDispatch(kind)) {}
FakeObject::~FakeObject() { verify(); }

Answer& FakeObject::expect_call(std::wstring method, std::vector<Expected> arguments) {
  return dispatch_->expect(FakeDispatch::How::kCall, std::move(method), std::move(arguments));
}
Answer& FakeObject::expect_get(std::wstring property, std::vector<Expected> arguments) {
  return dispatch_->expect(FakeDispatch::How::kGet, std::move(property), std::move(arguments));
}
Answer& FakeObject::expect_put(std::wstring property, std::vector<Expected> arguments_and_value) {
  return dispatch_->expect(FakeDispatch::How::kPut, std::move(property),
                           std::move(arguments_and_value));
}
Answer& FakeObject::expect_set(std::wstring property, std::vector<Expected> arguments_and_object) {
  return dispatch_->expect(FakeDispatch::How::kSet, std::move(property),
                           std::move(arguments_and_object));
}
void FakeObject::knows(std::wstring member) { dispatch_->knows(member); }
void FakeObject::verify() { dispatch_->verify(); }
ULONG FakeObject::references() const { return references_of(get()) - 1; }
IDispatch* FakeObject::get() const { return dispatch_.get(); }

}  // namespace pv::test
