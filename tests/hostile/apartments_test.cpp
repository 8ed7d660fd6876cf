// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Four apartments use the library at once: each has its own state, and none disturbs another.

#include <gtest/gtest.h>

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "tests/hostile/world.h"
#include "tests/support/dialogs/child_window.h"
#include "tests/support/dialogs/dialog_presser.h"
#include "tests/support/members.h"
#include "tests/support/module.h"
#include "tests/support/silent_streams.h"

namespace pv::test {
namespace {

constexpr int kApartments = 4;
constexpr int kRounds = 200;
constexpr int kBoxes = 5;

/// Runs the action on four threads at once, each in an apartment of its own.
void in_four_apartments(const std::function<void(int)>& action) {
  std::vector<std::jthread> threads;
  for (int number = 0; number < kApartments; ++number) {
    threads.emplace_back([&action, number] {
      ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
      action(number);
      SetErrorInfo(0, nullptr);
      CoUninitialize();
    });
  }
}

/// Counts what happened, for those who wait for it. On this platform the runtime's own barriers and
/// waits for atomics lose a wake-up now and then.
class Turns {
 public:
  void wait_for(int turn) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return taken_ >= turn; });
  }
  void take() {
    const std::lock_guard lock(mutex_);
    ++taken_;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int taken_ = 0;
};

TEST(Apartments, FourCallersWithoutMannersDoNoHarm) {
  const DialogPresser presser;
  SetCurrentDirectoryW(scratch_folder().c_str());
  {
    const SilentStreams silence;
    // The platform's loading of the libraries that a type library refers to is not thread-safe, so
    // it happens before the threads start.
    World first(999);
    first.call_many(1000);
    in_four_apartments([](int number) {
      const DialogPresser presser;
      World world(1000u + static_cast<unsigned>(number));
      world.call_many(1500);
    });
  }
  SetCurrentDirectoryW(program_folder().c_str());
}

constexpr long kCancel = 201, kYes = 205, kNo = 206;

Texts texts_in_language(long language) {
  const Object utility = Object::create(L"pvItems32.CUtility");
  utility.get_object(L"Languages").put(L"ActiveLanguageID", language);
  Texts texts;
  for (const long id : {kCancel, kYes, kNo}) texts.push_back(utility.get(L"pvString", id).text());
  return texts;
}

TEST(Apartments, EachHasItsOwnState) {
  std::vector<Texts> expected;
  for (int number = 0; number < kApartments; ++number)
    expected.push_back(texts_in_language(number + 1));
  texts_in_language(1);
  Turns set;
  in_four_apartments([&](int number) {
    const Object utility = Object::create(L"pvItems32.CUtility");
    const std::wstring own = L"state of apartment " + std::to_wstring(number);
    utility.get_object(L"Languages").put(L"ActiveLanguageID", number + 1);
    utility.put(L"AppIniFileName", own);
    utility.put(L"AppDirectory", 3, own);
    const Object hub = utility.get_object(L"TxmEvents");
    set.take();
    set.wait_for(kApartments);
    for (int round = 0; round < kRounds; ++round) {
      const Object other = Object::create(L"pvItems32.CUtility");
      Texts texts;
      for (const long id : {kCancel, kYes, kNo}) texts.push_back(other.get(L"pvString", id).text());
      ASSERT_EQ(texts, expected[static_cast<std::size_t>(number)]);
      ASSERT_EQ(other.get(L"AppIniFileName"), own);
      ASSERT_EQ(other.get(L"AppDirectory", 3), own);
      ASSERT_EQ(other.get_object(L"TxmEvents"), hub);
      ASSERT_EQ(other.get_object(L"Languages").get(L"ActiveLanguageID"), number + 1);
    }
  });
}

constexpr int kYesButton = 1000, kNoButton = 1001;

BOOL CALLBACK find_box(HWND window, LPARAM found) {
  if (!IsWindowVisible(window) || !child_window(window, kNoButton)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

std::wstring caption_of(HWND box, int button) {
  wchar_t marked[64] = L"";
  InternalGetWindowText(child_window(box, button), marked, 64);
  std::wstring caption(marked);
  std::erase(caption, L'&');
  return caption;
}

/// Waits for the message box of a thread; null after a while.
HWND box_of(DWORD thread) {
  HWND box = nullptr;
  for (int look = 0; look < 4000 && !box; ++look) {
    EnumThreadWindows(thread, find_box, reinterpret_cast<LPARAM>(&box));
    if (!box) Sleep(5);
  }
  SendMessageTimeoutW(box, WM_NULL, 0, 0, SMTO_NORMAL, 20'000, nullptr);  // it is laid out then
  return box;
}

void answer(HWND box) {
  PostMessageW(child_window(box, kNoButton), BM_CLICK, 0, 0);
  for (int look = 0; look < 4000 && IsWindow(box); ++look) Sleep(5);
}

// All boxes are open at the same time, but they open and close one after the other: this platform's
// text boxes share a cache that is not thread-safe.
TEST(Apartments, EachShowsItsFormsInItsOwnLanguage) {
  std::vector<Texts> expected;
  for (int number = 0; number < kApartments; ++number)
    expected.push_back(texts_in_language(number + 1));
  texts_in_language(1);
  Turns opened;
  Turns closed;
  in_four_apartments([&](int number) {
    const Object utility = Object::create(L"pvItems32.CUtility");
    utility.get_object(L"Languages").put(L"ActiveLanguageID", number + 1);
    const DWORD thread = GetCurrentThreadId();
    for (int round = 0; round < kBoxes; ++round) {
      const int first = round * kApartments;
      closed.wait_for(first);
      opened.wait_for(first + number);
      Texts seen;
      {
        const std::jthread user([&] {
          const HWND box = box_of(thread);
          opened.take();
          opened.wait_for(first + kApartments);
          closed.wait_for(first + number);
          seen = {caption_of(box, kYesButton), caption_of(box, kNoButton)};
          answer(box);
          closed.take();
        });
        constexpr short kYesNo = 4;
        utility.call(L"pvMsgBox", L"Question", kYesNo);
      }
      const Texts& texts = expected[static_cast<std::size_t>(number)];
      EXPECT_EQ(seen, (Texts{texts[1], texts[2]}));
    }
  });
}

}  // namespace
}  // namespace pv::test
