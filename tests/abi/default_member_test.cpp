// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Objects of a host where a plain value is wanted: their default member counts.

#include <gtest/gtest.h>

#include <optional>

#include "com/boundary.h"
#include "com/variant.h"
#include "tests/support/dispatch_object.h"
#include "tests/support/object.h"
#include "tests/support/trapping_host.h"

namespace pv::test {
namespace {

// Has a default member and no other.
class Holder final : public DispatchObject {
 public:
  explicit Holder(HRESULT answer, Value value = {}) : answer_(answer), value_(std::move(value)) {}
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    EXPECT_EQ(id, DISPID_VALUE);
    EXPECT_TRUE(flags & DISPATCH_PROPERTYGET);
    seen_ = FloatingPointControl::current();
    if (SUCCEEDED(answer_)) *result = Value(value_).detach();
    return answer_;
  }
  const FloatingPointControl& seen() const { return seen_; }

 protected:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }

 private:
  const HRESULT answer_;
  const Value value_;
  FloatingPointControl seen_;
};

// Its default member is the object itself.
class Circle final : public DispatchObject {
 public:
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    *result = Value(static_cast<IDispatch*>(this)).detach();
    return S_OK;
  }

 protected:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }
};

Value holder_of(Value value) { return Value(new Holder(S_OK, std::move(value))); }

std::optional<ErrorCode> error_of_conversion(const Value& value) {
  try {
    to_double(value);
  } catch (const automation_error& error) {
    return error.code();
  }
  return std::nullopt;
}

TEST(DefaultMember, IsTheValueOfItsObject) {
  EXPECT_EQ(to_long(holder_of(5)), 5);
  EXPECT_EQ(to_long(holder_of(holder_of(5))), 5);
  EXPECT_EQ(to_text(holder_of(L"text")), L"text");
  Value variable = holder_of(true);
  EXPECT_TRUE(to_bool(by_ref(variable)));
}

TEST(DefaultMember, ThatFailsIsAMismatchOfTypes) {
  for (const HRESULT answer : {DISP_E_MEMBERNOTFOUND, E_FAIL, DISP_E_EXCEPTION, DISP_E_OVERFLOW})
    EXPECT_EQ(error_of_conversion(Value(new Holder(answer))), ErrorCode::kTypeMismatch);
  EXPECT_EQ(error_of_conversion(holder_of(L"text")), ErrorCode::kTypeMismatch);
  EXPECT_EQ(error_of_conversion(Value(new Circle)), ErrorCode::kTypeMismatch);
  EXPECT_EQ(error_of_conversion(holder_of(Value::nothing())), ErrorCode::kTypeMismatch);
  EXPECT_EQ(error_of_conversion(holder_of(Value::null())), ErrorCode::kInvalidNull);
}

// Whose lack of memory it is, a bare code does not tell; it is not the library's.
TEST(DefaultMember, MayLackMemory) {
  for (const HRESULT answer : {E_OUTOFMEMORY, static_cast<HRESULT>(0x800A0007)}) {
    const Value object(new Holder(answer));
    EXPECT_EQ(guarded(L"CProbe", "Value", [&] { to_double(object); }), answer);
    EXPECT_FALSE(attempt([&] { to_double(object); }));
    const Object item = Object::create(L"pvItems32.CItem");
    EXPECT_EQ(item.try_put(L"ItemID", object).result, answer);
  }
  SetErrorInfo(0, nullptr);
}

// And the library converts in its own, where nothing traps.
TEST(DefaultMember, IsAskedInTheFloatingPointStateOfTheHost) {
  const Ref<Holder> holder(new Holder(S_OK, L"1e400"));
  const Value object(holder.get());
  const Object item = Object::create(L"pvItems32.CItem");
  const TrappingHost host(kTrapsRoundingUp);
  EXPECT_NE(guarded(L"CProbe", "Value", [&] { to_double(object); }), S_OK);
  EXPECT_EQ(holder->seen(), kTrapsRoundingUp);
  SetErrorInfo(0, nullptr);
}

TEST(DefaultMember, OfAnArgumentIsAskedInTheFloatingPointStateOfTheHost) {
  const Ref<Holder> holder(new Holder(S_OK, 7));
  const Value object(holder.get());
  const Object item = Object::create(L"pvItems32.CItem");
  {
    const TrappingHost host(kTrapsRoundingUp);
    item.put(L"ItemID", object);
  }
  EXPECT_EQ(item.get(L"ItemID"), 7);
  EXPECT_EQ(holder->seen(), kTrapsRoundingUp);
}

}  // namespace
}  // namespace pv::test
