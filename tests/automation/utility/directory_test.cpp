// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Directory listings of real folders, and the collection that holds them.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "pvItems32.h"
#include "tests/support/members.h"
#include "tests/support/own_file.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

/// Entries as short lines: "folder\" or "file", without the path of the listed folder. An entry
/// that is elsewhere keeps its path.
Texts lines_of(const Object& directory, const std::wstring& folder) {
  Texts lines;
  for (const Object& entry : members_of(directory)) {
    std::wstring line = entry.get(L"Path").text();
    if (line.starts_with(folder)) line.erase(0, folder.size());
    lines.push_back(line + (entry.get(L"DirType") == dirFolder ? L"\\" : L""));
  }
  return lines;
}

// Wine looks through the whole folder for a name of other case before it makes a file, which takes
// minutes for many; below its own root it does not.
std::wstring quick_path(const std::wstring& path) {
  using UnixName = char* CDECL(const wchar_t*);
  const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
  const FARPROC function = GetProcAddress(kernel, "wine_get_unix_file_name");
  if (!function) return path;
  char* const name = reinterpret_cast<UnixName*>(reinterpret_cast<void*>(function))(path.c_str());
  if (!name) return path;
  const std::string_view ascii(name);
  const std::wstring quick = L"\\\\?\\unix" + std::wstring(ascii.begin(), ascii.end());
  HeapFree(GetProcessHeap(), 0, name);
  return quick;
}

void make_new_files(const std::wstring& folder, const Texts& names) {
  const std::wstring quick = quick_path(folder);
  for (const std::wstring& name : names) {
    const HANDLE file = CreateFileW((quick + L"\\" + name).c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
  }
}

class DirectoryListing : public testing::Test {
 protected:
  void make_files(const Texts& names) const {
    for (const std::wstring& name : names) folder_.write(name, "");
  }
  void make_folders(const Texts& names) const {
    for (const std::wstring& name : names) std::filesystem::create_directory(folder_.file(name));
  }
  template <class... A>
  Texts list(const A&... filter) const {
    return list_of(folder_.path(), filter...);
  }
  template <class... A>
  Texts list_of(const std::wstring& path, const A&... filter) const {
    EXPECT_EQ(directory_.call_object(L"GetFileList", path, filter...), directory_);
    return lines_of(directory_, folder_.path());
  }

  const TestFolder folder_;
  const Object directory_ = Object::create(L"pvItems32.CDirectory");
};

TEST_F(DirectoryListing, HasFoldersFirstThenFilesInTheOrderOfTheirNames) {
  make_files({L"beta.txt", L"Alpha.txt", L"gamma", L"a.txt", L"10", L"9"});
  make_folders({L"zeta", L"Eta", L"theta.d"});
  EXPECT_EQ(list(), (Texts{L"Eta\\", L"theta.d\\", L"zeta\\", L"10", L"9", L"a.txt", L"Alpha.txt",
                           L"beta.txt", L"gamma"}));
}

TEST_F(DirectoryListing, HoldsEntriesWithFullPathAndType) {
  make_files({L"a.txt"});
  make_folders({L"sub"});
  list();
  EXPECT_EQ(directory_.get(L"Count"), 2);
  const Object folder = directory_.get_object(L"Item", 1);
  EXPECT_EQ(folder.get(L"Path"), folder_.file(L"sub"));
  EXPECT_EQ(folder.get(L"DirType"), dirFolder);
  EXPECT_EQ(folder.get(L"Tag"), Value());
  const Object file = directory_.get_object(L"Item", 2);
  EXPECT_EQ(file.get(L"Path"), folder_.file(L"a.txt"));
  EXPECT_EQ(file.get(L"DirType"), dirFile);
}

TEST_F(DirectoryListing, DoesNotLookIntoSubFolders) {
  make_folders({L"sub"});
  folder_.write(L"sub\\inner.txt", "");
  EXPECT_EQ(list(), (Texts{L"sub\\"}));
  EXPECT_EQ(list_of(folder_.file(L"sub")), (Texts{L"sub\\inner.txt"}));
}

TEST_F(DirectoryListing, TakesThePathWithOrWithoutSeparatorAtTheEnd) {
  make_files({L"a.txt"});
  const std::wstring bare = folder_.path().substr(0, folder_.path().size() - 1);
  EXPECT_EQ(list_of(bare), (Texts{L"a.txt"}));
  EXPECT_EQ(list_of(bare + L"\\"), (Texts{L"a.txt"}));
  EXPECT_EQ(list_of(bare + L"\\."), (Texts{L"a.txt"}));
}

TEST_F(DirectoryListing, GivesPathsWithBackslashes) {
  make_files({L"a.txt"});
  std::wstring slashed = folder_.path();
  std::replace(slashed.begin(), slashed.end(), L'\\', L'/');
  EXPECT_EQ(list_of(slashed), (Texts{L"a.txt"}));
}

TEST_F(DirectoryListing, OfAPathBelowTheCurrentFolderHasFullPaths) {
  make_files({L"a.txt"});
  wchar_t before[MAX_PATH];
  GetCurrentDirectoryW(MAX_PATH, before);
  ASSERT_TRUE(SetCurrentDirectoryW(folder_.path().c_str()));
  const Texts here = list_of(L".");
  SetCurrentDirectoryW(before);
  EXPECT_EQ(here, (Texts{L"a.txt"}));
}

TEST_F(DirectoryListing, OfAFileIsThatOfItsFolder) {
  make_files({L"a.txt", L"b.txt"});
  make_folders({L"sub"});
  EXPECT_EQ(list_of(folder_.file(L"b.txt")), (Texts{L"sub\\", L"a.txt", L"b.txt"}));
  EXPECT_EQ(list_of(folder_.file(L"b.txt"), L"A*"), (Texts{L"sub\\", L"a.txt"}));
}

TEST_F(DirectoryListing, OfWhatIsNoFolderIsEmpty) {
  make_files({L"a.txt"});
  make_folders({L"sub"});
  for (const std::wstring& path :
       {folder_.file(L"none"), folder_.file(L"none\\a.txt"), folder_.file(L"*"),
        folder_.file(L"a.txt\\"s + L"b"), L"Q:\\none\\"s, L"?"s, L""s, L" "s,
        folder_.path() + L"\0sub"s, folder_.file(L"sub\0"s),
        folder_.file(std::wstring(5000, L'x'))}) {
    EXPECT_EQ(list_of(path), Texts{}) << printable(path);
  }
}

TEST_F(DirectoryListing, OfAnEmptyFolderIsEmpty) { EXPECT_EQ(list(), Texts{}); }

TEST_F(DirectoryListing, ReplacesTheEarlierEntries) {
  make_files({L"a.txt"});
  directory_.call(L"Add", L"x", dirFile, L"key");
  EXPECT_EQ(list(), (Texts{L"a.txt"}));
  make_files({L"b.txt"});
  EXPECT_EQ(list(), (Texts{L"a.txt", L"b.txt"}));
  std::filesystem::remove(folder_.file(L"a.txt"));
  EXPECT_EQ(list(), (Texts{L"b.txt"}));
  EXPECT_EQ(list_of(folder_.file(L"none")), Texts{});
  EXPECT_EQ(list(), (Texts{L"b.txt"}));
}

TEST_F(DirectoryListing, KeepsHeldEntriesAlive) {
  make_files({L"a.txt"});
  list();
  const Object entry = directory_.get_object(L"Item", 1);
  list_of(folder_.file(L"none"));
  EXPECT_EQ(entry.get(L"Path"), folder_.file(L"a.txt"));
}

TEST_F(DirectoryListing, HoldsHiddenAndReadOnlyFilesToo) {
  make_files({L"hidden", L"read-only"});
  SetFileAttributesW(folder_.file(L"hidden").c_str(), FILE_ATTRIBUTE_HIDDEN);
  SetFileAttributesW(folder_.file(L"read-only").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(list(), (Texts{L"hidden", L"read-only"}));
  SetFileAttributesW(folder_.file(L"read-only").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(DirectoryListing, HoldsFilesThatOthersHaveLocked) {
  const LockedFile locked(folder_.write(L"locked.txt", "x"), 0);
  EXPECT_EQ(list(), (Texts{L"locked.txt"}));
}

// --- Filters

TEST_F(DirectoryListing, TakesTheFilesWhoseNamesMatch) {
  make_files({L"day1.csv", L"Day2.CSV", L"day10.csv", L"dayx.csv", L"day1.csv.bak", L"notes",
              L"[x].txt", L"a#b.txt"});
  const struct {
    const wchar_t* filter;
    Texts files;
  } rows[] = {
      {L"*.csv", {L"day1.csv", L"day10.csv", L"Day2.CSV", L"dayx.csv"}},
      {L"*.CSV", {L"day1.csv", L"day10.csv", L"Day2.CSV", L"dayx.csv"}},
      {L"day?.csv", {L"day1.csv", L"Day2.CSV", L"dayx.csv"}},
      {L"DAY#.csv", {L"day1.csv", L"Day2.CSV"}},
      {L"day##.*", {L"day10.csv"}},
      {L"day[1-2].csv", {L"day1.csv", L"Day2.CSV"}},
      {L"day[w-z].csv", {L"dayx.csv"}},
      {L"day[!1x]*.csv", {L"Day2.CSV"}},
      {L"[[]x].txt", {L"[x].txt"}},
      {L"*[#]*", {L"a#b.txt"}},
      {L"notes", {L"notes"}},
      {L"note", {}},
      {L"*.", {}},
      {L"?????", {L"notes"}},
      {L"day[1", {}},
      {L" *.csv", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(list(row.filter), row.files) << printable(row.filter);
}

TEST_F(DirectoryListing, WithoutFilterTakesEveryFile) {
  const Texts all{L".profile", L"a.txt", L"b"};
  make_files(all);
  EXPECT_EQ(list(L""), all);
  EXPECT_EQ(list(L"*"), all);
  EXPECT_EQ(list(Value::missing()), all);
  EXPECT_EQ(list(L"*.*"), (Texts{L".profile", L"a.txt"}));  // a name without a dot has none
}

TEST_F(DirectoryListing, MatchesTheNameAndNotThePath) {
  make_files({L"a.txt"});
  EXPECT_EQ(list(folder_.file(L"a.txt")), Texts{});
  EXPECT_EQ(list(L"*\\*"), Texts{});
  EXPECT_EQ(list(L"*test*"), Texts{});  // which is in the path
}

TEST_F(DirectoryListing, DoesNotFilterFolders) {
  make_files({L"a.txt", L"b.csv"});
  make_folders({L"sub.csv", L"other"});
  EXPECT_EQ(list(L"*.txt"), (Texts{L"other\\", L"sub.csv\\", L"a.txt"}));
}

// --- Names beyond ASCII, and many of them

TEST_F(DirectoryListing, HoldsNamesBeyondAscii) {
  const Texts names{L"\u0151rz\u0151.txt", L"Gr\u00F6\u00DFe.txt", L"\u8A9E.csv",
                    L"\u0436\u0443\u043A", L"\U0001F4A7.txt"};
  if (!folder_.takes(names[0])) GTEST_SKIP() << "the file system has no such names";
  make_files(names);
  make_folders({L"\u00C4rger"});
  Texts listed = list();
  ASSERT_EQ(listed.size(), 6u);
  EXPECT_EQ(listed[0], L"\u00C4rger\\");
  listed.erase(listed.begin());
  EXPECT_TRUE(std::is_permutation(listed.begin(), listed.end(), names.begin(), names.end()));
  EXPECT_EQ(list(L"\u0150RZ\u0150.*"), (Texts{L"\u00C4rger\\", L"\u0151rz\u0151.txt"}));
  EXPECT_EQ(list(L"gr?\u00DFE.TXT"), (Texts{L"\u00C4rger\\", L"Gr\u00F6\u00DFe.txt"}));
  EXPECT_EQ(list(L"[\u8000-\u9000].csv"), (Texts{L"\u00C4rger\\", L"\u8A9E.csv"}));
  EXPECT_EQ(list_of(folder_.file(L"\u00C4rger")), Texts{});
}

TEST_F(DirectoryListing, OrdersAccentedLettersWithoutRegardToCase) {
  if (!folder_.takes(L"\u00E4")) GTEST_SKIP() << "the file system has no such names";
  make_files({L"\u00C4b", L"\u00E4a", L"\u00C4c", L"zz", L"a"});
  EXPECT_EQ(list(), (Texts{L"a", L"\u00E4a", L"\u00C4b", L"\u00C4c", L"zz"}));
}

TEST_F(DirectoryListing, TakesTenThousandFiles) {
  constexpr int kFiles = 10'000;
  Texts names;
  for (int i = 0; i < kFiles; ++i) {
    std::wstring number = std::to_wstring(i);
    number.insert(0, 5 - number.size(), L'0');
    names.push_back((i % 2 == 0 ? L"F" : L"f") + number + (i % 10 == 0 ? L".log" : L".dat"));
  }
  Texts shuffled = names;
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(9));
  make_new_files(folder_.path(), shuffled);
  make_folders({L"sub"});
  names.insert(names.begin(), L"sub\\");
  EXPECT_TRUE(list() == names);
  EXPECT_EQ(directory_.get(L"Count"), kFiles + 1);
  EXPECT_EQ(list(L"*.LOG").size(), 1001u);
  EXPECT_EQ(list(L"f0000#.*").size(), 11u);
}

// --- The collection

struct Directory : testing::Test {
  Object add(const wchar_t* path, int type, const Value& key = Value::missing()) const {
    return directory.call_object(L"Add", path, type, key);
  }
  const Object directory = Object::create(L"pvItems32.CDirectory");
};

TEST_F(Directory, BeginsEmpty) {
  EXPECT_EQ(directory.get(L"Count"), 0);
  EXPECT_EQ(directory.get(L"Count").vt, VT_I4);
  EXPECT_TRUE(members_of(directory).empty());
}

TEST_F(Directory, AddGivesTheNewEntry) {
  const Object file = add(L"C:\\a", dirFile), folder = add(L"C:\\b", dirFolder, L"key");
  EXPECT_EQ(file.get(L"Path"), L"C:\\a");
  EXPECT_EQ(file.get(L"DirType"), dirFile);
  EXPECT_EQ(folder.get(L"DirType"), dirFolder);
  EXPECT_EQ(directory.get_object(L"Item", 1), file);
  EXPECT_EQ(directory.get_object(L"Item", L"KEY"), folder);
  EXPECT_EQ(directory.id_of(L"Item"), DISPID_VALUE);
  EXPECT_EQ(texts_of(directory, L"Path"), (Texts{L"C:\\a", L"C:\\b"}));
}

TEST_F(Directory, AddWithoutKeyAddsAnEntryReachedByPositionOnly) {
  add(L"a", dirFile);
  add(L"b", dirFile, L"");
  EXPECT_EQ(directory.try_get(L"Item", L"").number(), 5);
  EXPECT_EQ(directory.get_object(L"Item", 2).get(L"Path"), L"b");
}

TEST_F(Directory, AddUnderAKeyInUseIsAnError) {
  add(L"a", dirFile, L"key");
  EXPECT_EQ(directory.try_call(L"Add", L"b", dirFile, L"Key").number(), 457);
  EXPECT_EQ(texts_of(directory, L"Path"), (Texts{L"a"}));
}

TEST_F(Directory, WhatIsNotThereIsAnError) {
  add(L"a", dirFile, L"key");
  for (const wchar_t* member : {L"Item", L"Remove"}) {
    const auto number = [&](const Value& index) {
      return member == std::wstring(L"Item") ? directory.try_get(member, index).number()
                                             : directory.try_call(member, index).number();
    };
    EXPECT_EQ(number(0), 9);
    EXPECT_EQ(number(2), 9);
    EXPECT_EQ(number(-1), 9);
    EXPECT_EQ(number(L"none"), 5);
    EXPECT_EQ(number(L"1"), 5);
    EXPECT_EQ(number(Value()), 13);
    EXPECT_EQ(number(Value::null()), 94);
  }
  EXPECT_EQ(directory.get(L"Count"), 1);
}

TEST_F(Directory, RemoveAndClearTakeEntriesAway) {
  add(L"a", dirFile);
  add(L"b", dirFolder, L"key");
  add(L"c", dirFile);
  directory.call(L"Remove", 1);
  directory.call(L"Remove", L"key");
  EXPECT_EQ(texts_of(directory, L"Path"), (Texts{L"c"}));
  directory.call(L"Clear");
  directory.call(L"Clear");
  EXPECT_EQ(directory.get(L"Count"), 0);
  add(L"again", dirFile, L"key");
  EXPECT_EQ(directory.get(L"Count"), 1);
}

TEST_F(Directory, EnumerationIsNotDisturbedByAListing) {
  add(L"a", dirFile);
  const Value held = directory.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET).value;
  directory.call(L"GetFileList", L"Q:\\none");
  Value first;
  ASSERT_EQ(query<IEnumVARIANT>(held.punkVal)->Next(1, &first, nullptr), S_OK);
  EXPECT_EQ(Object(first).get(L"Path"), L"a");
}

// --- One entry

TEST(DirectoryEntry, BeginsAsAFileWithoutPath) {
  const Object entry = Object::create(L"pvItems32.CDirEntry");
  EXPECT_EQ(entry.get(L"DirType"), dirFile);
  EXPECT_EQ(entry.get(L"DirType").vt, VT_I4);
  EXPECT_EQ(entry.get(L"Path"), L"");
  EXPECT_EQ(entry.get(L"Tag"), Value());
}

TEST(DirectoryEntry, KeepsWhatItIsGiven) {
  const Object entry = Object::create(L"pvItems32.CDirEntry");
  entry.put(L"DirType", dirFolder);
  entry.put(L"Path", L"C:\\\u0150\0x"s);
  EXPECT_EQ(entry.get(L"DirType"), dirFolder);
  EXPECT_EQ(entry.get(L"Path"), L"C:\\\u0150\0x"s);
  for (const Value& tag : {Value(7), Value(L"text"), Value(1.5), Value::null(), Value()}) {
    entry.put(L"Tag", tag);
    EXPECT_EQ(entry.get(L"Tag"), tag);
  }
  const Object other = Object::create(L"pvItems32.CDirEntry");
  entry.set(L"Tag", other);
  EXPECT_EQ(entry.get_object(L"Tag"), other);
  entry.set(L"Tag", Value::nothing());
  EXPECT_TRUE(entry.get(L"Tag").is_nothing());
}

}  // namespace
}  // namespace pv::test
