// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Version files through the class that loads and saves them.

#include <gtest/gtest.h>

#include "resources/version.h"
#include "tests/automation/items/item_support.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

class VersionsFile : public testing::Test {
 protected:
  static Object make_versions() { return Object::create(L"pvItems32.CVersions"); }
  bool load(std::string_view bytes) const {
    return versions_.call(L"LoadSettingsNew", folder_.write(L"a.ver", bytes)).boolean();
  }
  bool save(const std::wstring& file) const {
    return versions_.call(L"SaveSettingsNew", file).boolean();
  }
  Texts names() const { return texts_of(versions_, L"Name"); }
  Object entries(const Value& version) const {
    return versions_.get_object(L"Item", version).get_object(L"VerItems");
  }

  const TestFolder folder_;
  const Object versions_ = make_versions();
};

std::string head(int count) {
  return "[Versions]\r\nCount=" + std::to_string(count) +
         "\r\nVersion=1.00.00\r\nDate=" PV_COMMENTS "\r\n";
}

TEST_F(VersionsFile, GivesVersionsAndEntries) {
  ASSERT_TRUE(
      load("[Versions]\r\nCount=2\r\n\r\n[Version1]\r\nName=1.10\r\nCount=2\r\n"
           "ItemCount=54\r\nItem1=1|1\r\nItem2=32|160\r\n\r\n"
           "[Version2]\r\nName=2.00\r\nCount=0\r\nItemCount=61\r\n"));
  EXPECT_EQ(names(), (Texts{L"1.10", L"2.00"}));
  EXPECT_EQ(versions_.get_object(L"Item", L"1.10").get(L"ItemCount"), 54);
  EXPECT_EQ(texts_of(entries(1)), (Texts{L"1", L"32"}));
  EXPECT_EQ(texts_of(entries(1), L"IndexKey"), (Texts{L"1", L"160"}));
  EXPECT_EQ(entries(L"1.10").get_object(L"Item", L"32").get(L"IndexKey"), L"160");
  EXPECT_EQ(versions_.get_object(L"Item", L"2.00").get(L"ItemCount"), 61);
  EXPECT_EQ(entries(2).get(L"Count"), 0);
}

TEST_F(VersionsFile, OfTheExampleLoadsWhole) {
  ASSERT_EQ(versions_.call(L"LoadSettingsNew", example_file(L"fluxor.ver")), true);
  EXPECT_EQ(names(), (Texts{L"1.10", L"2.00", L"2.30"}));
  EXPECT_EQ(entries(1).get(L"Count"), 54);
  EXPECT_EQ(entries(2).get(L"Count"), 61);
  EXPECT_EQ(entries(3).get(L"Count"), 64);
}

TEST_F(VersionsFile, ClearsChangedWhenItLoads) {
  versions_.put(L"Changed", true);
  ASSERT_TRUE(load("[Versions]\nCount=1\n[Version1]\nName=V\n"));
  EXPECT_EQ(versions_.get(L"Changed"), false);
}

TEST_F(VersionsFile, AddsToTheVersionsThatAreThere) {
  versions_.call(L"Add", L"old", 1);
  ASSERT_TRUE(load("[Versions]\nCount=1\n[Version1]\nName=V\nCount=0\nItemCount=5\n"));
  EXPECT_EQ(names(), (Texts{L"old", L"V"}));
}

TEST_F(VersionsFile, SkipsAVersionWhoseNameIsTakenWithItsEntries) {
  versions_.call(L"Add", L"V", 1);
  ASSERT_TRUE(
      load("[Versions]\nCount=2\n[Version1]\nName=v\nCount=1\nItemCount=5\nItem1=a|b\n"
           "[Version2]\nName=W\nCount=1\nItemCount=6\nItem1=c|d\n"));
  EXPECT_EQ(names(), (Texts{L"V", L"W"}));
  EXPECT_EQ(versions_.get_object(L"Item", L"V").get(L"ItemCount"), 1);
  EXPECT_EQ(entries(L"V").get(L"Count"), 0);
  EXPECT_EQ(texts_of(entries(L"W")), (Texts{L"c"}));
}

TEST_F(VersionsFile, SkipsEntriesWhoseKeyIsTaken) {
  ASSERT_TRUE(
      load("[Versions]\nCount=1\n[Version1]\nName=V\nCount=3\nItemCount=5\n"
           "Item1=a|1st\nItem2=A|2nd\nItem3=b|3rd\n"));
  EXPECT_EQ(texts_of(entries(1), L"IndexKey"), (Texts{L"1st", L"3rd"}));
}

TEST_F(VersionsFile, EndsWithFalseAtAVersionWithoutNameAndKeepsThoseBefore) {
  versions_.put(L"Changed", true);
  EXPECT_FALSE(
      load("[Versions]\nCount=3\n[Version1]\nName=V\nCount=0\nItemCount=5\n"
           "[Version2]\nName=\nCount=0\nItemCount=6\n"
           "[Version3]\nName=W\nCount=0\nItemCount=7\n"));
  EXPECT_EQ(names(), (Texts{L"V"}));
  EXPECT_EQ(versions_.get(L"Changed"), true);
}

TEST_F(VersionsFile, EndsWithFalseWhereVersionsAreMissing) {
  EXPECT_FALSE(load("[Versions]\nCount=2\n[Version1]\nName=V\nCount=0\nItemCount=5\n"));
  EXPECT_EQ(names(), (Texts{L"V"}));
}

TEST_F(VersionsFile, GivesDefaultsForMissingLines) {
  ASSERT_TRUE(load("[Versions]\nCount=1\n[Version1]\nName=V\nCount=2\nItem1=a|b\n"));
  EXPECT_EQ(versions_.get_object(L"Item", 1).get(L"ItemCount"), 255);
  // The missing ItemCount took the search to the end: both entries are the default one.
  EXPECT_EQ(texts_of(entries(1)), (Texts{L"1"}));
  EXPECT_EQ(texts_of(entries(1), L"IndexKey"), (Texts{L"1"}));
}

TEST_F(VersionsFile, TakesDamagedEntries) {
  ASSERT_TRUE(
      load("[Versions]\nCount=1\n[Version1]\nName=V\nCount=4\nItemCount=5\n"
           "Item1=a\nItem2=b|\nItem3=|c\nItem4=d|e|f\n"));
  EXPECT_EQ(texts_of(entries(1)), (Texts{L"a", L"b", L"", L"d"}));
  EXPECT_EQ(texts_of(entries(1), L"IndexKey"), (Texts{L"", L"", L"c", L"e"}));
}

TEST_F(VersionsFile, TakesAVersionCountBelowOneAsNoEntries) {
  ASSERT_TRUE(
      load("[Versions]\nCount=2\n[Version1]\nName=V\nCount=-3\nItemCount=5\n"
           "[Version2]\nName=W\nCount=0\nItemCount=6\n"));
  EXPECT_EQ(names(), (Texts{L"V", L"W"}));
  EXPECT_EQ(entries(1).get(L"Count"), 0);
}

TEST_F(VersionsFile, ThatIsNoneIsFalseAndChangesNothing) {
  versions_.call(L"Add", L"old", 1);
  versions_.put(L"Changed", true);
  for (const char* bytes : {"", "[Versions]\nCount=0\n", "[Versions]\nCount=-1\n",
                            "[Items]\nCount=1\n", "[Versions]\nCount=99999\n"}) {
    EXPECT_FALSE(load(bytes)) << bytes;
  }
  EXPECT_EQ(versions_.call(L"LoadSettingsNew", folder_.file(L"missing.ver")), false);
  EXPECT_EQ(versions_.call(L"LoadSettingsNew", L""), false);
  EXPECT_EQ(names(), (Texts{L"old"}));
  EXPECT_EQ(versions_.get(L"Changed"), true);
}

// --- Saving

TEST_F(VersionsFile, IsSavedInItsExactForm) {
  const Object version = versions_.call_object(L"Add", L"1.10 H\u00F6he", 54);
  version.get_object(L"VerItems").call(L"Add", L"32", L"160");
  version.get_object(L"VerItems").call(L"Add", L"", L"");
  versions_.call(L"Add", L"2.00", -1);
  versions_.put(L"Changed", true);
  ASSERT_TRUE(save(folder_.file(L"a.ver")));
  EXPECT_EQ(bytes_of(folder_.file(L"a.ver")),
            head(2) +
                "\r\n[Version1]\r\nName=1.10 H\xF6he\r\nCount=2\r\nItemCount=54\r\n"
                "Item1=32|160\r\nItem2=|\r\n\r\n"
                "[Version2]\r\nName=2.00\r\nCount=0\r\nItemCount=-1\r\n");
  EXPECT_EQ(versions_.get(L"Changed"), false);
}

TEST_F(VersionsFile, ComesBackAsSaved) {
  ASSERT_EQ(versions_.call(L"LoadSettingsNew", example_file(L"fluxor.ver")), true);
  ASSERT_TRUE(save(folder_.file(L"1.ver")));
  const Object reloaded = make_versions();
  ASSERT_EQ(reloaded.call(L"LoadSettingsNew", folder_.file(L"1.ver")), true);
  ASSERT_EQ(reloaded.call(L"SaveSettingsNew", folder_.file(L"2.ver")), true);
  EXPECT_EQ(bytes_of(folder_.file(L"2.ver")), bytes_of(folder_.file(L"1.ver")));
  const std::string example = bytes_of(example_file(L"fluxor.ver"));
  EXPECT_EQ(bytes_of(folder_.file(L"1.ver")),
            head(3) + example.substr(example.find("\r\n[Version1]")));
}

TEST_F(VersionsFile, ThatCannotBeSavedStaysWhole) {
  versions_.call(L"Add", L"V", 1);
  versions_.put(L"Changed", true);
  const std::wstring file = folder_.write(L"a.ver", "old content");
  {
    const LockedFile lock(file);
    EXPECT_FALSE(save(file));
  }
  EXPECT_FALSE(save(folder_.file(L"missing\\a.ver")));
  EXPECT_FALSE(save(L""));
  EXPECT_EQ(bytes_of(file), "old content");
  EXPECT_EQ(folder_.names(), (Texts{L"a.ver"}));
  EXPECT_EQ(versions_.get(L"Changed"), true);
}

TEST_F(VersionsFile, OfAnItemDatabaseIsLoadedThroughIt) {
  const Object items = Object::create(L"pvItems32.CItems");
  const Object versions = items.get_object(L"Versions");
  ASSERT_EQ(versions.call(L"LoadSettingsNew", example_file(L"fluxor.ver")), true);
  EXPECT_EQ(items.get(L"Count"), 54);
}

}  // namespace
}  // namespace pv::test
