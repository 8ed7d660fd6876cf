// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/version_file.h"

#include <gtest/gtest.h>

#include <string>

namespace pv {
namespace {

const TextCodec& kCodec = latin1_codec();
const FileStamp kStamp{L"1.02.03", L"a build"};

std::vector<VersionRecord> some_versions() {
  return {{L"V1.0", 60, {{L"1", L"1"}, {L"17", L"17b"}}}, {L"V2.0", 61, {}}};
}

TEST(VersionFile, IsWrittenInItsExactForm) {
  EXPECT_EQ(format_version_file(some_versions(), kStamp, kCodec),
            "[Versions]\r\n"
            "Count=2\r\n"
            "Version=1.02.03\r\n"
            "Date=a build\r\n"
            "\r\n"
            "[Version1]\r\n"
            "Name=V1.0\r\n"
            "Count=2\r\n"
            "ItemCount=60\r\n"
            "Item1=1|1\r\n"
            "Item2=17|17b\r\n"
            "\r\n"
            "[Version2]\r\n"
            "Name=V2.0\r\n"
            "Count=0\r\n"
            "ItemCount=61\r\n");
}

TEST(VersionFile, ComesBackAsWritten) {
  const std::string bytes = format_version_file(some_versions(), kStamp, kCodec);
  const auto file = parse_version_file(bytes, kCodec);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->complete);
  ASSERT_EQ(file->versions.size(), 2U);
  EXPECT_EQ(file->versions[0].item_count, 60);
  EXPECT_EQ(file->versions[0].entries[1].index_key, L"17b");
  EXPECT_TRUE(file->versions[1].entries.empty());
  EXPECT_EQ(format_version_file(file->versions, kStamp, kCodec), bytes);
}

TEST(VersionFile, WithoutVersionsIsNoVersionFile) {
  for (const char* bytes : {"", "[Versions]\n", "[Versions]\nCount=0\n", "[Versions]\nCount=-1\n",
                            "[Versions]\nCount=40000\n", "Count=2\nName=x\n"}) {
    EXPECT_FALSE(parse_version_file(bytes, kCodec)) << bytes;
  }
}

TEST(VersionFile, EndsAtAVersionWithoutNameAndKeepsThoseBefore) {
  const auto file = parse_version_file(
      "[Versions]\nCount=3\n"
      "[Version1]\nName=A\nCount=0\nItemCount=5\n"
      "[Version2]\nName=\nCount=0\nItemCount=6\n"
      "[Version3]\nName=C\nCount=0\nItemCount=7\n",
      kCodec);
  ASSERT_TRUE(file);
  EXPECT_FALSE(file->complete);
  ASSERT_EQ(file->versions.size(), 1U);
  EXPECT_EQ(file->versions[0].name, L"A");
}

TEST(VersionFile, EndsWhereTheFileHasFewerVersionsThanAnnounced) {
  const auto file =
      parse_version_file("[Versions]\nCount=32767\nName=A\nCount=0\nItemCount=5\n", kCodec);
  ASSERT_TRUE(file);
  EXPECT_FALSE(file->complete);
  EXPECT_EQ(file->versions.size(), 1U);
}

TEST(VersionFile, WithoutAnyNameIsReadAsIncomplete) {
  const auto file = parse_version_file("[Versions]\nCount=1\n", kCodec);
  ASSERT_TRUE(file);
  EXPECT_FALSE(file->complete);
  EXPECT_TRUE(file->versions.empty());
}

TEST(VersionFile, TakesACountBelowOneAsNoEntries) {
  for (const char* count : {"0", "-4", "x", "40000"}) {
    const auto file = parse_version_file(
        std::string("[Versions]\nCount=1\nName=A\nCount=") + count + "\nItemCount=5\nItem1=1|1\n",
        kCodec);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->complete);
    ASSERT_EQ(file->versions.size(), 1U);
    EXPECT_TRUE(file->versions[0].entries.empty());
  }
}

TEST(VersionFile, GivesDefaultsForMissingLines) {
  const auto file = parse_version_file("[Versions]\nCount=1\nName=A\nCount=2\n", kCodec);
  ASSERT_TRUE(file);
  ASSERT_EQ(file->versions.size(), 1U);
  EXPECT_EQ(file->versions[0].item_count, 255);
  ASSERT_EQ(file->versions[0].entries.size(), 2U);
  EXPECT_EQ(file->versions[0].entries[1].key, L"1");
  EXPECT_EQ(file->versions[0].entries[1].index_key, L"1");

  const auto bare = parse_version_file("[Versions]\nCount=1\nName=A\n", kCodec);
  ASSERT_TRUE(bare);
  EXPECT_TRUE(bare->complete);
  EXPECT_EQ(bare->versions[0].item_count, 255);
  EXPECT_TRUE(bare->versions[0].entries.empty());
}

TEST(VersionFile, ReadsItemCountsBeyondTheirRangeAsZero) {
  const auto file =
      parse_version_file("[Versions]\nCount=1\nName=A\nCount=0\nItemCount=40000\n", kCodec);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->versions[0].item_count, 0);
}

TEST(VersionFile, TakesAnEntryWithoutSeparatorAsAKeyAlone) {
  const auto file = parse_version_file(
      "[Versions]\nCount=1\nName=A\nCount=3\nItemCount=5\nItem1=7\nItem2=\nItem3=a|b|c|\n", kCodec);
  ASSERT_TRUE(file);
  const auto& entries = file->versions[0].entries;
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].key, L"7");
  EXPECT_EQ(entries[0].index_key, L"");
  EXPECT_EQ(entries[1].key, L"");
  EXPECT_EQ(entries[2].index_key, L"b");
}

TEST(VersionFile, ReadsOnInTheFilesOrderPastSections) {
  const auto file = parse_version_file(
      "[Versions]\nCount=2\n"
      "[Version1]\nName=A\nItemCount=5\n"
      "[Version2]\nName=B\nCount=1\nItemCount=6\nItem1=x|y\n"
      "[Version3]\nName=C\nCount=0\n",
      kCodec);
  ASSERT_TRUE(file);
  ASSERT_EQ(file->versions.size(), 2U);
  EXPECT_EQ(file->versions[0].name, L"A");
  EXPECT_EQ(file->versions[0].item_count, 6);
  EXPECT_EQ(file->versions[0].entries[0].index_key, L"y");
  EXPECT_EQ(file->versions[1].name, L"C");
}

TEST(VersionFile, CannotBeMadeToFillMemoryByCountsAlone) {
  std::string bytes = "[Versions]\nCount=32767\n";
  for (int i = 0; i < 32767; ++i) bytes += "Name=A\nCount=32767\nItemCount=1\n";
  const auto file = parse_version_file(bytes, kCodec);
  ASSERT_TRUE(file);
  EXPECT_FALSE(file->complete);
  ASSERT_EQ(file->versions.size(), 1U);
  EXPECT_EQ(file->versions[0].entries.size(), 32767U);
}

}  // namespace
}  // namespace pv
