// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/list_file.h"

#include <gtest/gtest.h>

#include <string>

namespace pv {
namespace {

const TextCodec& kCodec = latin1_codec();
const FileStamp kStamp{L"1.02.03", L"a build"};

std::vector<ListRecord> some_lists() {
  return {{L"On/Off", {{L"0", L"Off", L"0"}, {L"1", L"On", L"1"}}}, {L"Empty", {}}};
}

TEST(ListMember, ReadsThreeFields) {
  const ListMemberRecord member = parse_list_member(L"k|c|t|ignored|");
  EXPECT_EQ(member.key, L"k");
  EXPECT_EQ(member.caption, L"c");
  EXPECT_EQ(member.tag, L"t");
}

TEST(ListMember, LeavesMissingFieldsAsTheyWere) {
  const ListMemberRecord initial{L"k", L"c", L"t"};
  EXPECT_EQ(format_list_member(parse_list_member(L"K|C", initial)), L"K|C|t|");
  EXPECT_EQ(format_list_member(parse_list_member(L"K", initial)), L"K|c|t|");
  EXPECT_EQ(format_list_member(parse_list_member(L"", initial)), L"|c|t|");
  EXPECT_EQ(format_list_member(parse_list_member(L"||", initial)), L"|||");
}

TEST(ListMember, EndsEveryFieldWithASeparator) {
  EXPECT_EQ(format_list_member({L"k", L"c", L"t"}), L"k|c|t|");
  EXPECT_EQ(format_list_member({}), L"|||");
}

TEST(ListFile, IsWrittenInItsExactForm) {
  EXPECT_EQ(format_list_file(some_lists(), kStamp, kCodec),
            "[Lists]\r\n"
            "Count=2\r\n"
            "Version=1.02.03\r\n"
            "Date=a build\r\n"
            "\r\n"
            "[LIST1]\r\n"
            "Caption=On/Off\r\n"
            "Count=2\r\n"
            "ITEM1=0|Off|0|\r\n"
            "ITEM2=1|On|1|\r\n"
            "\r\n"
            "[LIST2]\r\n"
            "Caption=Empty\r\n"
            "Count=0\r\n");
}

TEST(ListFile, ComesBackAsWritten) {
  const std::string bytes = format_list_file(some_lists(), kStamp, kCodec);
  const auto lists = parse_list_file(bytes, kCodec);
  ASSERT_TRUE(lists);
  ASSERT_EQ(lists->size(), 2U);
  EXPECT_EQ((*lists)[0].members[1].caption, L"On");
  EXPECT_EQ(format_list_file(*lists, kStamp, kCodec), bytes);
}

TEST(ListFile, WithoutListsIsNoListFile) {
  for (const char* bytes : {"", "[Lists]\n", "[Lists]\nCount=0\n", "[Lists]\nCount=-1\n",
                            "[Lists]\nCount=32768\n", "Count=2\n"}) {
    EXPECT_FALSE(parse_list_file(bytes, kCodec)) << bytes;
  }
}

TEST(ListFile, GivesDefaultsForMissingLines) {
  const auto lists = parse_list_file("[Lists]\nCount=2\nCaption=A\nCount=2\n", kCodec);
  ASSERT_TRUE(lists);
  ASSERT_EQ(lists->size(), 2U);
  EXPECT_EQ((*lists)[0].caption, L"A");
  ASSERT_EQ((*lists)[0].members.size(), 2U);
  EXPECT_EQ((*lists)[1].caption, L"Untitled2");
  ASSERT_EQ((*lists)[1].members.size(), 1U);
  const ListMemberRecord& member = (*lists)[1].members[0];
  EXPECT_EQ(member.key, L"Item#1");
  EXPECT_EQ(member.caption, L"Tag#1");
  EXPECT_EQ(member.tag, L"");
}

TEST(ListFile, StartsEveryMemberAfresh) {
  const auto lists =
      parse_list_file("[Lists]\nCount=1\nCaption=A\nCount=2\nITEM1=a|b|c|\nITEM2=d\n", kCodec);
  ASSERT_TRUE(lists);
  EXPECT_EQ(format_list_member((*lists)[0].members[1]), L"d|||");
}

TEST(ListFile, KeepsRepeatedCaptionsForTheCollectionToJudge) {
  const auto lists = parse_list_file(
      "[Lists]\nCount=2\nCaption=A\nCount=0\nCaption=A\nCount=1\nITEM1=x\n", kCodec);
  ASSERT_TRUE(lists);
  ASSERT_EQ(lists->size(), 2U);
  EXPECT_EQ((*lists)[1].members.size(), 1U);
}

TEST(ListFile, TakesAnEmptyCaptionAsItStands) {
  const auto lists = parse_list_file("[Lists]\nCount=1\nCaption=\nCount=-1\n", kCodec);
  ASSERT_TRUE(lists);
  EXPECT_EQ((*lists)[0].caption, L"");
  EXPECT_TRUE((*lists)[0].members.empty());
}

TEST(ListFile, ReadsOnInTheFilesOrderPastSections) {
  const auto lists = parse_list_file(
      "[Lists]\nCount=1\n[LIST1]\nCaption=A\n[LIST2]\nCaption=B\nCount=1\nITEM1=x|y|z|\n", kCodec);
  ASSERT_TRUE(lists);
  EXPECT_EQ((*lists)[0].caption, L"A");
  EXPECT_EQ((*lists)[0].members[0].tag, L"z");
}

TEST(ListFile, CannotBeMadeToFillMemoryByCountsAlone) {
  std::string bytes = "[Lists]\nCount=32767\n";
  for (int i = 0; i < 32767; ++i) bytes += "Caption=A\nCount=32767\nITEM1=\n";
  const auto lists = parse_list_file(bytes, kCodec);
  ASSERT_TRUE(lists);
  ASSERT_EQ(lists->size(), 32767U);
  std::size_t members = 0;
  for (const ListRecord& list : *lists) members += list.members.size();
  EXPECT_EQ(members, 32767U + 32766U);
}

}  // namespace
}  // namespace pv
