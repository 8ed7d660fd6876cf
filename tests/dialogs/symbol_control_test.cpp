// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The symbol editor with a registered picture-editor control.

#include <gtest/gtest.h>

#include "tests/dialogs/driver/dialog_driver.h"
#include "tests/dialogs/driver/picture_control.h"

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;
using Calls = std::vector<std::wstring>;
using Kind = RegisteredPictureControl::Kind;

constexpr int kOk = 1000, kCancel = 1001, kControl = 1100, kGrid = 1106;

class SymbolControl : public testing::Test {
 protected:
  SymbolControl() { item_.put(L"Symbol", L""); }

  bool edit(const Script& script) {
    bool answer = false;
    drive(
        L"frmSymbolEdit",
        [&] { answer = utility_.object().call(L"ItemSymbolEdit", item_).boolean(); }, script);
    return answer;
  }
  // A picture loads the form, which stays; an edit unloads it.
  void unload() {
    edit([](const Dialog& dialog) { dialog.click(kCancel); });
  }

  Utility utility_;
  Device device_;
  Object item_ = device_.add_item(77, 0);
};

TEST_F(SymbolControl, StartsANewSymbolAndGivesItsTextOnOk) {
  const RegisteredPictureControl control;
  EXPECT_TRUE(edit([&](const Dialog& dialog) {
    EXPECT_EQ(control.log().calls,
              (Calls{L"InitNew", L"Setting1=0", L"Setting2=15", L"NewSymbol", L"Symbol=new"}));
    EXPECT_TRUE(IsChild(dialog.control(kControl), control.log().window));
    EXPECT_EQ(dialog.control(kGrid), nullptr);
    EXPECT_EQ(dialog.layout_faults(), "");
    dialog.click(kOk);
  }));
  EXPECT_EQ(item_.get(L"Symbol"), L"new");
  EXPECT_EQ(control.log().activations, 1);
  EXPECT_EQ(control.log().living, 0);
  EXPECT_EQ(control.log().window, nullptr);
}

TEST_F(SymbolControl, LoadsTheSymbolAndKeepsItOnCancel) {
  const RegisteredPictureControl control;
  item_.put(L"Symbol", L"any text: 1|2");
  EXPECT_FALSE(edit([&](const Dialog& dialog) {
    EXPECT_EQ(control.log().symbol, L"any text: 1|2");
    EXPECT_EQ(control.log().calls.back(), L"Symbol=any text: 1|2");
    dialog.click(kCancel);
  }));
  EXPECT_EQ(item_.get(L"Symbol"), L"any text: 1|2");
  EXPECT_EQ(control.log().living, 0);
}

TEST_F(SymbolControl, FillsItsPartOfTheForm) {
  const RegisteredPictureControl control;
  edit([&](const Dialog& dialog) {
    const auto fills = [&] {
      RECT part{};
      RECT inner{};
      GetClientRect(dialog.control(kControl), &part);
      GetClientRect(control.log().window, &inner);
      return part.right == inner.right && part.bottom == inner.bottom && part.right > 0;
    };
    EXPECT_TRUE(fills());
    // 80 by 60 millimetres at 96 dpi, at least.
    RECT part{};
    GetClientRect(dialog.control(kControl), &part);
    EXPECT_NEAR(part.right, 302, 1);
    EXPECT_NEAR(part.bottom, 227, 1);
    SetWindowPos(dialog.window(), nullptr, 0, 0, 700, 600,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    dialog.drain();
    EXPECT_TRUE(fills());
    EXPECT_EQ(dialog.layout_faults(), "");
  });
}

TEST_F(SymbolControl, TakesPartInTheTabOrderAndGetsItsKeysFirst) {
  const RegisteredPictureControl control;
  EXPECT_TRUE(edit([&](const Dialog& dialog) {
    const HWND inner = control.log().window;
    const auto has_focus = [&] {
      GUITHREADINFO info{};
      info.cbSize = sizeof info;
      GetGUIThreadInfo(GetWindowThreadProcessId(dialog.window(), nullptr), &info);
      return info.hwndFocus == inner;
    };
    EXPECT_TRUE(has_focus());
    stroke_key(VK_TAB);
    EXPECT_TRUE(wait_until([&] { return dialog.focused() == kOk; }));
    stroke_key(VK_TAB, VK_SHIFT);
    EXPECT_TRUE(wait_until(has_focus));
    stroke_key('A');
    EXPECT_TRUE(wait_until([&] { return control.log().typed == L"a"; }));
    stroke_key(VK_RETURN, VK_SHIFT);
    dialog.drain();
    EXPECT_TRUE(dialog.open());
    stroke_key(VK_RETURN);  // not the control's: the dialog's OK
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_FALSE(control.log().accelerators.empty());
}

TEST_F(SymbolControl, MakesPicturesWithoutAWindow) {
  const RegisteredPictureControl control;
  item_.put(L"Symbol", L"some");
  const Object picture = utility_.object().call_object(L"ItemSymbolGetPicture", item_);
  EXPECT_TRUE(picture);
  EXPECT_EQ(control.log().calls.back(), L"SymbolPicture some 32");
  EXPECT_EQ(control.log().activations, 0);
  unload();
  EXPECT_EQ(control.log().living, 0);
}

TEST_F(SymbolControl, OnePictureAfterTheOtherComesFromTheSameControl) {
  const RegisteredPictureControl control;
  item_.put(L"Symbol", L"some");
  for (int i = 0; i < 5; ++i) utility_.object().call(L"ItemSymbolGetPicture", item_);
  EXPECT_EQ(control.log().living, 1);
  unload();
}

TEST_F(SymbolControl, AFailingControlGivesNothingForAPicture) {
  const RegisteredPictureControl control(Kind::kFails);
  item_.put(L"Symbol", L"some");
  EXPECT_TRUE(utility_.object().call(L"ItemSymbolGetPicture", item_).is_nothing());
  unload();
}

TEST_F(SymbolControl, WithoutAUsableControlTheLibrarysOwnEditorTakesItsPlace) {
  for (const Kind kind : {Kind::kCannotBeCreated, Kind::kWithoutPictures}) {
    const RegisteredPictureControl control(kind);
    item_.put(L"Symbol", L"of the control");
    EXPECT_TRUE(edit([&](const Dialog& dialog) {
      EXPECT_NE(dialog.control(kGrid), nullptr);
      dialog.click(kOk);
    }));
    EXPECT_EQ(item_.get(L"Symbol"), L"of the control");
    EXPECT_EQ(control.log().living, 0);
  }
}

TEST_F(SymbolControl, ShowsInARowLeaveNothing) {
  const RegisteredPictureControl control;
  for (int i = 0; i < 30; ++i) {
    EXPECT_FALSE(edit([](const Dialog& dialog) { dialog.click(kCancel); }));
    EXPECT_EQ(control.log().living, 0);
  }
  EXPECT_EQ(control.log().activations, 30);
}

}  // namespace
}  // namespace pv::dialogs_test
