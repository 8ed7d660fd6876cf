// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include <gtest/gtest.h>

#include "tests/automation/utility/utility_support.h"

namespace pv::test {
namespace {

struct FileNames : testing::Test {
  const Object file = Object::create(L"pvItems32.CFile");

  void expect_parts(const wchar_t* drive, const wchar_t* path, const wchar_t* name,
                    const wchar_t* extension) const {
    EXPECT_EQ(file.get(L"Drive"), drive);
    EXPECT_EQ(file.get(L"Path"), path);
    EXPECT_EQ(file.get(L"Name"), name);
    EXPECT_EQ(file.get(L"Extension"), extension);
  }
  void put_parts(const wchar_t* drive, const wchar_t* path, const wchar_t* name,
                 const wchar_t* extension) const {
    file.put(L"Drive", drive);
    file.put(L"Path", path);
    file.put(L"Name", name);
    file.put(L"Extension", extension);
  }
};

TEST_F(FileNames, BeginEmpty) {
  EXPECT_EQ(file.get(L"FullName"), L"");
  expect_parts(L"", L"", L"", L"");
  EXPECT_EQ(file.call(L"FileTitle"), L"");
  EXPECT_EQ(file.call(L"MakeFullName"), L"");
}

TEST_F(FileNames, FullNameIsTakenApart) {
  const struct {
    const wchar_t *full, *drive, *path, *name, *extension;
  } rows[] = {
      {L"C:\\data\\logs\\day1.csv", L"C", L"\\data\\logs", L"day1", L"csv"},
      {L"report.txt", L"", L"", L"report", L"txt"},
      {L"report.2024.csv", L"", L"", L"report", L"csv"},
      {L"C:\\log.txt", L"C", L"", L"log", L"txt"},
      {L"C:log.txt", L"C", L"", L"log", L"txt"},
      {L"\\log.txt", L"", L"", L"log", L"txt"},
      {L"data\\log", L"", L"data", L"log", L""},
      {L"\\\\server\\share\\a.b", L"", L"\\\\server\\share", L"a", L"b"},
      {L"C:\\data\\", L"C", L"\\data", L"\\data\\", L""},
      {L".profile", L"", L"", L"", L"profile"},
      {L"C:\\a.b\\c", L"C", L"\\a.b", L"c", L"b\\c"},
      {L"x:y\\z:w.q", L"x", L"y", L"z:w", L"q"},
      {L"a:b:c\\d", L"a", L"b", L"d", L""},
      {L"", L"", L"", L"", L""},
      {L"C:\\Überprüfung\\größe.ß", L"C", L"\\Überprüfung", L"größe", L"ß"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(printable(row.full));
    file.put(L"FullName", row.full);
    EXPECT_EQ(file.get(L"FullName"), row.full);
    expect_parts(row.drive, row.path, row.name, row.extension);
    EXPECT_EQ(file.call(L"GetDrive", row.full), row.drive);
    EXPECT_EQ(file.call(L"GetPath", row.full), row.path);
    EXPECT_EQ(file.call(L"GetName", row.full), row.name);
    EXPECT_EQ(file.call(L"GetExtension", row.full), row.extension);
  }
}

TEST_F(FileNames, ReadingPartsOfANameLeavesTheFieldsAlone) {
  file.put(L"FullName", L"C:\\a\\b.c");
  for (const wchar_t* member : {L"GetDrive", L"GetPath", L"GetName", L"GetExtension"}) {
    file.call(member, L"D:\\x\\y.z");
  }
  EXPECT_EQ(file.get(L"FullName"), L"C:\\a\\b.c");
  expect_parts(L"C", L"\\a", L"b", L"c");
}

TEST_F(FileNames, PartsAreBuiltIntoAFullName) {
  const struct {
    const wchar_t *drive, *path, *name, *extension, *full;
  } rows[] = {
      {L"C", L"\\data", L"log", L"txt", L"C:\\data\\log.txt"},
      {L"C", L"", L"log", L"txt", L"C:\\log.txt"},
      {L"", L"", L"log", L"txt", L"log.txt"},
      {L"", L"\\data", L"log", L"", L"\\data\\log"},
      {L"C", L"", L"", L"", L"C:\\"},
      {L"", L"", L"", L"txt", L".txt"},
      {L"C", L"\\data", L"", L"", L"C:\\data\\"},
      {L"C", L"data", L"log", L"txt", L"C:data\\log.txt"},
  };
  for (const auto& row : rows) {
    put_parts(row.drive, row.path, row.name, row.extension);
    EXPECT_EQ(file.call(L"MakeFullName"), row.full);
    EXPECT_EQ(file.get(L"FullName"), row.full);
    expect_parts(row.drive, row.path, row.name, row.extension);
  }
}

TEST_F(FileNames, FullNameComesBackAsItWas) {
  for (const wchar_t* full : {L"C:\\data\\logs\\day1.csv", L"C:\\log.txt", L"report.txt"}) {
    file.put(L"FullName", full);
    EXPECT_EQ(file.call(L"MakeFullName"), full);
  }
}

TEST_F(FileNames, PuttingAPartLeavesTheFullNameUntilItIsMade) {
  file.put(L"FullName", L"C:\\a\\b.c");
  file.put(L"Name", L"new");
  EXPECT_EQ(file.get(L"FullName"), L"C:\\a\\b.c");
  EXPECT_EQ(file.call(L"MakeFullName"), L"C:\\a\\new.c");
  EXPECT_EQ(file.get(L"FullName"), L"C:\\a\\new.c");
}

TEST_F(FileNames, TitleAlwaysHasItsDot) {
  put_parts(L"C", L"\\data", L"log", L"txt");
  EXPECT_EQ(file.call(L"FileTitle"), L"log.txt");
  file.put(L"Extension", L"");
  EXPECT_EQ(file.call(L"FileTitle"), L"log.");
  put_parts(L"C", L"\\data", L"", L"txt");
  EXPECT_EQ(file.call(L"FileTitle"), L".txt");
  file.put(L"Extension", L"");
  EXPECT_EQ(file.call(L"FileTitle"), L"");
}

TEST_F(FileNames, FolderAndTitleAreJoinedByOneBackslash) {
  EXPECT_EQ(file.call(L"CreateFileName", L"C:\\data", L"a.b"), L"C:\\data\\a.b");
  EXPECT_EQ(file.call(L"CreateFileName", L"C:\\data\\", L"a.b"), L"C:\\data\\a.b");
  EXPECT_EQ(file.call(L"CreateFileName", L"C:\\data", L""), L"C:\\data\\");
  EXPECT_EQ(file.call(L"CreateFileName", L"", L"a.b"), L"a.b");
  EXPECT_EQ(file.call(L"CreateFileName", L"", L""), L"*.*");
  EXPECT_EQ(file.get(L"FullName"), L"");
}

TEST_F(FileNames, ModifyPathTakesTheNewPlaceAndEmptiesTheName) {
  file.put(L"FullName", L"C:\\a\\b.c");
  file.call(L"ModifyPath", L"D:\\new\\place");
  expect_parts(L"D", L"\\new\\place", L"", L"");
  EXPECT_EQ(file.get(L"FullName"), L"D:\\new\\place\\X.Y");
  file.put(L"Name", L"b");
  file.put(L"Extension", L"c");
  EXPECT_EQ(file.call(L"MakeFullName"), L"D:\\new\\place\\b.c");
}

TEST_F(FileNames, ModifyPathToNoPlace) {
  file.put(L"FullName", L"C:\\a\\b.c");
  file.call(L"ModifyPath", L"");
  expect_parts(L"", L"", L"", L"");
  EXPECT_EQ(file.get(L"FullName"), L"X.Y");
}

TEST_F(FileNames, ClearEmptiesEverything) {
  file.put(L"FullName", L"C:\\a\\b.c");
  file.call(L"Clear");
  EXPECT_EQ(file.get(L"FullName"), L"");
  expect_parts(L"", L"", L"", L"");
}

TEST_F(FileNames, MayHoldEveryCharacter) {
  const std::wstring name(L"C:\\Ω\0語\\a\0.b", 12);
  file.put(L"FullName", name);
  EXPECT_EQ(file.get(L"FullName"), name);
  EXPECT_EQ(file.get(L"Path"), std::wstring(L"\\Ω\0語", 4));
  EXPECT_EQ(file.get(L"Name"), std::wstring(L"a\0", 2));
  EXPECT_EQ(file.call(L"MakeFullName"), name);
}

TEST_F(FileNames, OneObjectKnowsNothingOfAnother) {
  file.put(L"FullName", L"C:\\a\\b.c");
  EXPECT_EQ(Object::create(L"pvItems32.CFile").get(L"FullName"), L"");
}

}  // namespace
}  // namespace pv::test
