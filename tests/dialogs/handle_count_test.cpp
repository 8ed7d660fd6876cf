// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The count that the tests for leaks rely on sees what is left behind.

#include "tests/dialogs/driver/handle_count.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <memory>
#include <thread>
#include <vector>

#include "tests/dialogs/driver/automation_client.h"
#include "tests/dialogs/driver/platform_call.h"

namespace pv::dialogs_test {
namespace {

constexpr int kMany = 40;

class LeftBehind {
 public:
  explicit LeftBehind(int count) {
    for (int i = 0; i < count; ++i) {
      LOGFONTW font{};
      font.lfHeight = 10 + i;
      fonts_.push_back(CreateFontIndirectW(&font));
      blocks_.push_back(std::make_unique<char[]>(100));
      windows_.push_back(
          CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr));
    }
  }
  ~LeftBehind() {
    for (const HFONT font : fonts_) DeleteObject(font);
    for (const HWND window : windows_) DestroyWindow(window);
  }
  LeftBehind(const LeftBehind&) = delete;
  LeftBehind& operator=(const LeftBehind&) = delete;

 private:
  std::vector<HFONT> fonts_;
  std::vector<HWND> windows_;
  std::vector<std::unique_ptr<char[]>> blocks_;
};

TEST(HandleCounts, SeeWhatIsLeftBehind) {
  const HandleCount before = count_handles();
  {
    const LeftBehind left_behind(kMany);
    const HandleCount more = count_handles();
    EXPECT_GE(more.gdi, before.gdi + kMany);
    EXPECT_GE(more.user, before.user + kMany);
    EXPECT_GE(more.windows, before.windows + kMany);
    EXPECT_GE(more.allocations, before.allocations + kMany);
  }
  EXPECT_LT(count_handles().windows, before.windows + kMany);
}

TEST(HandleCounts, SeeWhatTheLibraryHolds) {
  const long before = count_handles().allocations;
  const std::array<Utility, kMany> held;
  EXPECT_GE(count_handles().allocations, before + kMany);
}

HRESULT WINAPI refuse_picture(PICTDESC*, REFIID, BOOL, void** picture) {
  *picture = nullptr;
  return E_FAIL;
}

TEST(HandleCounts, StayWhenPicturesCannotBeMade) {
  const Utility utility;
  const test::Object language =
      test::Object::create(L"pvItems32.CLanguages").get_object(L"Item", 1);
  const PlatformCall refusing("OleCreatePictureIndirect", &refuse_picture);
  const HandleCount before = count_handles();
  for (int i = 0; i < kMany; ++i) {
    EXPECT_EQ(utility.object().try_call(L"GetNoSymbolPicture").code, E_FAIL);
    EXPECT_EQ(language.try_call(L"Picture").code, E_FAIL);
    EXPECT_EQ(language.try_call(L"Icon").code, E_FAIL);
  }
  const HandleCount after = count_handles();
  EXPECT_LT(after.gdi, before.gdi + kMany);
  EXPECT_LT(after.user, before.user + kMany);
}

TEST(HandleCounts, SeeAThread) {
  const HANDLE end = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const long before = count_handles().threads;
  std::thread waiting([end] { WaitForSingleObject(end, INFINITE); });
  EXPECT_EQ(count_handles().threads, before + 1);
  SetEvent(end);
  waiting.join();
  CloseHandle(end);
}

}  // namespace
}  // namespace pv::dialogs_test
