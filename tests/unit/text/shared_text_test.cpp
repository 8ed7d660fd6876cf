// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/shared_text.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace pv {
namespace {

TEST(SharedText, KeepsItsCharacters) {
  using namespace std::string_view_literals;
  for (const std::wstring_view text : {L""sv, L"a"sv, L"a\0b"sv, L"Momentary volume flow"sv}) {
    EXPECT_EQ(SharedText(text).view(), text);
  }
}

TEST(SharedText, IsAsLargeAsAPointer) { EXPECT_EQ(sizeof(SharedText), sizeof(void*)); }

TEST(SharedText, SharesItsCharactersWithCopies) {
  SharedText copy;
  const wchar_t* characters = nullptr;
  {
    const SharedText text(L"a text");
    characters = text.view().data();
    copy = text;
  }
  EXPECT_EQ(copy.view(), L"a text");
  EXPECT_EQ(copy.view().data(), characters);
}

TEST(SharedText, LeavesNothingBehindWhenMoved) {
  SharedText text(L"a text");
  const SharedText taken(std::move(text));
  EXPECT_EQ(taken.view(), L"a text");
  EXPECT_EQ(text.view(), L"");  // NOLINT(bugprone-use-after-move)
}

TEST(SharedText, MayBeAssignedToItself) {
  SharedText text(L"a text");
  const SharedText& same = text;
  text = same;
  EXPECT_EQ(text.view(), L"a text");
}

TEST(SharedText, MayBeSharedAcrossThreads) {
  const SharedText text(L"a text");
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([text] {
      for (int round = 0; round < 10'000; ++round) EXPECT_EQ(SharedText(text).view(), L"a text");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(text.view(), L"a text");
}

TEST(RecentTexts, ShareEqualTexts) {
  RecentTexts texts;
  const SharedText first = texts.shared(L"a text");
  const SharedText other = texts.shared(L"another text");
  EXPECT_EQ(texts.shared(std::wstring(L"a text")).view().data(), first.view().data());
  EXPECT_EQ(other.view(), L"another text");
}

TEST(RecentTexts, GiveEachTextItsOwnCharacters) {
  RecentTexts texts;
  std::vector<SharedText> all;
  for (int i = 0; i < 10'000; ++i) all.push_back(texts.shared(std::to_wstring(i)));
  for (int i = 0; i < 10'000; ++i) EXPECT_EQ(all[i].view(), std::to_wstring(i));
}

TEST(RecentTexts, OutliveTheirMaker) {
  SharedText kept;
  {
    RecentTexts texts;
    kept = texts.shared(L"a text");
    EXPECT_EQ(texts.shared(L"").view(), L"");
  }
  EXPECT_EQ(kept.view(), L"a text");
}

}  // namespace
}  // namespace pv
