// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What every form must bear: hosts without windows, several apartments, endings from outside,
// questions within questions, and hundreds of shows.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>

#include "tests/dialogs/driver/every_form.h"
#include "tests/dialogs/driver/handle_count.h"
#include "tests/support/memory/allocation_spy.h"

namespace pv::dialogs_test {
namespace {

constexpr int kCancelButton = 1001;

class EveryFormLife : public testing::TestWithParam<FormKind> {
 protected:
  EveryFormLife() { utility_.set_language(1); }

  bool show(const Script& script, HWND owner = nullptr) const {
    return GetParam().show(utility_, script, owner);
  }

  Utility utility_;
};

std::string name_of(const testing::TestParamInfo<FormKind>& info) {
  std::string name = info.param.name;
  std::erase(name, '-');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Forms, EveryFormLife, testing::ValuesIn(every_form()), name_of);

void confirm(const Dialog& dialog) {
  dialog.click(kConfirmButton);
  EXPECT_TRUE(dialog.wait_closed());
}

/// The exit code of a waiting WM_QUIT, which it takes; -1 for none.
int pending_quit() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
    if (message.message == WM_QUIT) return static_cast<int>(message.wParam);
  return -1;
}

TEST_P(EveryFormLife, QuittingEndsItUnconfirmedAndReachesTheHost) {
  const DWORD thread = GetCurrentThreadId();
  const HostWindow host;
  EXPECT_FALSE(show(
      [&](const Dialog& dialog) {
        PostThreadMessageW(thread, WM_QUIT, 42, 0);
        EXPECT_TRUE(dialog.wait_closed());
      },
      host.window()));
  EXPECT_EQ(pending_quit(), 42);
  EXPECT_TRUE(IsWindowEnabled(host.window()));
  EXPECT_TRUE(show(confirm)) << "and it can be shown again";
}

TEST_P(EveryFormLife, AHostThatIsQuittingAlreadyGetsItUnconfirmed) {
  PostQuitMessage(43);
  EXPECT_FALSE(GetParam().ask(utility_, nullptr));
  EXPECT_EQ(pending_quit(), 43);
}

TEST_P(EveryFormLife, TheWindowsOfItsThreadAreBlockedUntilItEnds) {
  const HostWindow host;
  const HostWindow other;
  for (const HWND owner : {HWND{}, host.window()}) {
    const HWND active = GetActiveWindow();
    EXPECT_TRUE(active);
    EXPECT_TRUE(show(
        [&](const Dialog& dialog) {
          EXPECT_FALSE(IsWindowEnabled(host.window()));
          EXPECT_FALSE(IsWindowEnabled(other.window()));
          EXPECT_EQ(GetWindow(dialog.window(), GW_OWNER), GetParam().takes_owner ? owner : active);
          confirm(dialog);
        },
        owner));
    EXPECT_TRUE(IsWindowEnabled(host.window()));
    EXPECT_TRUE(IsWindowEnabled(other.window()));
  }
}

bool stands_above(HWND upper, HWND lower) {
  HWND below = upper;
  while (below && below != lower) below = GetWindow(below, GW_HWNDNEXT);
  return below == lower;
}

TEST_P(EveryFormLife, DoesNotGetLostBehindItsHost) {
  const HostWindow host;
  show(
      [&](const Dialog& dialog) {
        // Owned windows have no button of their own in the task bar, unless they ask for one.
        EXPECT_EQ(GetWindow(dialog.window(), GW_OWNER), host.window());
        EXPECT_FALSE(GetWindowLongW(dialog.window(), GWL_EXSTYLE) & WS_EX_APPWINDOW);
        SetWindowPos(host.window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        EXPECT_TRUE(stands_above(dialog.window(), host.window()));
      },
      host.window());
}

// An owned dialog would not be seen with it.
TEST_P(EveryFormLife, AHostThatIsMinimisedOrHiddenDoesNotTakeItAlong) {
  if (GetParam().takes_owner) return;
  for (const int how : {SW_MINIMIZE, SW_HIDE}) {
    const HostWindow host;
    ShowWindow(host.window(), how);
    EXPECT_TRUE(show([](const Dialog& dialog) {
      EXPECT_EQ(GetWindow(dialog.window(), GW_OWNER), nullptr);
      confirm(dialog);
    }));
  }
}

TEST_P(EveryFormLife, TheEndOfItsOwnerIsItsEnd) {
  const HostWindow host;
  const bool confirmed = show(
      [&](const Dialog& dialog) {
        SendMessageW(host.window(), WM_CLOSE, 0, 0);
        EXPECT_FALSE(IsWindow(host.window()));
        EXPECT_TRUE(dialog.wait_closed());
      },
      host.window());
  EXPECT_FALSE(confirmed);
  EXPECT_TRUE(show(confirm)) << "and it can be shown again";
}

/// A thread of the host with an apartment and a facade of its own.
class SecondApartment {
 public:
  explicit SecondApartment(std::function<void(const Utility&)> run)
      : thread_([run = std::move(run)] {
          const Apartment apartment;
          const Utility utility;
          run(utility);
        }) {}

 private:
  std::jthread thread_;
};

TEST_P(EveryFormLife, AHostWithoutWindowsInASecondApartmentCanUseIt) {
  std::atomic<int> confirmed{0};
  {
    const SecondApartment second([&](const Utility& utility) {
      for (int i = 0; i < 2; ++i) confirmed += GetParam().show(utility, confirm);
    });
  }
  EXPECT_EQ(confirmed, 2);
}

// Both forms are open at the same time, but they come and go one after the other: this platform's
// text boxes share a cache that does not care for threads.
TEST_P(EveryFormLife, TwoApartmentsShowItAtTheSameTimeEachInItsLanguage) {
  constexpr long kLanguages[] = {1, 4};
  std::wstring captions[2];
  std::atomic<int> open{0};
  std::atomic<int> confirmed{0};
  const auto use = [&](int i) {
    return [&, i](const Utility& utility) {
      utility.set_language(kLanguages[i]);
      EXPECT_TRUE(wait_until([&] { return open >= i; }));
      confirmed += GetParam().show(utility, [&](const Dialog& dialog) {
        ++open;
        EXPECT_TRUE(wait_until([&] { return open >= 2; }));
        for (int id = kConfirmButton; id <= kCancelButton; ++id)
          captions[i] += dialog.caption(id) + L" ";
        EXPECT_TRUE(IsWindowEnabled(dialog.window()));
        ++open;
        EXPECT_TRUE(wait_until([&] { return open >= 4 && confirmed >= i; }));
        confirm(dialog);
      });
    };
  };
  {
    const SecondApartment first(use(0));
    const SecondApartment second(use(1));
  }
  EXPECT_EQ(confirmed, 2);
  const bool only_ok = captions[0] == L"OK ? ";  // the same in all languages
  EXPECT_TRUE(only_ok || captions[0] != captions[1]);
}

// An owner of another apartment, whose thread does not wait for the dialog.
TEST_P(EveryFormLife, AnOwnerInAnotherApartmentMayEndMeanwhile) {
  if (!GetParam().takes_owner) return;
  const HostWindow host;
  std::atomic<bool> ended{false};
  bool confirmed = false;
  const SecondApartment second([&](const Utility& utility) {
    confirmed = GetParam().show(
        utility,
        [&](const Dialog& dialog) {
          EXPECT_TRUE(wait_until([&] { return !IsWindowEnabled(host.window()); }));
          SendMessageW(host.window(), WM_CLOSE, 0, 0);
          if (dialog.open()) dialog.click(kConfirmButton);
          EXPECT_TRUE(dialog.wait_closed());
        },
        host.window());
    ended = true;
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
  });
  EXPECT_TRUE(wait_until([&] {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    return ended.load();
  }));
  EXPECT_FALSE(IsWindow(host.window()));
}

TEST_P(EveryFormLife, AskedAgainFromWithinItselfItAnswersAtOnce) {
  if (GetParam().form == std::wstring(L"frmMsgBox")) return;  // boxes may stand on each other
  const HostWindow host;
  EXPECT_TRUE(show([&](const Dialog& dialog) {
    std::atomic<bool> answered{false};
    bool second = true;
    host.post([&] {
      second = GetParam().ask(utility_, nullptr);
      answered = true;
    });
    EXPECT_TRUE(wait_until([&] { return answered.load(); }));
    EXPECT_FALSE(second);
    EXPECT_EQ(open_dialogs(GetWindowThreadProcessId(dialog.window(), nullptr), GetParam().form),
              std::vector<HWND>{dialog.window()});
    confirm(dialog);
  }));
}

TEST_P(EveryFormLife, AnotherFormMayOpenOverIt) {
  const HostWindow host;
  const DWORD thread = GetCurrentThreadId();
  EXPECT_TRUE(show([&](const Dialog& dialog) {
    std::atomic<long> answer{-1};
    host.post([&] { answer = utility_.message_box({.prompt = L"Sure?", .buttons = 4}); });
    const std::size_t boxes = GetParam().form == std::wstring(L"frmMsgBox") ? 2 : 1;
    const Dialog box = wait_for_dialog(thread, L"frmMsgBox", boxes);
    EXPECT_TRUE(wait_until([&] { return !IsWindowEnabled(dialog.window()); }));
    box.click(kCancelButton);  // No
    EXPECT_TRUE(box.wait_closed());
    EXPECT_TRUE(wait_until([&] { return answer == 7; }));
    EXPECT_TRUE(wait_until([&] { return IsWindowEnabled(dialog.window()) != FALSE; }));
    confirm(dialog);
  }));
}

/// The kinds of which a leak could be one of its own. Message boxes differ in their buttons only,
/// and some kinds go through all that another one shows.
std::vector<FormKind> kinds_apart() {
  std::vector<FormKind> kinds = every_form();
  std::erase_if(kinds, [](const FormKind& kind) {
    const bool box = kind.form == std::wstring(L"frmMsgBox");
    return (box && kind.name != "frmMsgBox-3") || kind.name == "frmPW-enter" ||
           kind.name == "frmSymbolEdit-new";
  });
  return kinds;
}

// The platform keeps what it paints with. On a busy machine a form may be gone before it is
// painted.
void paint_and_confirm(const Dialog& dialog) {
  RedrawWindow(dialog.window(), nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  confirm(dialog);
}

class EveryFormOften : public EveryFormLife {};
INSTANTIATE_TEST_SUITE_P(Forms, EveryFormOften, testing::ValuesIn(kinds_apart()), name_of);

TEST_P(EveryFormOften, TwoHundredShowsLeaveNothingBehind) {
  // What leaks in every show makes 200; a few are caches of the platform.
  constexpr long kTolerance = 20;
  const HostWindow host;
  const auto show_times = [&](int times) {
    for (int i = 0; i < times; ++i) {
      const Script& way = i % 3 ? confirm : [](const Dialog& dialog) {
        GetParam().can_be_cancelled ? dialog.close() : dialog.click(kCancelButton);
      };
      show(way, i % 2 ? host.window() : nullptr);
    }
  };
  for (const HWND owner : {HWND{}, host.window(), HWND{}, host.window()})
    show(paint_and_confirm, owner);
  show_times(20);
  const HandleCount before = count_handles();
  const test::AllocationBalance balance;
  show_times(200);
  const HandleCount after = count_handles();
  EXPECT_EQ(after.windows, before.windows);
  EXPECT_LT(after.gdi, before.gdi + kTolerance);
  EXPECT_LT(after.user, before.user + kTolerance);
  EXPECT_TRUE(wait_until([&] { return count_handles().threads <= before.threads; }));
  EXPECT_LT(after.allocations, before.allocations + kTolerance);
  EXPECT_LT(balance.difference(), kTolerance) << balance.report();
}

}  // namespace
}  // namespace pv::dialogs_test
