// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/file_name.h"

#include <gtest/gtest.h>

#include <string>

namespace pv {
namespace {

struct Case {
  const wchar_t* full_name;
  const wchar_t* drive;
  const wchar_t* path;
  const wchar_t* name;
  const wchar_t* extension;
};

TEST(FileName, IsTakenApart) {
  const Case cases[] = {
      {L"C:\\data\\logs\\day1.csv", L"C", L"\\data\\logs", L"day1", L"csv"},
      {L"report.txt", L"", L"", L"report", L"txt"},
      {L"report.2024.csv", L"", L"", L"report", L"csv"},
      {L"C:\\log.txt", L"C", L"", L"log", L"txt"},
      {L"C:log.txt", L"C", L"", L"log", L"txt"},
      {L"\\log.txt", L"", L"", L"log", L"txt"},
      {L"\\data\\log.txt", L"", L"\\data", L"log", L"txt"},
      {L"data\\log.txt", L"", L"data", L"log", L"txt"},
      {L"C:data\\log.txt", L"C", L"data", L"log", L"txt"},
      {L"\\\\server\\share\\log.txt", L"", L"\\\\server\\share", L"log", L"txt"},
      {L"C:\\data\\log", L"C", L"\\data", L"log", L""},
      {L"log", L"", L"", L"log", L""},
      {L"log.", L"", L"", L"log", L""},
      {L".profile", L"", L"", L"", L"profile"},
      {L"", L"", L"", L"", L""},
      {L".", L"", L"", L"", L""},
      {L":", L"", L"", L"", L""},
      {L"C:", L"C", L"", L"", L""},
      // The whole name is searched for the extension, folders included.
      {L"C:\\v1.2\\log", L"C", L"\\v1.2", L"log", L"2\\log"},
      // Nothing follows the last backslash: what follows the colon, or the whole, counts as the
      // name.
      {L"C:\\data\\", L"C", L"\\data", L"\\data\\", L""},
      {L"data\\", L"", L"data", L"data\\", L""},
      {L"v1.2\\", L"", L"v1.2", L"v1", L"2\\"},
      {L"\\", L"", L"", L"\\", L""},
      {L"C:\\", L"C", L"", L"\\", L""},
      // Two colons: the path ends at the second, a name without backslash does not.
      {L"a:b:c\\d.e", L"a", L"b", L"d", L"e"},
      {L"a:b:c", L"a", L"", L"b:c", L""},
      {L"a\\b:c.d", L"a\\b", L"a", L"b:c", L"d"},
  };
  for (const Case& c : cases) {
    const FileName parsed = parse_file_name(c.full_name);
    const std::wstring full_name = c.full_name;
    const std::string shown(full_name.begin(), full_name.end());
    EXPECT_EQ(parsed.full_name, full_name) << shown;
    EXPECT_EQ(parsed.drive, c.drive) << shown;
    EXPECT_EQ(parsed.path, c.path) << shown;
    EXPECT_EQ(parsed.name, c.name) << shown;
    EXPECT_EQ(parsed.extension, c.extension) << shown;
  }
}

TEST(MakeFullName, PutsThePartsTogether) {
  EXPECT_EQ(make_full_name({L"", L"C", L"\\data", L"log", L"txt"}), L"C:\\data\\log.txt");
  EXPECT_EQ(make_full_name({L"", L"C", L"", L"log", L"txt"}), L"C:\\log.txt");
  EXPECT_EQ(make_full_name({L"", L"", L"\\data", L"log", L"txt"}), L"\\data\\log.txt");
  EXPECT_EQ(make_full_name({L"", L"", L"", L"log", L"txt"}), L"log.txt");
  EXPECT_EQ(make_full_name({L"", L"", L"", L"log", L""}), L"log");
  EXPECT_EQ(make_full_name({L"", L"", L"", L"", L"txt"}), L".txt");
  EXPECT_EQ(make_full_name({L"", L"C", L"\\data", L"", L""}), L"C:\\data\\");
  EXPECT_EQ(make_full_name({L"", L"C", L"", L"", L""}), L"C:\\");
  EXPECT_EQ(make_full_name({}), L"");
}

TEST(MakeFullName, TakesNoNoticeOfTheOldFullName) {
  EXPECT_EQ(make_full_name({L"C:\\old.txt", L"", L"", L"new", L"txt"}), L"new.txt");
}

TEST(MakeFullName, GivesBackANameWithOneDotInAFolder) {
  for (const wchar_t* name : {L"C:\\data\\logs\\day1.csv", L"C:\\log.txt", L"report.txt",
                              L"data\\log.txt", L"\\\\server\\share\\log.txt"}) {
    EXPECT_EQ(make_full_name(parse_file_name(name)), name);
  }
}

TEST(FileTitle, KeepsTheDotWithoutAnExtension) {
  EXPECT_EQ(file_title(parse_file_name(L"C:\\data\\log.txt")), L"log.txt");
  EXPECT_EQ(file_title(parse_file_name(L"log")), L"log.");
  EXPECT_EQ(file_title(parse_file_name(L".txt")), L".txt");
  EXPECT_EQ(file_title({}), L"");
}

TEST(CreateFileName, JoinsWithOneBackslash) {
  EXPECT_EQ(create_file_name(L"C:\\data", L"log.txt"), L"C:\\data\\log.txt");
  EXPECT_EQ(create_file_name(L"C:\\data\\", L"log.txt"), L"C:\\data\\log.txt");
  EXPECT_EQ(create_file_name(L"C:\\data", L""), L"C:\\data\\");
  EXPECT_EQ(create_file_name(L"C:", L"log.txt"), L"C:\\log.txt");
}

TEST(CreateFileName, GivesTheTitleOrAWildcardWithoutAFolder) {
  EXPECT_EQ(create_file_name(L"", L"log.txt"), L"log.txt");
  EXPECT_EQ(create_file_name(L"", L""), L"*.*");
}

void expect_location(const FileName& location, std::wstring_view full_name, std::wstring_view drive,
                     std::wstring_view path) {
  EXPECT_EQ(location.full_name, full_name);
  EXPECT_EQ(location.drive, drive);
  EXPECT_EQ(location.path, path);
  EXPECT_EQ(location.name, L"");
  EXPECT_EQ(location.extension, L"");
}

TEST(AtPath, HoldsTheNewLocationAndAPlaceholder) {
  expect_location(at_path(L"D:\\new\\place"), L"D:\\new\\place\\X.Y", L"D", L"\\new\\place");
  expect_location(at_path(L"D:\\new\\"), L"D:\\new\\X.Y", L"D", L"\\new");
  expect_location(at_path(L"D:\\"), L"D:\\X.Y", L"D", L"");
  expect_location(at_path(L"D:"), L"D:\\X.Y", L"D", L"");
  expect_location(at_path(L""), L"X.Y", L"", L"");
}

TEST(AtPath, IsCompletedByNameAndExtension) {
  FileName file = at_path(L"D:\\new");
  file.name = L"log";
  file.extension = L"txt";
  EXPECT_EQ(make_full_name(file), L"D:\\new\\log.txt");
}

}  // namespace
}  // namespace pv
