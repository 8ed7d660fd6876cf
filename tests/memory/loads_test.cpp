// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Settings files: a load takes the whole file or leaves the tables as they were, a save leaves the
// former file or the whole new one.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <io.h>

#include "tests/memory/tables.h"
#include "tests/memory/trial.h"
#include "tests/support/own_file.h"
#include "tests/support/source_tree.h"

namespace pv::test {
namespace {

std::wstring data_file(const char* name) {
  return source_file(std::string("examples/data/") + name).wstring();
}

TEST(LoadingWithoutMemory, TakesAllItemsOrNone) {
  EXPECT_GT(fail_everywhere(two_items, L"LoadSettingsNew", {data_file("fluxor.itm")},
                            DISPATCH_METHOD, 23),
            400);
}

TEST(LoadingWithoutMemory, TakesAllVersionsOrNone) {
  EXPECT_GT(fail_everywhere(a_version, L"LoadSettingsNew", {data_file("fluxor.ver")},
                            DISPATCH_METHOD, 11),
            300);
}

TEST(LoadingWithoutMemory, TakesAllDisplayListsOrNone) {
  EXPECT_GT(
      fail_everywhere(a_list, L"LoadSettingsNew", {data_file("fluxor.lst")}, DISPATCH_METHOD, 17),
      400);
}

TEST(LoadingWithoutMemory, TakesAllDimensionsOrNone) {
  EXPECT_GT(fail_everywhere(a_dimension, L"LoadSettingsNew", {data_file("fluxor.dim")},
                            DISPATCH_METHOD, 17),
            300);
}

// Keys that are in use, in the file and in the table, do not make up for a lack of memory.
TEST(LoadingWithoutMemory, PassesOverWhatIsTakenOnly) {
  const OwnFile versions(L"a.ver",
                         "[Versions]\r\nCount=3\r\n"
                         "[Version1]\r\nName=A version that is not short\r\nCount=0\r\n"
                         "[Version2]\r\nName=Another version\r\nCount=2\r\nItem1=1|1\r\n"
                         "Item2=1|2\r\n[Version3]\r\nName=another version\r\nCount=0\r\n");
  EXPECT_GT(fail_everywhere(a_version, L"LoadSettingsNew", {versions}), 0);
  const OwnFile lists(L"a.lst",
                      "[Lists]\r\nCount=2\r\n[LIST1]\r\nCaption=A list that is not short\r\n"
                      "Count=0\r\n[LIST2]\r\nCaption=Another list\r\nCount=2\r\nITEM1=1|a|b|\r\n"
                      "ITEM2=1|c|d|\r\n");
  EXPECT_GT(fail_everywhere(a_list, L"LoadSettingsNew", {lists}), 0);
}

// An open file is read on from where it stands.
TEST(ReadingAnOpenFileWithoutMemory, StaysAtItsPlace) {
  const OwnFile file(L"a.ini",
                     "[First]\r\nKey=1\r\n[A section that is not short]\r\n"
                     "A key that is not short=a value that is not short\r\n");
  const int number = _wopen(file.path().c_str(), _O_RDONLY | _O_BINARY);
  ASSERT_GT(number, 2);
  Trial trial;
  trial.prepare = [&] {
    _lseek(number, 7, SEEK_SET);
    return Scene{create(L"CUtility"),
                 {number, L"A section that is not short", L"A key that is not short", kLongText,
                  true, true}};
  };
  trial.member = L"GetIniSettings";
  trial.surroundings = [&] { return std::to_wstring(_lseek(number, 0, SEEK_CUR)); };
  EXPECT_GT(fail_everywhere(trial), 3);
  _close(number);
}

TEST(SavingWithoutMemory, LeavesTheFormerFileOrTheNewOne) {
  for (const auto table : {two_items, a_version, a_list, a_dimension}) {
    const OwnFile file(L"a");
    Trial trial;
    trial.prepare = [&] {
      file.fill("former\r\n");
      return Scene{table(), {file}};
    };
    trial.member = L"SaveSettingsNew";
    trial.surroundings = [&] {
      const std::string bytes = file.bytes();
      return std::wstring(bytes.begin(), bytes.end()) +
             std::to_wstring(file.folder().names().size());
    };
    EXPECT_GT(fail_everywhere(trial), 0);
  }
}

TEST(SavingWithoutMemory, LeavesTheFormerTextsOrTheNewOnes) {
  const OwnFile file(L"a.001");
  Trial trial;
  trial.prepare = [&] {
    file.fill("[Items]\r\nCount=1\r\n[ITEM1]\r\nVAR1=a former text that is not short\r\n");
    return Scene{two_items(), {file}};
  };
  trial.member = L"SaveTextSettings";
  trial.surroundings = [&] {
    const std::string bytes = file.bytes();
    return std::wstring(bytes.begin(), bytes.end());
  };
  EXPECT_GT(fail_everywhere(trial), 10);
}

TEST(LoadingWithoutMemory, TakesAllPasswordsOrNone) {
  const auto passwords = [] {
    const Object store = create(L"CPasswords");
    store.call(L"Add", L"a former one that is not short", L"");
    return store;
  };
  const Object filled = create(L"CPasswords");
  for (int i = 0; i < 12; ++i) filled.call(L"Add", kLongText, i % 2 ? kLongText : L"");
  EXPECT_GT(fail_everywhere(passwords, L"Load", {filled.call(L"Save")}), 30);
}

}  // namespace
}  // namespace pv::test
