// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Owners, nesting, threads and endings from outside, with what each button set answers.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

constexpr int kButtonId = 1000;

class MessageBoxLife : public testing::Test {
 protected:
  Utility utility_;
};

TEST_F(MessageBoxLife, TheOwnerIsBlockedWhileTheBoxIsOpen) {
  const HostWindow host;
  const Box box_request{.prompt = L"Question", .owner = host.window()};
  show(utility_, box_request, [&](const Dialog& box) {
    EXPECT_FALSE(IsWindowEnabled(host.window()));
    EXPECT_TRUE(IsWindowEnabled(box.window()));
    EXPECT_EQ(GetWindow(box.window(), GW_OWNER), host.window());
  });
  EXPECT_TRUE(IsWindowEnabled(host.window()));
  EXPECT_EQ(GetActiveWindow(), host.window());
}

TEST_F(MessageBoxLife, AnOwnerThatIsAChildBlocksItsTopLevelWindow) {
  const HostWindow host;
  show(utility_, {.prompt = L"Question", .owner = host.child()}, [&](const Dialog& box) {
    EXPECT_FALSE(IsWindowEnabled(host.window()));
    EXPECT_EQ(GetWindow(box.window(), GW_OWNER), host.window());
  });
  EXPECT_TRUE(IsWindowEnabled(host.window()));
  EXPECT_TRUE(IsWindowEnabled(host.child()));
}

TEST_F(MessageBoxLife, AnOwnerThatWasDisabledStaysDisabled) {
  const HostWindow host;
  EnableWindow(host.window(), FALSE);
  show(utility_, {.prompt = L"Question", .owner = host.window()}, [](const Dialog&) {});
  EXPECT_FALSE(IsWindowEnabled(host.window()));
}

TEST_F(MessageBoxLife, WithoutAnOwnerTheWindowsOfTheThreadAreBlocked) {
  const HostWindow host;
  const HostWindow second;
  EnableWindow(second.window(), FALSE);
  show(utility_, {.prompt = L"Question"}, [&](const Dialog& box) {
    EXPECT_FALSE(IsWindowEnabled(host.window()));
    EXPECT_EQ(GetWindow(box.window(), GW_OWNER), nullptr);
  });
  EXPECT_TRUE(IsWindowEnabled(host.window()));
  EXPECT_FALSE(IsWindowEnabled(second.window()));
}

TEST_F(MessageBoxLife, AnOwnerThatIsNoWindowMeansNone) {
  HWND gone = nullptr;
  {
    const HostWindow host;
    gone = host.window();
  }
  const long result = show(utility_, {.prompt = L"Question", .owner = gone}, [](const Dialog& box) {
    EXPECT_EQ(GetWindow(box.window(), GW_OWNER), nullptr);
  });
  EXPECT_EQ(result, 1);
}

TEST_F(MessageBoxLife, AHostWithoutWindowsCanShowIt) {
  EXPECT_EQ(1, show(utility_, {.prompt = L"Question"},
                    [](const Dialog& box) { EXPECT_TRUE(IsWindowVisible(box.window())); }));
}

TEST_F(MessageBoxLife, ABoxWhoseOwnerIsDestroyedEndsWithCancelOrNothing) {
  constexpr long kExpected[] = {0, 2, 0, 2, 0, 2};
  for (short set = 0; set <= 5; ++set) {
    const HostWindow host;
    const long result =
        show(utility_, {.prompt = L"Question", .buttons = set, .owner = host.window()},
             [&](const Dialog& box) {
               SendMessageW(host.window(), WM_CLOSE, 0, 0);
               EXPECT_TRUE(box.wait_closed());
             });
    EXPECT_EQ(result, kExpected[set]);
    EXPECT_FALSE(IsWindow(host.window()));
  }
}

TEST_F(MessageBoxLife, QuittingEndsTheBoxAndReachesTheHost) {
  const DWORD thread = GetCurrentThreadId();
  constexpr long kExpected[] = {0, 2, 0, 2, 0, 2};
  for (short set = 0; set <= 5; ++set) {
    const HostWindow host;
    const long result =
        show(utility_, {.prompt = L"Question", .buttons = set, .owner = host.window()},
             [&](const Dialog& box) {
               PostThreadMessageW(thread, WM_QUIT, 42, 0);
               EXPECT_TRUE(box.wait_closed());
             });
    EXPECT_EQ(result, kExpected[set]);
    EXPECT_TRUE(IsWindowEnabled(host.window()));
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
    }
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 42u);
  }
}

// Not at the next message that happens to come. The best of some shows tells: a busy machine can
// only delay them.
TEST_F(MessageBoxLife, AClickThatIsSentEndsTheBoxAtOnce) {
  DWORD best = 60000;
  for (int i = 0; i < 5; ++i) {
    DWORD started = 0;
    show(utility_, {.prompt = L"Question"}, [&](const Dialog& box) {
      started = GetTickCount();
      SendMessageW(box.control(kButtonId), BM_CLICK, 0, 0);
      EXPECT_TRUE(box.wait_closed());
    });
    best = std::min(best, GetTickCount() - started);
  }
  EXPECT_LT(best, 1000u);
}

TEST_F(MessageBoxLife, ABoxOpensInsideAnother) {
  const HostWindow host;
  const DWORD thread = GetCurrentThreadId();
  long inner_result = -1;
  const Box inner_request{.prompt = L"Inner", .buttons = 5, .title = L"In"};
  const long outer_result =
      show(utility_, {.prompt = L"Outer", .buttons = 3, .owner = host.window()},
           [&](const Dialog& outer) {
             host.post([&] { inner_result = utility_.message_box(inner_request); });
             const Dialog inner = wait_for_dialog(thread, L"frmMsgBox", 2);
             ASSERT_NE(inner.window(), outer.window());
             EXPECT_EQ(inner.title(), L"In");
             EXPECT_FALSE(IsWindowEnabled(outer.window()));
             EXPECT_FALSE(IsWindowEnabled(host.window()));
             inner.click(kButtonId);
             EXPECT_TRUE(inner.wait_closed());
             EXPECT_TRUE(wait_until([&] { return IsWindowEnabled(outer.window()) != FALSE; }));
             EXPECT_FALSE(IsWindowEnabled(host.window()));
             outer.drain();
             outer.click(kButtonId + 1);
             EXPECT_TRUE(outer.wait_closed());
           });
  EXPECT_EQ(inner_result, 4);
  EXPECT_EQ(outer_result, 7);
  EXPECT_TRUE(IsWindowEnabled(host.window()));
}

TEST_F(MessageBoxLife, TwoThreadsShowBoxesAtTheSameTimeEachInItsLanguage) {
  struct Shower {
    long language;
    std::wstring yes;
    DWORD thread = 0;
    long result = -1;
  };
  Shower showers[] = {{1, L"Yes"}, {3, L"Ja"}};
  std::vector<std::thread> threads;
  HANDLE ready[2];
  for (int i = 0; i < 2; ++i) {
    ready[i] = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    threads.emplace_back([&shower = showers[i], event = ready[i]] {
      const Apartment apartment;
      const Utility utility;
      utility.set_language(shower.language);
      shower.thread = GetCurrentThreadId();
      SetEvent(event);
      shower.result = utility.message_box({.prompt = L"Question", .buttons = 3});
    });
  }
  ASSERT_EQ(WAIT_OBJECT_0, WaitForMultipleObjects(2, ready, TRUE, 5000));
  const Dialog first = wait_for_dialog(showers[0].thread);
  const Dialog second = wait_for_dialog(showers[1].thread);
  EXPECT_TRUE(first.open() && second.open());
  EXPECT_EQ(first.caption(kButtonId), showers[0].yes);
  EXPECT_EQ(second.caption(kButtonId), showers[1].yes);
  EXPECT_TRUE(IsWindowEnabled(first.window()) && IsWindowEnabled(second.window()));
  first.click(kButtonId);
  second.click(kButtonId + 1);
  for (std::thread& thread : threads) thread.join();
  for (const HANDLE event : ready) CloseHandle(event);
  EXPECT_EQ(showers[0].result, 6);
  EXPECT_EQ(showers[1].result, 7);
}

}  // namespace
}  // namespace pv::dialogs_test
