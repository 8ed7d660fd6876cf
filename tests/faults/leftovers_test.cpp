// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What programs that were killed in the middle of a save left beside the file.

#include <gtest/gtest.h>

#include "tests/faults/faults_test.h"
#include "tests/support/own_file.h"

namespace pv::test {
namespace {

void make_two_days_old(const std::wstring& file) {
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  ULARGE_INTEGER ticks{};
  ticks.LowPart = now.dwLowDateTime;
  ticks.HighPart = now.dwHighDateTime;
  ticks.QuadPart -= 2ull * 24 * 60 * 60 * 10'000'000;
  const FILETIME before{ticks.LowPart, ticks.HighPart};
  const HANDLE handle =
      CreateFileW(file.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_TRUE(SetFileTime(handle, nullptr, nullptr, &before));
  CloseHandle(handle);
}

class Leftovers : public testing::Test {
 protected:
  void leave(const wchar_t* name, bool old) const {
    const std::wstring file = folder_.write(name, "half a f");
    if (old) make_two_days_old(file);
  }
  bool save() const { return test::save(item_table().make(3), folder_.file(L"a.itm")); }

  const TestFolder folder_;
};

TEST_F(Leftovers, OfOldSavesOfTheFileGoWithTheNextOne) {
  leave(L"a.itm.4711-12.tmp", true);
  leave(L"a.itm.4712-12.tmp", true);
  EXPECT_TRUE(save());
  EXPECT_EQ(folder_.names(), (Texts{L"a.itm"}));
}

// Another program may be saving at this moment.
TEST_F(Leftovers, OfTodayStay) {
  leave(L"a.itm.4711-12.tmp", false);
  EXPECT_TRUE(save());
  EXPECT_EQ(folder_.names(), (Texts{L"a.itm", L"a.itm.4711-12.tmp"}));
}

TEST_F(Leftovers, AreNotTakenForFilesOfOthers) {
  const Texts others = {L"a.itm.12-x.tmp", L"a.itm.notes.tmp", L"a.itm.tmp", L"b.itm.4711-12.tmp"};
  for (const std::wstring& name : others) leave(name.c_str(), true);
  EXPECT_TRUE(save());
  Texts expected = others;
  expected.insert(expected.begin(), L"a.itm");
  EXPECT_EQ(folder_.names(), expected);
}

}  // namespace
}  // namespace pv::test
