// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The input box as the tests use it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {

constexpr wchar_t kForm[] = L"frmInputBox";
constexpr int kOk = 1000, kCancel = 1001, kPrompt = 1010, kScrolledPrompt = 1011;
constexpr int kText = 1020, kUnit = 1021, kDate = 1022, kTime = 1023;
constexpr double kSecond = 1.0 / 86400;

class InputBox : public testing::Test {
 protected:
  InputBox() {
    utility_.set_language(1);
    box_.call(L"CloseMe");
  }
  ~InputBox() override {
    box_.call(L"CloseMe");
    utility_.set_language(1);
  }

  template <class... A>
  bool ask(const Script& script, const wchar_t* method, const A&... arguments) {
    bool answer = false;
    drive(
        kForm, [&] { answer = box_.call(method, arguments...).boolean(); }, script);
    return answer;
  }
  test::Value value() const { return box_.get(L"Value"); }

  /// The moment that a box with this default gives when it is confirmed unchanged.
  test::Value moment_of(const test::Value& initial) {
    EXPECT_TRUE(
        ask([](const Dialog& dialog) { dialog.click(kOk); }, L"ShowMeDT", L"When?", L"", initial));
    return value();
  }

  static void enter(const Dialog& dialog, const std::wstring& text) {
    dialog.type(kText, text);
    dialog.click(kOk);
    EXPECT_TRUE(dialog.wait_closed());
  }

  Utility utility_;
  test::Object box_ = test::Object::create(L"pvItems32.CInputBox");
};

}  // namespace pv::dialogs_test
