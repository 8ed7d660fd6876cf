// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Settings in initialisation files, through the platform's profile functions.

#include <gtest/gtest.h>

#include "tests/automation/utility/utility_support.h"

namespace pv::test {
namespace {

struct Settings : testing::Test {
  const Object utility = Object::create(L"pvItems32.CUtility");
  const OwnFile file;

  Value read(const wchar_t* section, const wchar_t* key, const std::wstring& fallback = L"") const {
    return utility.call(L"pvGetSetting", file, section, key, fallback);
  }
  Value write(const wchar_t* section, const wchar_t* key, const std::wstring& value) const {
    return utility.call(L"pvSaveSetting", file, section, key, value);
  }
};

TEST_F(Settings, AreReadAsTheyWereWritten) {
  EXPECT_EQ(write(L"Window", L"Left", L"120"), true);
  EXPECT_EQ(write(L"Window", L"Top", L"a=b;c [d]"), true);
  EXPECT_EQ(write(L"Other", L"Left", L"7"), true);
  EXPECT_EQ(read(L"Window", L"Left"), L"120");
  EXPECT_EQ(read(L"Window", L"Top"), L"a=b;c [d]");
  EXPECT_EQ(read(L"Other", L"Left"), L"7");
}

TEST_F(Settings, AreFoundWithoutRegardToCase) {
  write(L"Window", L"Left", L"120");
  EXPECT_EQ(read(L"WINDOW", L"left"), L"120");
}

TEST_F(Settings, WritingAgainReplacesTheValue) {
  write(L"Window", L"Left", L"120");
  EXPECT_EQ(write(L"window", L"LEFT", L"7"), true);
  EXPECT_EQ(read(L"Window", L"Left"), L"7");
}

TEST_F(Settings, MissingKeyGivesTheDefault) {
  EXPECT_EQ(read(L"Window", L"Left", L"default"), L"default") << "no file";
  write(L"Window", L"Left", L"120");
  EXPECT_EQ(read(L"Window", L"Top", L"default"), L"default") << "no key";
  EXPECT_EQ(read(L"Other", L"Left", L"default"), L"default") << "no section";
  EXPECT_EQ(read(L"Other", L"Left"), L"");
}

TEST_F(Settings, EmptyValueWithAnEmptyDefaultIsEmpty) {
  file.fill("[Window]\r\nLeft=\r\n");
  const Value value = read(L"Window", L"Left");
  EXPECT_TRUE(value.is_text());
  EXPECT_EQ(value, L"");
}

TEST_F(Settings, EmptyValueIsAValue) {
  EXPECT_EQ(write(L"Window", L"Left", L""), true);
  EXPECT_EQ(read(L"Window", L"Left", L"default"), L"");
}

TEST_F(Settings, AreTrimmedAsThePlatformDoes) {
  file.fill(
      "[Window]\r\nA=  x y  \r\nB=\"quoted\"\r\nC=' q '\r\nD=\"  kept  \"\r\nE=first\r\n"
      "E=second\r\n");
  EXPECT_EQ(read(L"Window", L"A"), L"x y");
  EXPECT_EQ(read(L"Window", L"B"), L"quoted");
  EXPECT_EQ(read(L"Window", L"C"), L" q ");
  EXPECT_EQ(read(L"Window", L"D"), L"  kept  ");
  EXPECT_EQ(read(L"Window", L"E"), L"first");
}

TEST_F(Settings, AreTextInTheSystemsCodePage) {
  EXPECT_EQ(write(L"Café", L"Größe", L"é ä ö"), true);
  EXPECT_NE(file.bytes().find(in_code_page(L"Größe=é ä ö")), std::string::npos);
  EXPECT_EQ(read(L"Café", L"Größe"), L"é ä ö");
}

TEST_F(Settings, CharactersOutsideTheCodePageAreMarkedNotReplacedByLookAlikes) {
  write(L"Window", L"Name", L"a語b");
  EXPECT_EQ(read(L"Window", L"Name"), L"a?b");
}

TEST_F(Settings, TextEndsAtANul) {
  EXPECT_EQ(write(L"Window", L"Left",
                  std::wstring(L"12\0"
                               L"34",
                               5)),
            true);
  EXPECT_EQ(read(L"Window", L"Left"), L"12");
}

TEST_F(Settings, LongestValueIsKeptWhole) {
  const std::wstring longest(32766, L'x');
  EXPECT_EQ(write(L"Window", L"Long", longest), true);
  EXPECT_EQ(read(L"Window", L"Long"), longest);
}

TEST_F(Settings, LongerValueIsRefusedAndTheOldOneKept) {
  write(L"Window", L"Long", L"old");
  EXPECT_EQ(write(L"Window", L"Long", std::wstring(32767, L'x')), false);
  EXPECT_EQ(write(L"Window", L"Long", std::wstring(100'000, L'x')), false);
  EXPECT_EQ(read(L"Window", L"Long"), L"old");
}

TEST_F(Settings, DefaultMayBeLong) {
  const std::wstring fallback(10'000, L'd');
  EXPECT_EQ(read(L"Window", L"Left", fallback), fallback);
}

TEST_F(Settings, CannotBeWrittenWhereNoFileCanBe) {
  for (const std::wstring& name :
       {std::wstring(L"Z:\\no such folder\\x.ini"), file.path() + L"\\x.ini"}) {
    EXPECT_EQ(utility.call(L"pvSaveSetting", name, L"Window", L"Left", L"1"), false);
    EXPECT_EQ(utility.call(L"pvGetSetting", name, L"Window", L"Left", L"default"), L"default");
  }
}

TEST_F(Settings, ClearingRemovesTheSectionWithItsKeys) {
  write(L"Window", L"Left", L"1");
  write(L"Window", L"Top", L"2");
  write(L"Other", L"Left", L"3");
  EXPECT_EQ(utility.call(L"pvClearSetting", file, L"window"), true);
  EXPECT_EQ(read(L"Window", L"Left", L"gone"), L"gone");
  EXPECT_EQ(read(L"Window", L"Top", L"gone"), L"gone");
  EXPECT_EQ(read(L"Other", L"Left"), L"3");
  EXPECT_EQ(file.bytes().find("Window"), std::string::npos);
}

TEST_F(Settings, ClearingFailsWhereNoFileCanBe) {
  EXPECT_EQ(utility.call(L"pvClearSetting", L"Z:\\no such folder\\x.ini", L"Window"), false);
}

TEST_F(Settings, AreSharedWithThePlatformsOwnFunctions) {
  WritePrivateProfileStringW(L"Window", L"Left", L"9", file.path().c_str());
  EXPECT_EQ(read(L"Window", L"Left"), L"9");
  write(L"Window", L"Left", L"10");
  EXPECT_EQ(GetPrivateProfileIntW(L"Window", L"Left", 0, file.path().c_str()), 10u);
}

}  // namespace
}  // namespace pv::test
