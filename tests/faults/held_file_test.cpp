// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Saving over a file that another process holds open, into folders that take no files, and beside
// another process that saves the same file.

#include <gtest/gtest.h>

#include "tests/faults/faults_test.h"

namespace pv::test {
namespace {

constexpr const char* kOld = "old content\r\n";

class HeldFile : public testing::TestWithParam<TableKind> {
 protected:
  Object table() const { return GetParam().make(20); }
  bool appends() const { return GetParam().name == dimension_table().name; }
  /// The content after a save that worked.
  std::string new_content() const {
    return appends() ? kOld + ("\r\n" + content_of(table())) : content_of(table());
  }
  /// Saves while another process has the file open, and tells whether it worked.
  bool save_while_held(DWORD share) const {
    const std::wstring file = folder_.write(L"a", kOld);
    bool saved = false;
    {
      const OtherProcess holder(L"hold", file, static_cast<int>(share));
      saved = save(table(), file);
    }
    EXPECT_EQ(bytes_of(file), saved ? new_content() : kOld) << share;
    EXPECT_EQ(folder_.names(), (Texts{L"a"})) << share;
    return saved;
  }

  const TestFolder folder_;
};

TEST_P(HeldFile, StaysTheOldOneWhenItIsNotShared) { EXPECT_FALSE(save_while_held(0)); }

TEST_P(HeldFile, StaysTheOldOneWhenItIsSharedForReading) {
  EXPECT_FALSE(save_while_held(FILE_SHARE_READ));
}

TEST_P(HeldFile, MayOnlyBeAppendedToWhenItIsSharedForWriting) {
  EXPECT_EQ(save_while_held(FILE_SHARE_READ | FILE_SHARE_WRITE), appends());
}

// Whether a file that is shared for everything may be replaced depends on the system's version.
TEST_P(HeldFile, IsTheOldOrTheNewOneWhenItIsSharedForEverything) {
  const bool saved = save_while_held(FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
  if (appends()) {
    EXPECT_TRUE(saved);
  }
}

TEST_P(HeldFile, IsSavedAgainAfterItsRelease) {
  const std::wstring file = folder_.write(L"a", kOld);
  { const OtherProcess holder(L"hold", file, 0); }
  EXPECT_TRUE(save(table(), file));
  EXPECT_EQ(bytes_of(file), new_content());
}

TEST_P(HeldFile, IsNotLoadedAndTheTableStays) {
  const Object loaded = table();
  const std::wstring file = folder_.file(L"a");
  ASSERT_TRUE(save(GetParam().make(3), file));
  const OtherProcess holder(L"hold", file, 0);
  EXPECT_EQ(loaded.call(L"LoadSettingsNew", file), false);
  EXPECT_EQ(loaded.get(GetParam().count), 20);
}

TEST_P(HeldFile, IsNotThereInAFolderThatTakesNone) {
  // Not even the superuser may create files there.
  const std::wstring file = L"Z:\\proc\\pvItems32.settings";
  EXPECT_FALSE(save(table(), file));
  EXPECT_EQ(GetFileAttributesW(file.c_str()), INVALID_FILE_ATTRIBUTES);
}

INSTANTIATE_TEST_SUITE_P(Tables, HeldFile,
                         testing::Values(item_table(), version_table(), list_table(),
                                         dimension_table()),
                         [](const auto& info) { return info.param.name; });

TEST(TwoSavers, LeaveTheFileOfOneOfThemWhole) {
  const TestFolder folder;
  const std::wstring file = folder.file(L"a");
  const Object own = item_table().make(250);
  const std::string own_content = content_of(own);
  int saved = 0;
  int seen_of_the_other = 0;
  const OtherProcess other(L"save", file, 0);
  for (int round = 0; round < 100; ++round) {
    if (save(own, file)) ++saved;
    const Object loaded = Object::create(L"pvItems32.CItems");
    if (!loaded.call(L"LoadSettingsNew", file).boolean()) continue;  // being replaced
    const long count = loaded.get(item_table().count).number();
    EXPECT_TRUE(count == 250 || count == 400 || count == 700) << count;
    EXPECT_EQ(loaded.get_object(L"Item", std::to_wstring(count)).get(L"ItemID"), count);
    if (count != 250) ++seen_of_the_other;
  }
  EXPECT_GT(saved, 0);
  EXPECT_GT(seen_of_the_other, 0);
}

}  // namespace
}  // namespace pv::test
