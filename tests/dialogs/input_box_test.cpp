// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The input box: texts, masked texts, and the value that stays until it is closed.

#include "tests/dialogs/input_box_support.h"

#include <gtest/gtest.h>

#include <iterator>

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

std::wstring decimal_separator() {
  wchar_t text[8] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, static_cast<int>(std::size(text)));
  return text;
}

TEST_F(InputBox, AsksForAText) {
  const std::wstring ok = utility_.text(200);
  const std::wstring cancel = utility_.text(201);
  EXPECT_TRUE(ask(
      [&](const Dialog& dialog) {
        EXPECT_EQ(dialog.title(), L"Input & more");
        EXPECT_EQ(dialog.text(kPrompt), L"Flow & rate?");
        EXPECT_EQ(dialog.text(kUnit), L"l/s");
        EXPECT_EQ(dialog.text(kText), L"12" + decimal_separator() + L"5");
        EXPECT_EQ(dialog.ask(kText, EM_GETPASSWORDCHAR), 0);
        EXPECT_EQ(dialog.selection(kText), (std::pair{0, 4}));
        EXPECT_EQ(dialog.focused(), kText);
        EXPECT_EQ(dialog.caption(kOk), ok);
        EXPECT_EQ(dialog.caption(kCancel), cancel);
        EXPECT_FALSE(dialog.shows(kDate));
        EXPECT_FALSE(dialog.shows(kTime));
        enter(dialog, L"13,75");
      },
      L"ShowMe", L"Flow & rate?", L"Input & more", 12.5, L"l/s"));
  EXPECT_EQ(value(), L"13,75");
}

TEST_F(InputBox, EnterConfirms) {
  EXPECT_TRUE(ask([](const Dialog& dialog) { dialog.press_key(VK_RETURN); }, L"ShowMe", L"?", L"",
                  L"as it was"));
  EXPECT_EQ(value(), L"as it was");
}

TEST_F(InputBox, AnEmptyTextIsAText) {
  EXPECT_TRUE(ask([](const Dialog& dialog) { enter(dialog, L""); }, L"ShowMe", L"?", L"", L"x"));
  EXPECT_EQ(value(), L"");
}

TEST_F(InputBox, WithoutATitleItHasOneOfItsOwn) {
  std::wstring omitted;
  std::wstring empty;
  ask([&](const Dialog& dialog) { omitted = dialog.title(); }, L"ShowMe", L"?");
  ask([&](const Dialog& dialog) { empty = dialog.title(); }, L"ShowMe", L"?", L"");
  EXPECT_FALSE(omitted.empty());
  EXPECT_EQ(omitted, empty);
}

TEST_F(InputBox, TitleTextUnitAndMaskOfTheLastShowAreGone) {
  std::wstring own_title;
  ask([&](const Dialog& dialog) { own_title = dialog.title(); }, L"ShowMe", L"?");
  ask([](const Dialog&) {}, L"ShowMePW", L"?", L"Title", L"secret", L"m");
  ask(
      [&](const Dialog& dialog) {
        EXPECT_EQ(dialog.title(), own_title);
        EXPECT_EQ(dialog.text(kText), L"");
        EXPECT_EQ(dialog.text(kUnit), L"");
        EXPECT_EQ(dialog.ask(kText, EM_GETPASSWORDCHAR), 0);
      },
      L"ShowMe", L"?");
}

TEST_F(InputBox, AMaskedTextIsShownInStars) {
  EXPECT_TRUE(ask(
      [](const Dialog& dialog) {
        EXPECT_EQ(dialog.ask(kText, EM_GETPASSWORDCHAR), L'*');
        EXPECT_EQ(dialog.text(kText), L"old");
        EXPECT_EQ(dialog.text(kUnit), L"m");
        enter(dialog, L"secret");
      },
      L"ShowMePW", L"Code?", L"Title", L"old", L"m"));
  EXPECT_EQ(value(), L"secret");
}

TEST_F(InputBox, EveryWayOfCancellingGivesFalse) {
  const Script ways[] = {
      [](const Dialog& dialog) { dialog.click(kCancel); },
      [](const Dialog& dialog) { dialog.close(); },
      [](const Dialog& dialog) { dialog.press_close_box(); },
      [](const Dialog& dialog) { dialog.press_key(VK_ESCAPE); },
  };
  for (const wchar_t* method : {L"ShowMe", L"ShowMePW", L"ShowMeDT"}) {
    for (const Script& way : ways) {
      EXPECT_FALSE(ask(
          [&](const Dialog& dialog) {
            way(dialog);
            EXPECT_TRUE(dialog.wait_closed());
          },
          method, L"?"));
    }
  }
}

TEST_F(InputBox, ACancelledBoxForgetsTheValueBefore) {
  ask([](const Dialog& dialog) { enter(dialog, L"first"); }, L"ShowMe", L"?");
  EXPECT_EQ(value(), L"first");
  EXPECT_FALSE(ask([](const Dialog& dialog) { dialog.click(kCancel); }, L"ShowMe", L"?"));
  EXPECT_EQ(value(), Value());
}

TEST_F(InputBox, TheValueIsEmptyBeforeAnyShowAndAfterClosing) {
  EXPECT_EQ(value(), Value());
  ask([](const Dialog& dialog) { enter(dialog, L"text"); }, L"ShowMe", L"?");
  EXPECT_EQ(value(), L"text");
  EXPECT_EQ(value(), L"text") << "reading changes nothing";
  box_.call(L"CloseMe");
  EXPECT_EQ(value(), Value());
  box_.call(L"CloseMe");  // closing twice does no harm
}

TEST_F(InputBox, TwoObjectsShareOneForm) {
  const Object second = Object::create(L"pvItems32.CInputBox");
  ask([](const Dialog& dialog) { enter(dialog, L"text"); }, L"ShowMe", L"?");
  EXPECT_EQ(second.get(L"Value"), L"text");
  second.call(L"CloseMe");
  EXPECT_EQ(value(), Value());
}

TEST_F(InputBox, TheOwnerIsBlocked) {
  const HostWindow host;
  HostObject owner;
  owner.answer(L"hWnd", static_cast<long>(reinterpret_cast<LONG_PTR>(host.window())));
  ask(
      [&](const Dialog& dialog) {
        EXPECT_EQ(GetWindow(dialog.window(), GW_OWNER), host.window());
        EXPECT_FALSE(IsWindowEnabled(host.window()));
      },
      L"ShowMe", L"?", L"", L"", L"", owner.get());
  EXPECT_TRUE(IsWindowEnabled(host.window()));
}

TEST_F(InputBox, RelabellingKeepsWhatWasTyped) {
  const HostWindow host;
  utility_.set_language(3);
  const std::wstring cancel = utility_.text(201);
  utility_.set_language(1);
  EXPECT_TRUE(ask(
      [&](const Dialog& dialog) {
        dialog.type(kText, L"typed");
        host.send([&] { utility_.set_language(3); });
        EXPECT_EQ(dialog.caption(kCancel), cancel);
        EXPECT_EQ(dialog.text(kText), L"typed");
        dialog.click(kOk);
      },
      L"ShowMe", L"?"));
  EXPECT_EQ(value(), L"typed");
}

TEST_F(InputBox, ClosingFromOutsideWhileItIsOpenEndsItLikeCancel) {
  const HostWindow host;
  EXPECT_FALSE(ask(
      [&](const Dialog& dialog) {
        host.post([&] { box_.call(L"CloseMe"); });
        EXPECT_TRUE(dialog.wait_closed());
      },
      L"ShowMe", L"?"));
}

std::wstring repeated(const std::wstring& text, int times) {
  std::wstring result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

TEST_F(InputBox, APromptOfAnyLengthLeavesFieldsAndButtonsOnTheScreen) {
  const std::wstring words = repeated(L"many words ", 400);
  const std::wstring lines = repeated(L"line\n", 300);
  for (const int dpi : {96, 192}) {
    const Resolution resolution(dpi);
    for (const wchar_t* method : {L"ShowMe", L"ShowMeDT"}) {
      for (const std::wstring& prompt : {std::wstring(), words, lines}) {
        ask([](const Dialog& dialog) { EXPECT_EQ(dialog.layout_faults(), ""); }, method, prompt);
      }
    }
  }
}

TEST_F(InputBox, APromptThatIsHigherThanTheScreenScrolls) {
  EXPECT_TRUE(ask(
      [](const Dialog& dialog) {
        EXPECT_FALSE(dialog.shows(kPrompt));
        EXPECT_TRUE(dialog.shows(kScrolledPrompt));
        EXPECT_EQ(dialog.text(kScrolledPrompt), repeated(L"line\r\n", 300));
        EXPECT_EQ(dialog.ask(kScrolledPrompt, EM_GETFIRSTVISIBLELINE), 0);
        EXPECT_EQ(dialog.focused(), kText);
        dialog.click(kOk);
      },
      L"ShowMe", repeated(L"line\n", 300)));
  ask(
      [](const Dialog& dialog) {
        EXPECT_TRUE(dialog.shows(kPrompt));
        EXPECT_FALSE(dialog.shows(kScrolledPrompt));
      },
      L"ShowMe", L"short again");
}

TEST_F(InputBox, ALongUnitBreaks) {
  for (const wchar_t* method : {L"ShowMe", L"ShowMeDT"}) {
    ask([](const Dialog& dialog) { EXPECT_EQ(dialog.layout_faults(), ""); }, method, L"Rate?", L"",
        L"", repeated(L"litres per second ", 6));
  }
}

}  // namespace
}  // namespace pv::dialogs_test
