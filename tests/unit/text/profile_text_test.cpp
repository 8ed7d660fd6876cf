// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/profile_text.h"

#include <gtest/gtest.h>

namespace pv {
namespace {

using Changes = std::initializer_list<std::pair<std::wstring_view, std::wstring_view>>;

// The text with values of the section "S".
std::wstring with(std::wstring_view text, Changes changes) {
  ProfileText profile(text);
  for (const auto& [key, value] : changes) profile.set(L"S", key, value);
  return profile.text();
}

std::wstring value_in(std::wstring_view text) {
  return ProfileText(text).value(L"S", L"k").value_or(L"none");
}

TEST(ProfileText, BeginsEmpty) {
  const ProfileText profile(L"");
  EXPECT_FALSE(profile.changed());
  EXPECT_EQ(profile.text(), L"");
  EXPECT_FALSE(profile.value(L"S", L"k"));
}

TEST(ProfileText, FindsTheFirstKeyOfTheFirstSection) {
  EXPECT_EQ(value_in(L"k=0\r\n[T]\r\nk=1\r\n[s]\r\nK = 2 \r\nk=3\r\n[S]\r\nk=4\r\n"), L"2");
  EXPECT_EQ(value_in(L"[S]\r\n[S]\r\nk=1\r\n"), L"none");
  EXPECT_EQ(value_in(L"[S]\r\nk\r\nk=1\r\n"), L"none");
  EXPECT_EQ(value_in(L"[S]\r\n;k=1\r\nkk=2\r\n"), L"none");
  EXPECT_EQ(value_in(L"[ S ]\r\nk=1\r\n"), L"1");
  EXPECT_EQ(value_in(L" [S] ; text \n\tk\t=\tv=w\t"), L"v=w");
  EXPECT_EQ(value_in(L"[S]\rk=1\r"), L"1");
}

TEST(ProfileText, ReadsValuesWithoutTheirQuotes) {
  EXPECT_EQ(value_in(L"[S]\nk=\"a b\"\n"), L"a b");
  EXPECT_EQ(value_in(L"[S]\nk=' a '\n"), L" a ");
  EXPECT_EQ(value_in(L"[S]\nk=\"\n"), L"\"");
  EXPECT_EQ(value_in(L"[S]\nk=\"a'\n"), L"\"a'");
  EXPECT_EQ(value_in(L"[S]\nk=\"\"\n"), L"");
}

TEST(ProfileText, AddsWhatIsNotThere) {
  EXPECT_EQ(with(L"", {{L"a", L"1"}, {L"b", L"2"}}), L"[S]\r\na=1\r\nb=2\r\n");
  EXPECT_EQ(with(L"[S]\r\na=1\r\n[T]\r\n", {{L"b", L"2"}}), L"[S]\r\na=1\r\nb=2\r\n[T]\r\n");
  EXPECT_EQ(with(L"[T]\r\na=1", {{L"a", L"2"}}), L"[T]\r\na=1\r\n[S]\r\na=2\r\n");
}

TEST(ProfileText, KeepsTheSpellingAndThePlaceOfWhatIsThere) {
  EXPECT_EQ(with(L"[s]\r\nA=1\r\na=2\r\n[S]\r\na=3\r\n", {{L"a", L"x"}}),
            L"[s]\r\nA=x\r\na=2\r\n[S]\r\na=3\r\n");
  EXPECT_EQ(with(L"[S]\r\na\r\n", {{L"a", L""}}), L"[S]\r\na=\r\n");
}

TEST(ProfileText, LosesBlanksAndEmptyLinesWhenItIsChanged) {
  EXPECT_EQ(with(L" ; a = comment \n\n\n[ T ] text\r\n\t k\t= v \r\n", {{L"a", L"1"}}),
            L"; a=comment\r\n[T]\r\nk=v\r\n[S]\r\na=1\r\n");
}

TEST(ProfileText, IsNotChangedByTheValueThatIsThere) {
  ProfileText profile(L"\n[S]\n\n a = 1 \n");
  profile.set(L"S", L"A", L" 1");
  profile.remove_section(L"T");
  EXPECT_FALSE(profile.changed());
  profile.set(L"S", L"A", L"2");
  EXPECT_TRUE(profile.changed());
}

TEST(ProfileText, KeepsLinesThatAreNone) {
  EXPECT_EQ(with(L"[T\r\nk]\r\n=1\r\n=2\r\n", {{L"a", L"1"}}), L"[T\r\nk]\r\n=1\r\n[S]\r\na=1\r\n");
}

// A section without a name is not written, so its lines belong to the section before from then on.
TEST(ProfileText, LosesSectionsWithoutName) {
  EXPECT_EQ(with(L"[S]\na=1\n[]\nb=2\n", {{L"b", L"3"}}), L"[S]\r\na=1\r\nb=3\r\nb=2\r\n");
  EXPECT_EQ(with(L"[S]\na=1\n[]\nb=2\n", {{L"a", L"3"}, {L"b", L"4"}}), L"[S]\r\na=3\r\nb=4\r\n");
}

TEST(ProfileText, WritesValuesWithoutBlanksBeforeThem) {
  EXPECT_EQ(with(L"", {{L"a", L" \t\r\n 1"}}), L"[S]\r\na=1\r\n");
}

// The next change reads what the one before wrote.
TEST(ProfileText, LosesBlanksBehindAValueWithTheNextChange) {
  EXPECT_EQ(with(L"", {{L"a", L"1 "}}), L"[S]\r\na=1 \r\n");
  EXPECT_EQ(with(L"", {{L"a", L"1 "}, {L"b", L"2 "}}), L"[S]\r\na=1\r\nb=2 \r\n");
  EXPECT_EQ(with(L"", {{L"a", L"1 "}, {L"a", L"1"}}), L"[S]\r\na=1 \r\n");
}

TEST(ProfileText, BeginsLinesAtLineEndsInValues) {
  EXPECT_EQ(with(L"", {{L"a", L"1\n\n b = 2"}, {L"b", L"3"}}), L"[S]\r\na=1\r\nb=3\r\n");
  EXPECT_EQ(with(L"[T]\r\nx=y\r\n", {{L"a", L"1\n[T]\nx=z"}, {L"b", L"2"}}),
            L"[T]\r\nx=y\r\n[S]\r\na=1\r\nb=2\r\n[T]\r\nx=z\r\n");
  EXPECT_EQ(with(L"", {{L"a", L"1\n[]\nb=2"}, {L"c", L"3"}, {L"b", L"4"}}),
            L"[S]\r\na=1\r\nc=3\r\nb=4\r\n");
}

TEST(ProfileText, RemovesTheFirstSectionOfAName) {
  ProfileText profile(L"[T]\r\nx=1\r\n[s]\r\na=1\r\n[S]\r\na=2\r\n[U]\r\n");
  profile.remove_section(L"S");
  EXPECT_TRUE(profile.changed());
  EXPECT_EQ(profile.text(), L"[T]\r\nx=1\r\n[S]\r\na=2\r\n[U]\r\n");
  profile.remove_section(L"S");
  EXPECT_EQ(profile.text(), L"[T]\r\nx=1\r\n[U]\r\n");
}

TEST(ProfileText, TakesManySections) {
  ProfileText profile(L"");
  for (int round = 0; round < 2; ++round) {
    for (int i = 1; i <= 500; ++i) profile.remove_section(L"ITEM" + std::to_wstring(i));
    for (int i = 1; i <= 500; ++i) {
      profile.set(L"ITEM" + std::to_wstring(i), L"VAR1", L"Flow|Volume per time ");
    }
  }
  EXPECT_EQ(profile.value(L"item500", L"var1"), L"Flow|Volume per time ");
  EXPECT_EQ(profile.value(L"ITEM1", L"VAR1"), L"Flow|Volume per time");
}

}  // namespace
}  // namespace pv
