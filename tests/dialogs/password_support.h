// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The password dialog as the tests use it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {

using Calls = std::vector<HostObject::Call>;

constexpr wchar_t kForm[] = L"frmPW";
constexpr int kOk = 1000, kCancel = 1001, kModify = 1002;
constexpr int kLabel = 1010, kNewLabel = 1011, kRepeatLabel = 1012;
constexpr int kEntry = 1020, kNew = 1021, kRepeat = 1022;
constexpr int kFields[] = {kEntry, kNew, kRepeat};
constexpr DISPID kSetEvent = 1, kResetEvent = 2;

/// The one connection point of a source.
inline Ref<IConnectionPoint> only_point(const test::Object& source) {
  Ref<IEnumConnectionPoints> points;
  source.as<IConnectionPointContainer>()->EnumConnectionPoints(points.put());
  Ref<IConnectionPoint> point;
  points->Next(1, point.put(), nullptr);
  return point;
}

class PasswordDialog : public testing::Test {
 protected:
  PasswordDialog() {
    utility_.set_language(1);
    application_.answer(L"Title", L"Kalvos 7");
    utility_.object().set(L"Application", application_.get());
    point_ = only_point(store_);
    point_->Advise(listener_.get(), &cookie_);
    store_.call(L"Add", L"first", L"");
    store_.call(L"Add", L"Secret", L"");
  }
  ~PasswordDialog() override {
    point_->Unadvise(cookie_);
    utility_.object().set(L"Application", test::Value::nothing());
    utility_.set_language(1);
  }

  test::Object password(int index) const { return store_.get_object(L"Item", index); }
  std::wstring current(int index) const { return password(index).get(L"Current").text(); }
  void open_second() { password(2).put(L"Current", L"Secret"); }
  Calls raised() {
    Calls calls = listener_.calls();
    listener_.forget_calls();
    return calls;
  }

  /// Edits the second password.
  bool edit(const Script& script) {
    bool answer = false;
    drive(
        kForm, [&] { answer = store_.call(L"Edit", 2).boolean(); }, script);
    return answer;
  }

  static void enter(const Dialog& dialog, const std::wstring& text) {
    dialog.type(kEntry, text);
    dialog.click(kOk);
  }
  static void open_modify_mode(const Dialog& dialog) {
    dialog.click(kModify);
    EXPECT_TRUE(wait_until([&] { return dialog.shows(kRepeat); }));
    dialog.drain();
  }

  Utility utility_;
  HostObject application_;
  HostObject listener_;
  test::Object store_ = test::Object::create(L"pvItems32.CPasswords");
  Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace pv::dialogs_test
