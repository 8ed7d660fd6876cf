// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The file of the item texts is the one that the platform's own calls would have made, byte by
// byte.

#include <gtest/gtest.h>

#include <random>

#include "resources/version.h"
#include "tests/automation/items/item_support.h"
#include "tests/support/user_locale.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

struct Text {
  std::wstring caption, description;
};
using ItemTextLists = std::vector<std::vector<Text>>;  // of the variables of each item

Object items_with(const ItemTextLists& lists) {
  const Object items = Object::create(L"pvItems32.CItems");
  int id = 0;
  for (const auto& texts : lists) {
    const Object item = add_item(items, L"", ++id, static_cast<int>(texts.size()));
    short number = 0;
    for (const Text& text : texts) {
      item.put(L"Caption", ++number, text.caption);
      item.put(L"Description", number, text.description);
    }
  }
  return items;
}

/// What the member does, in the platform's own calls.
class PlatformCalls {
 public:
  explicit PlatformCalls(const std::wstring& file) : file_(in_code_page(file)) {}

  void save_all(const ItemTextLists& lists) const {
    const UINT recorded = GetPrivateProfileIntA("Items", "Count", 0, file_.c_str());
    for (UINT i = 1; i <= recorded; ++i) write(section(i), nullptr, nullptr);
    write("Items", "Count", std::to_string(lists.size()).c_str());
    write("Items", "Version", "1.00.00");
    write("Items", "Date", PV_COMMENTS);
    for (std::size_t i = 1; i <= lists.size(); ++i) save_one(lists, i);
  }

  void save_one(const ItemTextLists& lists, std::size_t position) const {
    std::size_t number = 0;
    for (const Text& text : lists[position - 1]) {
      const std::string key = "VAR" + std::to_string(++number);
      write(section(position), key.c_str(),
            in_code_page(text.caption + L"|" + text.description).c_str());
    }
  }

 private:
  static std::string section(std::size_t position) { return "ITEM" + std::to_string(position); }
  void write(const std::string& section, const char* key, const char* value) const {
    WritePrivateProfileStringA(section.c_str(), key, value, file_.c_str());
  }

  std::string file_;
};

const ItemTextLists kPlain = {{{L"Flow", L"Volume per time"}, {L"Sum", L""}}, {{L"Höhe", L"m"}}};

const ItemTextLists kAwkward = {
    {{L"  blanks before", L"and after  "}, {L"\t", L" \t "}, {L"", L""}},
    {{L"\"quoted", L"text\""}, {L"'", L"'"}, {L"a=b", L"; c"}, {L"[ITEM3]", L"x"}},
    {},
    {{L"two\r\nlines", L"and\r\n[Inner]\r\nk = v "},
     {L"one\nmore", L"\r\n\r\n"},
     {L"after", L"it"}},
    {{L"\u8A9E", L"no character of the code page"}, {L"cut\0here"s, L"x"}, {L"last", L"blank "}}};

const std::string kFiles[] = {
    "",
    "[Items]\r\nCount=2\r\nVersion=1.00.00\r\nDate=old\r\n[ITEM1]\r\nVAR1=a\r\n[ITEM2]\r\nVAR1="
    "b\r\n",
    "[ITEM2]\r\nVAR1=b\r\n[Other]\r\nk=v\r\n[ITEM1]\r\nVAR1=a\r\n[Items]\r\nCount=1\r\n",
    "[Items]\r\nCount=9\r\n[ITEM1]\r\n[ITEM1]\r\nVAR1=second\r\n[ITEM9]\r\n[ITEM10]\r\nVAR1="
    "kept\r\n",
    "; a comment\r\n;k = v\r\n\r\n[Other] ; behind ]\r\n  k  =  v  \r\n ; comment = x ; "
    "y\r\n\r\n\r\n",
    "[items]\r\ncount=1\r\nVERSION=1\r\ndate=2\r\n[item1]\r\nvar1=x\r\nVar2=y\r\nVAR1=again\r\n",
    "[Items]\nCount = 1\n[Items]\nCount=2\n[ITEM1]\nVAR1=a",
    "[Items]\rCount=1\r\r[ITEM1]\rVAR1=a\r",
    "[Items\r\nCount=3\r\n]\r\n[]\r\nk=v\r\n[ Items "
    "]\r\nCount=7\r\n[[Items]]\r\nCount=8\r\n[a]b]c\r\n",
    "Count=5\r\nno section\r\n=nameless\r\n=\r\n = "
    "twice\r\nk=\r\nk=v=w\r\n[Items]\r\n=x\r\nCount\r\n",
    "[Items]\r\nCount=\"2\"\r\n[ITEM1]\r\nVAR1=\"q\"\r\n[ITEM2]\r\nVAR1='q'\r\n[ITEM3]\r\nVAR9="
    "x\r\n",
    "[Items]\r\nCount=1\t\r\n\t[ITEM1]\t\r\n\tVAR1\t=\tx\t\r\n\v\f[ITEM1]\r\nVAR1=y\x1A\r\n\x1A",
    "[Other]\r\nk=H\xF6he \x80\x81\x8D\xFF \xA0\r\n\xA0\r\n\xA0=\xA0\r\n",
    "[Items]\r\nCount=2\r\nVersion=1.00.00\r\nDate=" PV_COMMENTS
    "\r\n\r\n[ITEM1]\r\nVAR1=Flow|Volume per time\r\nVAR2=Sum|\r\n[ITEM2]\r\nVAR1=H\xF6he|m\r\n",
    "\xEF\xBB\xBF[Items]\r\nCount=1\r\n[ITEM1]\r\nVAR9=x \xC3\xB6\r\n",
    "[Items]\r\nCount=1\r\n[ITEM1]\r\nVAR9=x\0y\r\n[Other]\0\r\nk=v\r\n"s,
    "\xFF\xFE[\0I\0t\0e\0m\0s\0]\0\r\0\n\0C\0o\0u\0n\0t\0=\0"
    "1\0\r\0\n\0"s,
    "\xFE\xFF\0[\0I\0t\0e\0m\0s\0]\0\r\0\n\0C\0o\0u\0n\0t\0=\0"
    "1\0\r\0\n"s};

/// Saves into two files that begin with the same bytes, once by the library and once by the
/// platform, and compares them.
class TwoFiles {
 public:
  explicit TwoFiles(const std::string& before) {
    for (const OwnFile* file : {&ours_, &platforms_}) {
      if (!before.empty()) file->fill(before);
    }
  }

  void save_all(const ItemTextLists& lists) const {
    EXPECT_EQ(items_with(lists).call(L"SaveTextSettings", asked_for()), true);
    PlatformCalls(platforms_.path()).save_all(lists);
    compare();
  }
  void save_one(const ItemTextLists& lists, long position) const {
    const Object items = items_with(lists);
    EXPECT_EQ(items.call(L"SaveTextSettings", asked_for(), items.get_object(L"Item", position)),
              true);
    PlatformCalls(platforms_.path()).save_one(lists, static_cast<std::size_t>(position));
    compare();
  }
  std::string bytes() const { return ours_.bytes(); }

 private:
  std::wstring asked_for() const { return ours_.folder().file(L"texts.txt"); }
  void compare() const { EXPECT_EQ(ours_.bytes(), platforms_.bytes()); }

  const OwnFile ours_{L"texts.001"}, platforms_{L"texts.001"};
};

TEST(FileOfItemTexts, IsThePlatformsByteByByte) {
  for (const std::string& before : kFiles) {
    for (const ItemTextLists& lists : {kPlain, kAwkward, ItemTextLists{}, ItemTextLists{{}}}) {
      SCOPED_TRACE(testing::PrintToString(before));
      const TwoFiles files(before);
      files.save_all(lists);
      files.save_all(lists);
      files.save_all(kPlain);
    }
  }
}

TEST(FileOfItemTexts, OfOneItemIsThePlatformsByteByByte) {
  for (const std::string& before : kFiles) {
    SCOPED_TRACE(testing::PrintToString(before));
    const TwoFiles files(before);
    files.save_one(kPlain, 1);
    files.save_one(kPlain, 1);
    files.save_one(kAwkward, 2);
    files.save_one(kAwkward, 3);
    files.save_one(kAwkward, 4);
  }
}

// Nothing is written where the file holds the texts already, not even its blank lines change.
TEST(FileOfItemTexts, StaysAsItIsWhereNothingChanges) {
  const std::string before = "[ITEM1]\n\n  var1 = Flow|Volume per time\nVAR2=Sum|";
  const TwoFiles files(before);
  files.save_one(kPlain, 1);
  EXPECT_EQ(files.bytes(), before);
}

TEST(FileOfItemTexts, IsThePlatformsWhateverItHeldBefore) {
  const char* const pieces[] = {"[Items]",  "[ITEM1]", "[item2]",
                                "[Other]",  "[",       "]",
                                "Count=2",  "Count",   "VAR1=Flow|Volume per time",
                                "VAR2=x",   "var1 ",   "=",
                                " ",        "\t",      ";",
                                "comment",  "\r\n",    "\r\n",
                                "\r\n",     "\n",      "\r",
                                "\"",       "VAR3=",   "k=",
                                "Version=", "Date"};
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    std::string before;
    for (std::size_t i = 0, count = 1 + random() % 40; i < count; ++i) {
      before += pieces[random() % std::size(pieces)];
    }
    SCOPED_TRACE(testing::PrintToString(before));
    const TwoFiles files(before);
    files.save_one(kPlain, 1);
    files.save_all(kPlain);
  }
}

TEST(FileOfItemTexts, OfAThousandItemsIsWrittenAtOnce) {
  const OwnFile file(L"texts.001");
  const ItemTextLists lists(1000,
                            {{L"Flow", L"Volume per time"}, {L"Sum", L"Volume"}, {L"t", L""}});
  const Object items = items_with(lists);
  for (int round = 0; round < 2; ++round) {
    const DWORD started = GetTickCount();
    EXPECT_EQ(items.call(L"SaveTextSettings", file), true);
    EXPECT_LT(GetTickCount() - started, 1500u);
  }
  EXPECT_NE(file.bytes().find("[ITEM1000]\r\nVAR1=Flow|Volume per time\r\nVAR2=Sum|Volume\r\n"),
            std::string::npos);
}

}  // namespace
}  // namespace pv::test
