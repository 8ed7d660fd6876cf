// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The password dialog: entering and closing a password of a store.

#include "tests/dialogs/password_support.h"

#include <gtest/gtest.h>

namespace pv::dialogs_test {
namespace {

using test::Value;

TEST_F(PasswordDialog, AsksForThePasswordInStars) {
  std::vector<std::wstring> texts;
  for (const long id : {601, 602, 200, 219, 201}) texts.push_back(utility_.text(id));
  edit([&](const Dialog& dialog) {
    EXPECT_EQ(dialog.title(), texts[0]);
    EXPECT_EQ(dialog.caption(kLabel), texts[1]);
    EXPECT_EQ(dialog.caption(kOk), texts[2]);
    EXPECT_EQ(dialog.caption(kModify), texts[3]);
    EXPECT_EQ(dialog.caption(kCancel), texts[4]);
    EXPECT_EQ(dialog.text(kEntry), L"");
    EXPECT_EQ(dialog.focused(), kEntry);
    for (const int field : kFields) EXPECT_EQ(dialog.ask(field, EM_GETPASSWORDCHAR), L'*');
    for (const int id : {kNew, kRepeat, kNewLabel, kRepeatLabel}) EXPECT_FALSE(dialog.shows(id));
    EXPECT_FALSE(GetWindowLongW(dialog.control(kEntry), GWL_STYLE) & ES_READONLY);
  });
}

TEST_F(PasswordDialog, TheRightPasswordOpens) {
  EXPECT_TRUE(edit([](const Dialog& dialog) {
    enter(dialog, L"Secret");
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(password(2).call(L"Status"), true);
  EXPECT_EQ(raised(), (Calls{{kSetEvent, Value(short{2})}}));
}

TEST_F(PasswordDialog, EnterPressesOk) {
  EXPECT_TRUE(edit([](const Dialog& dialog) {
    dialog.type(kEntry, L"Secret");
    dialog.press_key(VK_RETURN);
    EXPECT_TRUE(dialog.wait_closed());
  }));
}

TEST_F(PasswordDialog, AnEmptyEntryClosesThePassword) {
  open_second();
  EXPECT_TRUE(edit([](const Dialog& dialog) { enter(dialog, L""); }));
  EXPECT_EQ(current(2), L"");
  EXPECT_EQ(password(2).call(L"Status"), false);
  EXPECT_EQ(raised(), (Calls{{kResetEvent, Value(short{2})}}));
}

TEST_F(PasswordDialog, TheThirdWrongEntryEndsIt) {
  const std::wstring incorrect = utility_.text(610);
  EXPECT_FALSE(edit([&](const Dialog& dialog) {
    for (int i = 1; i <= 3; ++i) {
      ASSERT_TRUE(dialog.open()) << i;
      enter(dialog, L"secret");
      const Message message = answer_message(dialog);
      EXPECT_EQ(message.prompt, incorrect);
      EXPECT_EQ(message.title, L"Kalvos 7");
      EXPECT_TRUE(message.stop_icon);
      if (i < 3) {
        EXPECT_TRUE(wait_until([&] { return dialog.text(kEntry).empty(); }));
      }
    }
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(current(2), L"secret");
  EXPECT_EQ(raised(), Calls{});
}

TEST_F(PasswordDialog, TheRightPasswordAfterTwoWrongOnesOpensOnce) {
  EXPECT_TRUE(edit([](const Dialog& dialog) {
    for (const wchar_t* wrong : {L"a", L"b"}) {
      enter(dialog, wrong);
      answer_message(dialog);
    }
    enter(dialog, L"Secret");
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(raised(), (Calls{{kSetEvent, Value(short{2})}}));
}

TEST_F(PasswordDialog, TriesBeginAnewWithEveryShow) {
  for (int i = 0; i < 2; ++i) {
    EXPECT_FALSE(edit([](const Dialog& dialog) {
      for (const wchar_t* wrong : {L"a", L"b"}) {
        enter(dialog, wrong);
        answer_message(dialog);
        EXPECT_TRUE(dialog.open());
      }
      dialog.click(kCancel);
      EXPECT_TRUE(dialog.wait_closed());
    }));
  }
}

TEST_F(PasswordDialog, WithoutAnApplicationTheMessageHasTheTitleOfTheLibrary) {
  utility_.object().set(L"Application", Value::nothing());
  edit([](const Dialog& dialog) {
    enter(dialog, L"wrong");
    const std::wstring title = answer_message(dialog).title;
    EXPECT_NE(title, L"Kalvos 7");
    EXPECT_FALSE(title.empty());
  });
}

TEST_F(PasswordDialog, EveryWayOfCancellingGivesFalseAndKeepsThePassword) {
  const Script ways[] = {
      [](const Dialog& dialog) { dialog.click(kCancel); },
      [](const Dialog& dialog) { dialog.close(); },
      [](const Dialog& dialog) { dialog.press_close_box(); },
      [](const Dialog& dialog) { dialog.press_key(VK_ESCAPE); },
  };
  for (const Script& way : ways) {
    EXPECT_FALSE(edit([&](const Dialog& dialog) {
      dialog.type(kEntry, L"Secret");
      way(dialog);
      EXPECT_TRUE(dialog.wait_closed());
    }));
    EXPECT_EQ(current(2), L"");
  }
  EXPECT_EQ(raised(), Calls{});
}

TEST_F(PasswordDialog, AnUnknownPasswordShowsNothing) {
  for (const Value& index : {Value(0), Value(3), Value(-1), Value(L"x")}) {
    EXPECT_EQ(store_.call(L"Edit", index), false);
  }
  EXPECT_EQ(raised(), Calls{});
}

TEST_F(PasswordDialog, NothingOfTheLastShowIsLeft) {
  open_second();
  edit([](const Dialog& dialog) {
    open_modify_mode(dialog);
    dialog.type(kNew, L"rest");
    dialog.type(kRepeat, L"rest");
    dialog.hold_key(VK_CONTROL);
    dialog.drain();
  });
  password(2).put(L"Current", L"");
  EXPECT_FALSE(edit([](const Dialog& dialog) {
    for (const int field : kFields) {
      EXPECT_EQ(dialog.text(field), L"");
      EXPECT_EQ(dialog.ask(field, EM_GETPASSWORDCHAR), L'*');
    }
    EXPECT_FALSE(dialog.shows(kNew));
    EXPECT_FALSE(dialog.enabled(kModify));
    EXPECT_FALSE(GetWindowLongW(dialog.control(kEntry), GWL_STYLE) & ES_READONLY);
  }));
}

TEST_F(PasswordDialog, AskingForAnOpenPasswordShowsNothing) {
  open_second();
  EXPECT_EQ(store_.call(L"Status", 2), true);
}

TEST_F(PasswordDialog, AskingForAClosedPasswordShowsTheDialogOnce) {
  const auto ask = [&](const Script& script) {
    bool answer = false;
    drive(
        kForm, [&] { answer = store_.call(L"Status", 2).boolean(); }, script);
    return answer;
  };
  EXPECT_FALSE(ask([](const Dialog& dialog) { dialog.click(kCancel); }));
  EXPECT_EQ(current(2), L"");
  // Ended with OK, and closed all the same.
  EXPECT_FALSE(ask([](const Dialog& dialog) { enter(dialog, L""); }));
  EXPECT_TRUE(ask([](const Dialog& dialog) { enter(dialog, L"Secret"); }));
}

TEST_F(PasswordDialog, AskingWithoutANumberMeansTheFirstPassword) {
  drive(
      kForm, [&] { EXPECT_EQ(store_.call(L"Status"), true); },
      [](const Dialog& dialog) { enter(dialog, L"first"); });
  EXPECT_EQ(raised(), (Calls{{kSetEvent, Value(short{1})}}));
}

TEST_F(PasswordDialog, RealKeyStrokesEnterThePassword) {
  EXPECT_TRUE(edit([](const Dialog& dialog) {
    SetForegroundWindow(dialog.window());
    for (const WORD key : {WORD{'A'}, WORD{VK_BACK}}) stroke_key(key);
    EXPECT_TRUE(wait_until([&] { return dialog.text(kEntry).empty(); }));
    stroke_key('S', VK_SHIFT);
    for (const char key : {'E', 'C', 'R', 'E', 'T'}) stroke_key(static_cast<WORD>(key));
    EXPECT_TRUE(wait_until([&] { return dialog.text(kEntry) == L"Secret"; }));
    stroke_key(VK_RETURN);
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(raised(), (Calls{{kSetEvent, Value(short{2})}}));
}

TEST_F(PasswordDialog, AWrongEntryPutsTheFocusBackIntoTheField) {
  edit([](const Dialog& dialog) {
    dialog.type(kEntry, L"wrong");
    SendMessageW(dialog.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.control(kOk)),
                 TRUE);
    dialog.click(kOk);
    answer_message(dialog);
    EXPECT_TRUE(wait_until([&] { return dialog.focused() == kEntry; }));
  });
}

TEST_F(PasswordDialog, APasswordThatIsRemovedMeanwhileEndsItWithTheError) {
  const HostWindow host;
  const ULONG references = test::references_of(store_.get());
  test::Outcome outcome;
  drive(
      kForm, [&] { outcome = store_.try_call(L"Edit", 2); },
      [&](const Dialog& dialog) {
        host.send([&] { store_.call(L"Remove", 2); });
        dialog.click(kOk);
        EXPECT_TRUE(dialog.wait_closed());
      });
  EXPECT_EQ(outcome.number(), 9);
  EXPECT_EQ(test::references_of(store_.get()), references) << "the store is still held";
}

}  // namespace
}  // namespace pv::dialogs_test
