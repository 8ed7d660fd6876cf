// The password dialog: entering, closing and changing a password of a store.

#include <gtest/gtest.h>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;
using Calls = std::vector<HostObject::Call>;

constexpr wchar_t kForm[] = L"frmPW";
constexpr int kOk = 1000, kCancel = 1001, kModify = 1002;
constexpr int kLabel = 1010, kNewLabel = 1011, kRepeatLabel = 1012;
constexpr int kEntry = 1020, kNew = 1021, kRepeat = 1022;
constexpr int kFields[] = {kEntry, kNew, kRepeat};
constexpr DISPID kSetEvent = 1, kResetEvent = 2;
/// The one connection point of a source.
Ref<IConnectionPoint> only_point(const Object& source) {
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
    utility_.object().set(L"Application", Value::nothing());
    utility_.set_language(1);
  }

  Object password(int index) const { return store_.get_object(L"Item", index); }
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

  Utility utility_;
  HostObject application_;
  HostObject listener_;
  Object store_ = Object::create(L"pvItems32.CPasswords");
  Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

void enter(const Dialog& dialog, const std::wstring& text) {
  dialog.type(kEntry, text);
  dialog.click(kOk);
}

void open_modify_mode(const Dialog& dialog) {
  dialog.click(kModify);
  EXPECT_TRUE(wait_until([&] { return dialog.shows(kRepeat); }));
  dialog.drain();
}

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
