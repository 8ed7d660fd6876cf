// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Where the message box puts its parts, in twips, and that no text is cut off.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

constexpr int kButtonId = 1000;
constexpr int kPromptId = 1010;
constexpr int kScrolledPromptId = 1011;
constexpr int kIconId = 1020;
constexpr long kRowLeft = 240;  // where the first button is designed to stand

int used_buttons(const Dialog& box) {
  int used = 0;
  while (used < 3 && box.shows(kButtonId + used)) ++used;
  return used;
}

// One pixel, for what is rounded twice.
long tolerance(int dpi) { return 1440 / dpi; }

// The rules of the layout, followed with the rectangles on the screen.
void expect_layout(const Dialog& box, int dpi, int prompt_id = kPromptId) {
  const auto twips = [dpi](long pixels) { return MulDiv(pixels, 1440, dpi); };
  const TwipRect prompt = box.twips(prompt_id, dpi);
  const TwipRect first = box.twips(kButtonId, dpi);
  const int used = used_buttons(box);
  const long text_width = prompt.right + 240;
  const long row_top = prompt.bottom + 360;
  const long row_width = kRowLeft + used * (first.width() + 120);
  const long frame_height = twips(box.outer().cy - box.inner().cy);
  const long near_enough = tolerance(dpi);

  EXPECT_NEAR(twips(box.outer().cx), std::max(text_width, row_width), near_enough);
  EXPECT_NEAR(twips(box.outer().cy), row_top + first.height() + 120 + frame_height, near_enough);
  const long row_left = (twips(box.inner().cx) - (row_width - 120 - kRowLeft)) / 2;
  EXPECT_NEAR(first.left, row_left, near_enough);
  for (int i = 0; i < used; ++i) {
    const TwipRect button = box.twips(kButtonId + i, dpi);
    EXPECT_NEAR(button.top, row_top, near_enough);
    EXPECT_NEAR(button.width(), first.width(), near_enough);
    if (i > 0) {
      const long previous = box.twips(kButtonId + i - 1, dpi).right;
      EXPECT_NEAR(button.left, previous + 120, near_enough);
    }
  }
  for (int i = 1; i < 4; ++i) {
    const RECT icon = box.pixels(kIconId + i);
    const RECT first_icon = box.pixels(kIconId);
    EXPECT_TRUE(EqualRect(&icon, &first_icon)) << "icon " << i;
  }
}

SIZE needed(HWND control, const std::wstring& text, UINT format, LONG width = 0) {
  const HDC context = GetDC(control);
  const HGDIOBJ previous =
      SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
  RECT area{0, 0, width, 0};
  DrawTextW(context, text.c_str(), -1, &area, format | DT_CALCRECT);
  SelectObject(context, previous);
  ReleaseDC(control, context);
  return {area.right, area.bottom};
}

void expect_prompt_unclipped(const Dialog& box) {
  RECT room{};
  GetClientRect(box.control(kPromptId), &room);
  const SIZE size = needed(box.control(kPromptId), box.text(kPromptId),
                           DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX | DT_EDITCONTROL, room.right);
  EXPECT_LE(size.cx, room.right) << "the prompt is too wide";
  EXPECT_LE(size.cy, room.bottom) << "the prompt is too high";
}

void expect_button_unclipped(const Dialog& box, int id) {
  constexpr LONG kEdges = 8;
  RECT room{};
  GetClientRect(box.control(id), &room);
  const SIZE size = needed(box.control(id), box.text(id), DT_SINGLELINE);
  EXPECT_LE(size.cx + kEdges, room.right) << "button " << id << " is too narrow";
  EXPECT_LE(size.cy + kEdges, room.bottom) << "button " << id << " is too low";
}

void expect_nothing_clipped(const Dialog& box) {
  expect_prompt_unclipped(box);
  for (int i = 0; i < used_buttons(box); ++i) expect_button_unclipped(box, kButtonId + i);
}

RECT work_area() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return area;
}

void expect_on_screen(const Dialog& box) {
  const RECT area = work_area();
  RECT place{};
  GetWindowRect(box.window(), &place);
  EXPECT_GE(place.left, area.left);
  EXPECT_GE(place.top, area.top);
  EXPECT_LE(place.right, area.right);
  EXPECT_LE(place.bottom, area.bottom);
  RECT inside{};
  GetClientRect(box.window(), &inside);
  for (int i = 0; i < used_buttons(box); ++i) {
    const RECT button = box.pixels(kButtonId + i);
    RECT seen{};
    IntersectRect(&seen, &button, &inside);
    EXPECT_TRUE(EqualRect(&seen, &button)) << "button " << i << " leaves the box";
  }
}

std::wstring repeated(const std::wstring& text, int times) {
  std::wstring result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

class MessageBoxLayout : public testing::TestWithParam<int> {
 protected:
  void SetUp() override { utility_.set_language(1); }
  void TearDown() override { utility_.set_language(1); }

  int dpi() const { return GetParam(); }

  Utility utility_;
  Resolution resolution_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Resolutions, MessageBoxLayout, testing::Values(96, 120, 144, 192),
                         testing::PrintToStringParamName());

TEST_P(MessageBoxLayout, FollowsItsRulesForEverySetAndPrompt) {
  const std::vector<std::wstring> prompts = {L"",
                                             L"B",
                                             L"Incorrect Password!",
                                             L"One\r\nTwo\r\nThree\r\nFour",
                                             repeated(L"A longer sentence. ", 4),
                                             repeated(L"A very long sentence. ", 40)};
  for (short set = 0; set <= 5; ++set) {
    for (const std::wstring& prompt : prompts) {
      show(utility_, {.prompt = prompt, .buttons = set}, [&](const Dialog& box) {
        SCOPED_TRACE("set " + std::to_string(set));
        expect_layout(box, dpi());
        expect_nothing_clipped(box);
        expect_on_screen(box);
      });
    }
  }
}

// The buttons of the sets are compared in the tests that all forms have in common.
TEST_P(MessageBoxLayout, NoPromptIsClippedInAnyLanguage) {
  for (long language = 1; language <= 6; ++language) {
    utility_.set_language(language);
    for (const long text : {401, 610, 611, 1101, 302}) {
      show(utility_, {.prompt = utility_.text(text), .buttons = 2}, [&](const Dialog& box) {
        SCOPED_TRACE("language " + std::to_string(language) + ", text " + std::to_string(text));
        expect_nothing_clipped(box);
      });
    }
  }
}

TEST_P(MessageBoxLayout, APromptOfManyLinesMakesTheBoxHigher) {
  SIZE low{};
  SIZE high{};
  show(utility_, {.prompt = L"One"}, [&](const Dialog& box) { low = box.outer(); });
  show(utility_, {.prompt = L"One\r\nOne\r\nOne"}, [&](const Dialog& box) { high = box.outer(); });
  EXPECT_EQ(high.cx, low.cx);
  EXPECT_GT(high.cy, low.cy);
}

TEST_P(MessageBoxLayout, AShortPromptLeavesTheBoxAsWideAsItsButtons) {
  show(utility_, {.prompt = L"A", .buttons = 2}, [&](const Dialog& box) {
    const TwipRect button = box.twips(kButtonId, dpi());
    EXPECT_NEAR(MulDiv(box.outer().cx, 1440, dpi()), kRowLeft + 3 * (button.width() + 120),
                tolerance(dpi()));
  });
}

TEST_P(MessageBoxLayout, ALongPromptMakesTheBoxWiderThanItsButtons) {
  show(utility_, {.prompt = repeated(L"word ", 12), .buttons = 2}, [&](const Dialog& box) {
    const TwipRect prompt = box.twips(kPromptId, dpi());
    EXPECT_NEAR(MulDiv(box.outer().cx, 1440, dpi()), prompt.right + 240, tolerance(dpi()));
  });
}

TEST_P(MessageBoxLayout, AVeryLongLineIsBrokenBeforeTheEdgeOfTheScreen) {
  const RECT area = work_area();
  for (const wchar_t* word : {L"word ", L"unbroken"}) {
    show(utility_, {.prompt = repeated(word, 200)}, [&](const Dialog& box) {
      EXPECT_LE(box.outer().cx, (area.right - area.left) * 5 / 8 + 1);
      expect_nothing_clipped(box);
      expect_layout(box, dpi());
    });
  }
}

// Longer lines are hard to follow back to their beginnings.
TEST_P(MessageBoxLayout, LinesAreAboutEightyCharactersLongAtMost) {
  for (const wchar_t* word : {L"many words ", L"unbroken"}) {
    show(utility_, {.prompt = repeated(word, 30)}, [&](const Dialog& box) {
      const SIZE line =
          needed(box.control(kPromptId), std::wstring(80, L'x'), DT_SINGLELINE | DT_NOPREFIX);
      const RECT prompt = box.pixels(kPromptId);
      EXPECT_LE(prompt.right - prompt.left, line.cx + 1);
      if (dpi() == 96) {
        EXPECT_GE(prompt.right - prompt.left, line.cx * 3 / 4);
      }
      expect_nothing_clipped(box);
      expect_layout(box, dpi());
    });
  }
}

TEST_P(MessageBoxLayout, APromptThatIsHigherThanTheScreenScrolls) {
  const long result =
      show(utility_, {.prompt = repeated(L"line\n", 300), .buttons = 3}, [&](const Dialog& box) {
        EXPECT_FALSE(box.shows(kPromptId));
        EXPECT_TRUE(box.shows(kScrolledPromptId));
        EXPECT_EQ(box.text(kScrolledPromptId), repeated(L"line\r\n", 300));
        expect_layout(box, dpi(), kScrolledPromptId);
        expect_on_screen(box);
        EXPECT_EQ(box.focused(), kButtonId);
        box.click(kButtonId + 1);
      });
  EXPECT_EQ(result, 7);
}

TEST_P(MessageBoxLayout, AScrolledPromptOpensAtItsBeginningWithNothingSelected) {
  show(utility_, {.prompt = repeated(L"line\n", 300)}, [&](const Dialog& box) {
    EXPECT_EQ(box.ask(kScrolledPromptId, EM_GETFIRSTVISIBLELINE), 0);
    EXPECT_EQ(box.selection(kScrolledPromptId), std::pair(0, 0));
  });
}

TEST_P(MessageBoxLayout, TheTabKeyReachesAScrolledPromptAtItsBeginning) {
  show(utility_, {.prompt = repeated(L"line\n", 300)}, [&](const Dialog& box) {
    box.press_key(VK_TAB);
    EXPECT_TRUE(wait_until([&] { return box.focused() == kScrolledPromptId; }));
    box.drain();
    EXPECT_EQ(box.ask(kScrolledPromptId, EM_GETFIRSTVISIBLELINE), 0);
    EXPECT_EQ(box.selection(kScrolledPromptId), std::pair(0, 0));
  });
}

TEST_P(MessageBoxLayout, AScrolledPromptStaysWhereItWasScrolledToWhenItGetsTheFocusByTheMouse) {
  show(utility_, {.prompt = repeated(L"line\n", 300)}, [&](const Dialog& box) {
    box.ask(kScrolledPromptId, EM_LINESCROLL, 0, 20);
    const LPARAM place = MAKELPARAM(5, 5);
    PostMessageW(box.control(kScrolledPromptId), WM_LBUTTONDOWN, MK_LBUTTON, place);
    PostMessageW(box.control(kScrolledPromptId), WM_LBUTTONUP, 0, place);
    EXPECT_TRUE(wait_until([&] { return box.focused() == kScrolledPromptId; }));
    box.drain();
    EXPECT_EQ(box.ask(kScrolledPromptId, EM_GETFIRSTVISIBLELINE), 20);
  });
}

TEST_P(MessageBoxLayout, AHighPromptIsFirstMadeWider) {
  const RECT area = work_area();
  const LONG usual_limit = (area.right - area.left) * 5 / 8;
  // More and more text, until the box leaves its usual width: it must do so before it scrolls.
  LONG width = 0;
  bool scrolls = false;
  for (int words = 50; width <= usual_limit && words < 4000; words += 50) {
    show(utility_, {.prompt = repeated(L"many words ", words)}, [&](const Dialog& box) {
      width = box.outer().cx;
      scrolls = box.shows(kScrolledPromptId);
      expect_on_screen(box);
    });
  }
  EXPECT_GT(width, usual_limit);
  EXPECT_FALSE(scrolls);
}

TEST_P(MessageBoxLayout, LineEndsOfEveryKindBreakLines) {
  SIZE expected{};
  show(utility_, {.prompt = L"One\r\nTwo"}, [&](const Dialog& box) { expected = box.outer(); });
  show(utility_, {.prompt = L"One\nTwo"}, [&](const Dialog& box) {
    EXPECT_EQ(box.outer().cy, expected.cy);
    EXPECT_EQ(box.outer().cx, expected.cx);
  });
}

TEST_P(MessageBoxLayout, StandsInTheMiddleOfTheScreen) {
  const RECT area = work_area();
  show(utility_, {.prompt = L"Question"}, [&](const Dialog& box) {
    RECT place{};
    GetWindowRect(box.window(), &place);
    EXPECT_NEAR(place.left - area.left, area.right - place.right, 1);
    EXPECT_NEAR(place.top - area.top, area.bottom - place.bottom, 1);
  });
}

TEST_P(MessageBoxLayout, RelabellingLaysTheBoxOutAnew) {
  const HostWindow host;
  show(utility_, {.prompt = L"Question", .buttons = 2}, [&](const Dialog& box) {
    for (const long language : {2, 3, 5, 1}) {
      host.send([&] { utility_.set_language(language); });
      expect_layout(box, dpi());
      expect_nothing_clipped(box);
      expect_on_screen(box);
    }
  });
}

TEST_P(MessageBoxLayout, ABoxThatWasMovedStaysWhereItIsWhenRelabelled) {
  const HostWindow host;
  show(utility_, {.prompt = L"Question", .buttons = 2}, [&](const Dialog& box) {
    SetWindowPos(box.window(), nullptr, 11, 22, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    host.send([&] { utility_.set_language(2); });
    RECT place{};
    GetWindowRect(box.window(), &place);
    EXPECT_EQ(place.left, 11);
    EXPECT_EQ(place.top, 22);
  });
}

TEST_P(MessageBoxLayout, TheTextGrowsWithTheResolution) {
  LONG here = 0;
  LONG standard = 0;
  show(utility_, {.prompt = L"Question"},
       [&](const Dialog& box) { here = box.pixels(kPromptId).bottom - box.pixels(kPromptId).top; });
  const Resolution normal(96);
  show(utility_, {.prompt = L"Question"}, [&](const Dialog& box) {
    standard = box.pixels(kPromptId).bottom - box.pixels(kPromptId).top;
  });
  EXPECT_NEAR(here, standard * dpi() / 96.0, 2.0);
}

}  // namespace
}  // namespace pv::dialogs_test
