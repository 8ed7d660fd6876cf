// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the message box answers: button sets, keys, close box, titles, languages.

#include <gtest/gtest.h>

#include <set>

#include "tests/dialogs/driver/dialog_driver.h"
#include "tests/dialogs/driver/platform_call.h"

namespace pv::dialogs_test {
namespace {

constexpr int kButtonId = 1000;
constexpr int kPromptId = 1010;
constexpr int kIconId = 1020;
constexpr long kCancelResult = 2;

struct Answer {
  long text_id;
  long result;
};

struct ButtonSet {
  short number;
  std::vector<Answer> answers;
};

const std::vector<ButtonSet> kSets = {
    {0, {{200, 1}}},
    {1, {{200, 1}, {201, 2}}},
    {2, {{202, 3}, {203, 4}, {204, 5}}},
    {3, {{205, 6}, {206, 7}, {201, 2}}},
    {4, {{205, 6}, {206, 7}}},
    {5, {{203, 4}, {201, 2}}},
};

bool has_cancel(const ButtonSet& set) {
  for (const Answer& answer : set.answers)
    if (answer.result == kCancelResult) return true;
  return false;
}

// The captions that the buttons should have. Texts belong to a thread: ask on the one that shows.
using Captions = std::vector<std::wstring>;

Captions captions_of(const Utility& utility, const ButtonSet& set) {
  Captions captions;
  for (const Answer& answer : set.answers) captions.push_back(utility.text(answer.text_id));
  return captions;
}

void expect_buttons(const Dialog& box, const Captions& captions) {
  for (std::size_t i = 0; i < 3; ++i) {
    const int id = kButtonId + static_cast<int>(i);
    EXPECT_EQ(box.shows(id), i < captions.size()) << "button " << i;
    EXPECT_EQ(box.caption(id), i < captions.size() ? captions[i] : L"?") << "button " << i;
  }
}

class MessageBoxAnswer : public testing::Test {
 protected:
  void SetUp() override {
    utility_.set_language(1);
    ok_ = captions_of(utility_, kSets[0]);
  }
  void TearDown() override { utility_.set_language(1); }

  Utility utility_;
  Captions ok_;
};

class MessageBoxOfSet : public MessageBoxAnswer, public testing::WithParamInterface<ButtonSet> {
 protected:
  long show_set(const Script& script) {
    return show(utility_, {.prompt = L"Question", .buttons = GetParam().number}, script);
  }
};

INSTANTIATE_TEST_SUITE_P(AllSets, MessageBoxOfSet, testing::ValuesIn(kSets),
                         [](const auto& info) { return std::to_string(info.param.number); });

TEST_P(MessageBoxOfSet, EachButtonGivesItsResult) {
  const Captions captions = captions_of(utility_, GetParam());
  for (std::size_t i = 0; i < captions.size(); ++i) {
    const long result = show_set([&](const Dialog& box) {
      expect_buttons(box, captions);
      box.click(kButtonId + static_cast<int>(i));
      EXPECT_TRUE(box.wait_closed());
    });
    EXPECT_EQ(result, GetParam().answers[i].result);
  }
}

TEST_P(MessageBoxOfSet, EnterPressesTheFirstButton) {
  const long result = show_set([](const Dialog& box) {
    EXPECT_EQ(box.focused(), kButtonId);
    box.press_key(VK_RETURN);
    EXPECT_TRUE(box.wait_closed());
  });
  EXPECT_EQ(result, GetParam().answers[0].result);
}

TEST_P(MessageBoxOfSet, EscapeMeansCancelWhereThatIsAnAnswer) {
  const bool cancel = has_cancel(GetParam());
  const long result = show_set([&](const Dialog& box) {
    box.press_key(VK_ESCAPE);
    if (!cancel) box.drain();
    EXPECT_EQ(cancel ? box.wait_closed() : !box.open(), cancel);
    if (!cancel) box.click(kButtonId);
  });
  EXPECT_EQ(result, cancel ? kCancelResult : GetParam().answers[0].result);
}

TEST_P(MessageBoxOfSet, TheCloseBoxMeansCancelWhereThatIsAnAnswer) {
  const bool cancel = has_cancel(GetParam());
  for (const bool by_system_menu : {false, true}) {
    const long result = show_set([&](const Dialog& box) {
      by_system_menu ? box.press_close_box() : box.close();
      if (!cancel) box.drain();
      EXPECT_EQ(cancel ? box.wait_closed() : !box.open(), cancel);
      if (!cancel) box.click(kButtonId);
    });
    EXPECT_EQ(result, cancel ? kCancelResult : GetParam().answers[0].result);
  }
}

TEST_P(MessageBoxOfSet, TheCloseBoxLooksUsableWhereItWorks) {
  show_set([&](const Dialog& box) {
    const UINT state = GetMenuState(GetSystemMenu(box.window(), FALSE), SC_CLOSE, MF_BYCOMMAND);
    EXPECT_EQ((state & MF_GRAYED) == 0, has_cancel(GetParam()));
  });
}

// Enter and Esc are the keys of these two.
bool is_ok_or_cancel(const Answer& answer) {
  return answer.text_id == 200 || answer.text_id == 201;
}

TEST_P(MessageBoxOfSet, AccessKeysAreUniqueInEveryLanguageAndNotOnOkAndCancel) {
  for (long language = 1; language <= 6; ++language) {
    utility_.set_language(language);
    show_set([&](const Dialog& box) {
      std::set<wchar_t> keys;
      for (std::size_t i = 0; i < GetParam().answers.size(); ++i) {
        const wchar_t key = box.access_key(kButtonId + static_cast<int>(i));
        EXPECT_EQ(key == 0, is_ok_or_cancel(GetParam().answers[i])) << "button " << i;
        EXPECT_TRUE(key == 0 || keys.insert(key).second) << "language " << language;
      }
    });
  }
}

TEST_P(MessageBoxOfSet, AnAccessKeyPressesItsButton) {
  for (std::size_t i = 0; i < GetParam().answers.size(); ++i) {
    if (is_ok_or_cancel(GetParam().answers[i])) continue;
    const long result = show_set([&](const Dialog& box) {
      box.press_alt(box.access_key(kButtonId + static_cast<int>(i)));
      EXPECT_TRUE(box.wait_closed());
    });
    EXPECT_EQ(result, GetParam().answers[i].result);
  }
}

TEST_F(MessageBoxAnswer, ButtonsAreNamedInEveryLanguage) {
  for (long language = 1; language <= 6; ++language) {
    utility_.set_language(language);
    for (const ButtonSet& set : kSets) {
      const Captions captions = captions_of(utility_, set);
      show(utility_, {.prompt = L"Question", .buttons = set.number},
           [&](const Dialog& box) { expect_buttons(box, captions); });
    }
  }
}

TEST_F(MessageBoxAnswer, UnknownButtonNumbersActLikeSetZero) {
  for (const short number : {-1, 6, 64, 32767, -32768}) {
    const long result =
        show(utility_, {.prompt = L"Question", .buttons = number}, [&](const Dialog& box) {
          expect_buttons(box, ok_);
          box.close();
          box.drain();
          EXPECT_TRUE(box.open());
          box.click(kButtonId);
        });
    EXPECT_EQ(result, 1);
  }
}

TEST_F(MessageBoxAnswer, OmittedButtonsAreSetZero) {
  show(utility_, {.prompt = L"Question"}, [&](const Dialog& box) { expect_buttons(box, ok_); });
}

TEST_F(MessageBoxAnswer, EachPictureNumberShowsItsIconOnly) {
  for (const short picture : {0, 16, 32, 48, 64, 80, 17, -16}) {
    show(utility_, {.prompt = L"Question", .picture = picture}, [&](const Dialog& box) {
      for (int icon = 0; icon < 4; ++icon)
        EXPECT_EQ(box.shows(kIconId + icon), picture == 16 * (icon + 1))
            << "picture " << picture << ", icon " << icon;
    });
  }
}

TEST_F(MessageBoxAnswer, TheFourIconsAreFourPictures) {
  show(utility_, {.prompt = L"Question"}, [](const Dialog& box) {
    std::set<LRESULT> pictures;
    for (int icon = 0; icon < 4; ++icon)
      pictures.insert(SendMessageW(box.control(kIconId + icon), STM_GETICON, 0, 0));
    EXPECT_EQ(pictures.size(), 4u);
    EXPECT_FALSE(pictures.contains(0));
  });
}

TEST_F(MessageBoxAnswer, AnOmittedPictureIsTheInformationIcon) {
  show(utility_, {.prompt = L"Question"}, [](const Dialog& box) {
    for (int icon = 0; icon < 4; ++icon) EXPECT_EQ(box.shows(kIconId + icon), icon == 3);
  });
}

std::vector<UINT> sounds;

BOOL WINAPI hear(UINT sound) {
  sounds.push_back(sound);
  return TRUE;
}

TEST_F(MessageBoxAnswer, EachIconComesWithItsSound) {
  const PlatformCall beep("MessageBeep", &hear);
  for (const short picture : {16, 32, 48, 64, 0, 17}) {
    sounds.clear();
    show(utility_, {.prompt = L"Question", .picture = picture}, [](const Dialog&) {});
    const bool has_icon = picture != 0 && picture != 17;
    EXPECT_EQ(sounds,
              has_icon ? std::vector<UINT>{static_cast<UINT>(picture)} : std::vector<UINT>{})
        << "picture " << picture;
  }
}

std::wstring clipboard_text() {
  if (!OpenClipboard(nullptr)) return L"the clipboard is in use";
  std::wstring text;
  if (const HANDLE memory = GetClipboardData(CF_UNICODETEXT)) {
    text = static_cast<const wchar_t*>(GlobalLock(memory));
    GlobalUnlock(memory);
  }
  CloseClipboard();
  return text;
}

TEST_F(MessageBoxAnswer, ControlCCopiesWhatTheBoxSays) {
  const std::wstring line = L"---------------------------\r\n";
  for (const bool scrolls : {false, true}) {
    std::wstring prompt = L"Save & go?\r\nAgain?";
    for (int i = 0; scrolls && i < 300; ++i) prompt += L"\r\nline";
    const Box box{.prompt = prompt, .buttons = 3, .title = L"A title"};
    show(utility_, box, [&](const Dialog& dialog) {
      const std::wstring expected = line + L"A title\r\n" + line + prompt + L"\r\n" + line +
                                    L"Yes   No   Cancel   \r\n" + line;
      EXPECT_TRUE(dialog.stroke('C', VK_CONTROL, [&] { return clipboard_text() == expected; }))
          << test::printable(clipboard_text());
      EXPECT_TRUE(dialog.open());
    });
  }
}

TEST_F(MessageBoxAnswer, TheTitleIsShown) {
  show(utility_, {.prompt = L"Question", .title = L"A & B"},
       [](const Dialog& box) { EXPECT_EQ(box.title(), L"A & B"); });
}

TEST_F(MessageBoxAnswer, WithoutATitleItIsTheLibrarysOwn) {
  show(utility_, {.prompt = L"Question"},
       [](const Dialog& box) { EXPECT_EQ(box.title(), L"pvItems32"); });
  show(utility_, {.prompt = L"Question", .title = L""},
       [](const Dialog& box) { EXPECT_EQ(box.title(), L"pvItems32"); });
}

TEST_F(MessageBoxAnswer, NothingOfOneShowIsLeftInTheNext) {
  show(utility_, {.prompt = L"Long\r\nfirst\r\nprompt", .buttons = 3, .picture = 16, .title = L"T"},
       [](const Dialog& box) { box.click(kButtonId + 1); });
  SIZE second{};
  const long result = show(utility_, {.prompt = L"B", .picture = 0}, [&](const Dialog& box) {
    expect_buttons(box, ok_);
    EXPECT_EQ(box.title(), L"pvItems32");
    EXPECT_EQ(box.text(kPromptId), L"B");
    for (int icon = 0; icon < 4; ++icon) EXPECT_FALSE(box.shows(kIconId + icon));
    second = box.outer();
  });
  EXPECT_EQ(result, 1);
  show(utility_, {.prompt = L"B", .picture = 0}, [&](const Dialog& box) {
    EXPECT_EQ(box.outer().cx, second.cx);
    EXPECT_EQ(box.outer().cy, second.cy);
  });
}

TEST_F(MessageBoxAnswer, AmpersandsOfThePromptAreShown) {
  show(utility_, {.prompt = L"A & B &&"}, [](const Dialog& box) {
    EXPECT_EQ(box.text(kPromptId), L"A & B &&");
    const LONG style = GetWindowLongW(box.control(kPromptId), GWL_STYLE);
    EXPECT_NE(style & SS_NOPREFIX, 0);
  });
}

TEST_F(MessageBoxAnswer, TabLeadsThroughTheButtonsInTheirOrder) {
  const long result = show(utility_, {.prompt = L"Question", .buttons = 3}, [](const Dialog& box) {
    EXPECT_EQ(box.focused(), kButtonId);
    box.press_key(VK_TAB);
    box.drain();
    EXPECT_EQ(box.focused(), kButtonId + 1);
    box.press_key(VK_TAB);
    box.drain();
    EXPECT_EQ(box.focused(), kButtonId + 2);
    box.press_key(VK_RETURN);
    EXPECT_TRUE(box.wait_closed());
  });
  EXPECT_EQ(result, 2);
}

TEST_F(MessageBoxAnswer, AnOpenBoxSpeaksTheNewLanguageAtOnce) {
  const HostWindow host;
  const long result = show(utility_, {.prompt = L"Question", .buttons = 3}, [&](const Dialog& box) {
    box.press_key(VK_TAB);
    box.drain();
    for (const long language : {2, 3, 6, 1}) {
      host.send([&] { utility_.set_language(language); });
      host.send([&] { expect_buttons(box, captions_of(utility_, kSets[3])); });
      EXPECT_EQ(box.text(kPromptId), L"Question");
    }
    EXPECT_EQ(box.focused(), kButtonId + 1);
    box.press_key(VK_RETURN);
    EXPECT_TRUE(box.wait_closed());
  });
  EXPECT_EQ(result, 7);
}

TEST_F(MessageBoxAnswer, RealKeyStrokesReachIt) {
  const auto strike = [](BYTE key) {
    keybd_event(key, 0, 0, 0);
    keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
  };
  const auto in_front = [](const Dialog& box) {
    return wait_until(
        [&] { return GetForegroundWindow() == box.window() && box.focused() == kButtonId; });
  };
  const Box question{.prompt = L"Question", .buttons = 3};
  EXPECT_EQ(7, show(utility_, question, [&](const Dialog& box) {
              ASSERT_TRUE(in_front(box));
              strike(VK_TAB);
              EXPECT_TRUE(wait_until([&] { return box.focused() == kButtonId + 1; }));
              strike(VK_RETURN);
              EXPECT_TRUE(box.wait_closed());
            }));
  EXPECT_EQ(2, show(utility_, question, [&](const Dialog& box) {
              ASSERT_TRUE(in_front(box));
              strike(VK_ESCAPE);
              EXPECT_TRUE(box.wait_closed());
            }));
  EXPECT_EQ(7, show(utility_, question, [&](const Dialog& box) {
              ASSERT_TRUE(in_front(box));
              keybd_event(VK_MENU, 0, 0, 0);
              strike('N');
              keybd_event(VK_MENU, 0, KEYEVENTF_KEYUP, 0);
              EXPECT_TRUE(box.wait_closed());
            }));
  EXPECT_EQ(6, show(utility_, question, [&](const Dialog& box) {
              ASSERT_TRUE(in_front(box));
              strike('Y');  // without Alt, as no control takes letters
              EXPECT_TRUE(box.wait_closed());
            }));
}

}  // namespace
}  // namespace pv::dialogs_test
