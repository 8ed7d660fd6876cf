// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Saving without room. The suite runs these tests with a limit on the size of files, which the
// option --room tells: what lies beyond it does not fit.

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/faults/faults_test.h"
#include "tests/support/program.h"

namespace pv::test {
namespace {

std::size_t room() {
  const auto given = option("--room");
  if (!given) throw CallFailed("the option --room is missing");
  return static_cast<std::size_t>(std::atoi(given->c_str()));
}

constexpr const char* kOld = "old content";

class FullDisk : public testing::TestWithParam<TableKind> {
 protected:
  Object small_table() const { return GetParam().make(3); }
  Object big_table() const { return GetParam().make(static_cast<int>(room() / 20)); }

  const TestFolder folder_;
};

TEST_P(FullDisk, LeavesTheOldFileWhole) {
  const std::wstring file = folder_.write(L"a", kOld);
  EXPECT_FALSE(save(big_table(), file));
  EXPECT_EQ(bytes_of(file), kOld);
}

TEST_P(FullDisk, LeavesNoFileWhereNoneWas) {
  EXPECT_FALSE(save(big_table(), folder_.file(L"a")));
  EXPECT_TRUE(folder_.names().empty()) << folder_.names().size();
}

TEST_P(FullDisk, LeavesNothingBesideTheFile) {
  const std::wstring file = folder_.write(L"a", kOld);
  EXPECT_FALSE(save(big_table(), file));
  EXPECT_EQ(folder_.names(), (Texts{L"a"}));
}

TEST_P(FullDisk, TakesWhatFits) {
  const std::string content = content_of(small_table());
  ASSERT_LT(content.size(), room());
  const std::wstring file = folder_.file(L"a");
  EXPECT_TRUE(save(small_table(), file));
  EXPECT_EQ(bytes_of(file), content);
}

TEST_P(FullDisk, TakesWhatFitsAfterARefusal) {
  const std::wstring file = folder_.file(L"a");
  EXPECT_FALSE(save(big_table(), file));
  EXPECT_TRUE(save(small_table(), file));
  EXPECT_EQ(bytes_of(file), content_of(small_table()));
}

INSTANTIATE_TEST_SUITE_P(Tables, FullDisk,
                         testing::Values(item_table(), version_table(), list_table(),
                                         dimension_table()),
                         [](const auto& info) { return info.param.name; });

TEST(FullDiskItems, StayChanged) {
  const TestFolder folder;
  const Object items = item_table().make(static_cast<int>(room() / 20));
  EXPECT_FALSE(save(items, folder.file(L"a")));
  EXPECT_EQ(items.get(L"Changed"), true);
}

TEST(FullDiskDimensions, AreAppendedWholeOrNotAtAll) {
  const TestFolder folder;
  const Object table = dimension_table().make(10);
  const std::size_t size = content_of(table).size() + 2;  // and an empty line before it
  for (const std::size_t left : {size, size - 1, size / 2, std::size_t{1}, std::size_t{0}}) {
    const std::string old(room() - left, 'x');
    const std::wstring file = folder.write(L"a", old);
    const bool fits = left == size;
    EXPECT_EQ(save(table, file), fits) << left;
    EXPECT_EQ(bytes_of(file), fits ? old + "\r\n" + content_of(table) : old) << left;
  }
}

// --- The audit file

class FullDiskAudit : public testing::Test {
 protected:
  FullDiskAudit() { utility_.put(L"AppDirectory", kHistoryFolder, folder_.file(L"")); }
  ~FullDiskAudit() override { utility_.put(L"AppDirectory", kHistoryFolder, L""); }

  bool record() const {
    const Object items = Object::create(L"pvItems32.CItems");
    return transmitter_.call(L"DoHistorianX", add_item(items, L"7", 7, 1), L"Ann", L"why")
        .boolean();
  }

  static constexpr int kHistoryFolder = 8;
  const TestFolder folder_;
  const Object utility_ = Object::create(L"pvItems32.CUtility");
  const Object transmitter_ = Object::create(L"pvItems32.CTxm");
};

TEST_F(FullDiskAudit, GetsNoHalfLines) {
  const std::string old(room() - 10, 'x');
  const std::wstring file = folder_.write(L"Historian.csv", old);
  EXPECT_FALSE(record());
  EXPECT_EQ(bytes_of(file), old);
}

TEST_F(FullDiskAudit, GetsLinesThatFit) {
  ASSERT_TRUE(record());
  const std::string bytes = bytes_of(folder_.file(L"Historian.csv"));
  EXPECT_TRUE(bytes.ends_with(",why\r\n")) << bytes;
}

}  // namespace
}  // namespace pv::test
