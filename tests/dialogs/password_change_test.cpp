// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The password dialog: changing an open password.

#include "tests/dialogs/password_support.h"

#include <gtest/gtest.h>

namespace pv::dialogs_test {
namespace {

TEST_F(PasswordDialog, OnlyAnOpenPasswordCanBeModified) {
  edit([](const Dialog& dialog) { EXPECT_FALSE(dialog.enabled(kModify)); });
  open_second();
  edit([](const Dialog& dialog) {
    EXPECT_TRUE(dialog.enabled(kModify));
    EXPECT_EQ(dialog.text(kEntry), L"Secret");
    EXPECT_EQ(dialog.selection(kEntry), (std::pair{0, 6}));
  });
}

TEST_F(PasswordDialog, APasswordWithoutReferenceIsOpen) {
  password(2).put(L"Reference", L"");
  edit([](const Dialog& dialog) {
    EXPECT_TRUE(dialog.enabled(kModify));
    EXPECT_EQ(dialog.text(kEntry), L"");
  });
}

TEST_F(PasswordDialog, ModifyingAsksForTheNewPasswordTwice) {
  open_second();
  EXPECT_TRUE(edit([](const Dialog& dialog) {
    open_modify_mode(dialog);
    for (const int id : {kNew, kRepeat, kNewLabel, kRepeatLabel}) EXPECT_TRUE(dialog.shows(id));
    EXPECT_FALSE(dialog.enabled(kModify));
    EXPECT_EQ(dialog.focused(), kNew);
    EXPECT_TRUE(GetWindowLongW(dialog.control(kEntry), GWL_STYLE) & ES_READONLY);
    dialog.type(kNew, L"changed");
    dialog.type(kRepeat, L"changed");
    dialog.click(kOk);
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(current(2), L"changed");
  EXPECT_EQ(password(2).get(L"Reference"), L"changed");
  EXPECT_EQ(password(1).get(L"Reference"), L"first");
  EXPECT_EQ(raised(), Calls{}) << "a change is no event";
}

TEST_F(PasswordDialog, DifferentNewTextsKeepItOpen) {
  open_second();
  const std::wstring repeat = utility_.text(611);
  EXPECT_FALSE(edit([&](const Dialog& dialog) {
    open_modify_mode(dialog);
    dialog.type(kNew, L"changed");
    dialog.type(kRepeat, L"Changed");
    for (int i = 0; i < 4; ++i) {
      dialog.click(kOk);
      const Message message = answer_message(dialog);
      EXPECT_EQ(message.prompt, repeat);
      EXPECT_EQ(message.title, L"Kalvos 7");
      EXPECT_TRUE(message.stop_icon);
      EXPECT_TRUE(wait_until([&] { return dialog.focused() == kRepeat; }));
      EXPECT_TRUE(dialog.open());
    }
    dialog.click(kCancel);
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(password(2).get(L"Reference"), L"Secret");
  EXPECT_EQ(current(2), L"Secret");
}

TEST_F(PasswordDialog, TwoEmptyTextsRemoveThePassword) {
  open_second();
  EXPECT_TRUE(edit([](const Dialog& dialog) {
    open_modify_mode(dialog);
    dialog.click(kOk);
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(password(2).get(L"Reference"), L"");
  EXPECT_EQ(password(2).call(L"Status"), true);
}

TEST_F(PasswordDialog, CtrlShowsAllThreeTextsWhileItIsHeld) {
  open_second();
  edit([](const Dialog& dialog) {
    open_modify_mode(dialog);
    const auto masks_are = [&](wchar_t mask) {
      return wait_until([&] {
        return dialog.ask(kEntry, EM_GETPASSWORDCHAR) == mask &&
               dialog.ask(kNew, EM_GETPASSWORDCHAR) == mask &&
               dialog.ask(kRepeat, EM_GETPASSWORDCHAR) == mask;
      });
    };
    EXPECT_TRUE(masks_are(L'*'));
    dialog.hold_key(VK_SHIFT);
    dialog.drain();
    EXPECT_TRUE(masks_are(L'*'));
    dialog.hold_key(VK_CONTROL);
    EXPECT_TRUE(masks_are(L'\0'));
    dialog.release_key(VK_SHIFT);
    dialog.drain();
    EXPECT_TRUE(masks_are(L'\0'));
    dialog.release_key(VK_CONTROL);
    EXPECT_TRUE(masks_are(L'*'));
  });
}

TEST_F(PasswordDialog, AnotherWindowGettingActiveHidesTheTexts) {
  edit([](const Dialog& dialog) {
    dialog.hold_key(VK_CONTROL);
    EXPECT_TRUE(wait_until([&] { return dialog.ask(kEntry, EM_GETPASSWORDCHAR) == 0; }));
    const HostWindow other;
    SetForegroundWindow(other.window());
    EXPECT_TRUE(wait_until([&] { return dialog.ask(kEntry, EM_GETPASSWORDCHAR) == L'*'; }));
  });
}

TEST_F(PasswordDialog, ARealCtrlKeyShowsTheTextUntilItIsReleasedOrTheFocusGoes) {
  const auto masked = [](const Dialog& dialog) {
    return dialog.ask(kEntry, EM_GETPASSWORDCHAR) == L'*';
  };
  edit([&](const Dialog& dialog) {
    dialog.type(kEntry, L"typed");
    EXPECT_TRUE(dialog.stroke(VK_END, 0, [&] { return dialog.selection(kEntry).first == 5; }));
    keybd_event(VK_CONTROL, 0, 0, 0);
    EXPECT_TRUE(wait_until([&] { return !masked(dialog); }));
    keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
    EXPECT_TRUE(wait_until([&] { return masked(dialog); }));

    keybd_event(VK_CONTROL, 0, 0, 0);
    EXPECT_TRUE(wait_until([&] { return !masked(dialog); }));
    const HostWindow other;
    SetForegroundWindow(other.window());
    EXPECT_TRUE(wait_until([&] { return masked(dialog); }));
    keybd_event(VK_CONTROL, 0, KEYEVENTF_KEYUP, 0);
    EXPECT_EQ(dialog.text(kEntry), L"typed");
  });
}

TEST_F(PasswordDialog, TheLockedFieldHasTheColourOfButtonsTheOthersThatOfWindows) {
  open_second();
  edit([](const Dialog& dialog) {
    const auto colour = [&](int id) {
      const HDC context = GetDC(dialog.control(id));
      RECT inside{};
      GetClientRect(dialog.control(id), &inside);
      const COLORREF found = GetPixel(context, inside.right - 4, inside.bottom / 2);
      ReleaseDC(dialog.control(id), context);
      return found;
    };
    const auto becomes = [&](int id, int system_colour) {
      return wait_until([&] { return colour(id) == GetSysColor(system_colour); });
    };
    EXPECT_TRUE(becomes(kEntry, COLOR_WINDOW));
    open_modify_mode(dialog);
    EXPECT_TRUE(becomes(kEntry, COLOR_BTNFACE));
    EXPECT_TRUE(becomes(kNew, COLOR_WINDOW));
    EXPECT_TRUE(becomes(kRepeat, COLOR_WINDOW));
  });
}

TEST_F(PasswordDialog, RelabellingKeepsTextsAndMode) {
  const HostWindow host;
  open_second();
  utility_.set_language(3);
  const std::wstring label = utility_.text(603);
  utility_.set_language(1);
  edit([&](const Dialog& dialog) {
    open_modify_mode(dialog);
    dialog.type(kNew, L"typed");
    host.send([&] { utility_.set_language(3); });
    EXPECT_EQ(dialog.caption(kNewLabel), label);
    EXPECT_EQ(dialog.text(kNew), L"typed");
    EXPECT_TRUE(dialog.shows(kRepeat));
    EXPECT_FALSE(dialog.enabled(kModify));
    EXPECT_EQ(dialog.layout_faults(), "");
  });
}

}  // namespace
}  // namespace pv::dialogs_test
