// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Item files as the item database loads them: whole, damaged and hostile ones.

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "tests/automation/items/item_support.h"
#include "tests/support/dialogs/dialog_answerer.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

class ItemFile : public testing::Test {
 protected:
  bool load(std::string_view bytes) const { return load_file(folder_.write(L"a.itm", bytes)); }
  bool load_file(const std::wstring& file) const {
    const Value result = items_.call(L"LoadSettingsNew", file);
    EXPECT_EQ(result.vt, VT_BOOL);
    return result.boolean();
  }
  Object item(const Value& index) const { return items_.get_object(L"Item", index); }
  Object variable(const Value& index, const Value& key) const {
    return item(index).get_object(L"Variables").get_object(L"Item", key);
  }

  const TestFolder folder_;
  const Object items_ = Object::create(L"pvItems32.CItems");
};

constexpr char kTwoItems[] =
    "[Items]\r\nCount=2\r\nVersion=1.00.00\r\nDate=text\r\n\r\n"
    "[ITEM1]\r\nCount=2\r\nSettings=7|7|-1|26|-1|0|1,25|8|\r\n"
    "VAR1=a|Flow|Flow rate|-1|11|4|2|99|3|4|PUMP|\r\nVAR2=b|State||0|17|1|0|99|12|3||\r\n\r\n"
    "[ITEM2]\r\nCount=0\r\nSettings=x8|8|0|0|0|-1|0.5|4|\r\n";

// --- Whole files

TEST_F(ItemFile, GivesItemsTheirFields) {
  ASSERT_TRUE(load(kTwoItems));
  EXPECT_EQ(texts_of(items_), (Texts{L"7", L"x8"}));
  const Object one = item(L"7"), two = item(L"X8");
  EXPECT_EQ(one.get(L"ItemID"), 7);
  EXPECT_EQ(one.get(L"ByMeaning"), true);
  EXPECT_EQ(one.get(L"Access"), 26);
  EXPECT_EQ(one.get(L"Historian"), true);
  EXPECT_EQ(one.get(L"Restore"), false);
  EXPECT_EQ(one.get(L"SmartWait"), 1.25f);
  EXPECT_EQ(one.get(L"Length"), 8);
  EXPECT_EQ(two.get(L"ItemID"), 8);
  EXPECT_EQ(two.get(L"ByMeaning"), false);
  EXPECT_EQ(two.get(L"Restore"), true);
  EXPECT_EQ(two.get(L"SmartWait"), 0.5f);
  EXPECT_EQ(two.get_object(L"Variables").get(L"Count"), 0);
}

TEST_F(ItemFile, GivesVariablesTheirFields) {
  ASSERT_TRUE(load(kTwoItems));
  EXPECT_EQ(texts_of(item(1).get_object(L"Variables")), (Texts{L"a", L"b"}));
  const Object flow = variable(1, L"a");
  EXPECT_EQ(flow.get(L"Caption"), L"Flow");
  EXPECT_EQ(flow.get(L"Description"), L"Flow rate");
  EXPECT_EQ(flow.get(L"ParentVariable"), -1);
  EXPECT_EQ(flow.get(L"DimensionID"), 11);
  EXPECT_EQ(flow.get(L"UnitID"), 4);
  EXPECT_EQ(flow.get(L"Decimals"), 2);
  EXPECT_EQ(flow.get(L"ListID"), 3);
  EXPECT_EQ(flow.get(L"ListID").vt, VT_I2);
  EXPECT_EQ(flow.get(L"DataType"), 4);
  EXPECT_EQ(flow.get(L"Symbol"), L"PUMP");
  EXPECT_EQ(flow.get(L"Dirty"), false);
  EXPECT_EQ(flow.get(L"EnableTolerance"), true);
}

TEST_F(ItemFile, GivesEveryVariableTheValueZero) {
  ASSERT_TRUE(load(kTwoItems));
  EXPECT_EQ(item(1).get(L"Value", 1), 0.0f);
  EXPECT_EQ(item(1).get(L"Value", 1).vt, VT_R4);
  EXPECT_EQ(item(1).get(L"Value", 2), L"0");
}

TEST_F(ItemFile, ReplacesTheItemsAndClearsChanged) {
  const Object old = add_item(items_, L"old", 1);
  ASSERT_TRUE(load(kTwoItems));
  EXPECT_EQ(texts_of(items_), (Texts{L"7", L"x8"}));
  EXPECT_EQ(items_.get(L"Changed"), false);
  EXPECT_EQ(old.get(L"Key"), L"old");
}

TEST_F(ItemFile, LeavesVersionAndVersionsAlone) {
  items_.get_object(L"Versions").call(L"Add", L"V", 5);
  items_.put(L"Version", L"V");
  ASSERT_TRUE(load(kTwoItems));
  EXPECT_EQ(items_.get(L"Version"), L"V");
  EXPECT_EQ(items_.get(L"Count"), 5);
}

TEST_F(ItemFile, OfTheExampleLoadsWhole) {
  ASSERT_TRUE(load_file(example_file(L"fluxor.itm")));
  EXPECT_EQ(items_.get(L"AllItemCount"), 66);
  EXPECT_EQ(item(L"1").get(L"Caption"), L"Volume flow");
  EXPECT_EQ(item(L"130").get(L"DataType", 9), 19);
  EXPECT_EQ(item(L"140").get(L"Access"), 192);
  std::set<std::wstring> keys;
  for (const Object& member : members_of(items_)) {
    EXPECT_EQ(member.get(L"Key"), std::to_wstring(member.get(L"ItemID").number()));
    EXPECT_GE(member.get_object(L"Variables").get(L"Count").number(), 1);
    keys.insert(member.get(L"Key").text());
  }
  EXPECT_EQ(keys.size(), 66u);
}

TEST_F(ItemFile, IsReadInTheAnsiCodePage) {
  ASSERT_TRUE(
      load("[Items]\nCount=1\n[ITEM1]\nCount=1\nSettings=1|1|0|1|0|0|0|4|\n"
           "VAR1=1|H\xF6he \xB0\xB5||0|1|1|2||0|4||\n"));
  EXPECT_EQ(item(1).get(L"Caption"), L"H\u00F6he \u00B0\u00B5");
}

TEST_F(ItemFile, MayHaveBareLineFeedsAndNoLastLineEnd) {
  std::string bytes = kTwoItems;
  std::erase(bytes, '\r');
  bytes.pop_back();
  ASSERT_TRUE(load(bytes));
  EXPECT_EQ(texts_of(items_), (Texts{L"7", L"x8"}));
  EXPECT_EQ(item(2).get(L"Length"), 4);
}

TEST_F(ItemFile, IsFoundUnderAnyName) {
  EXPECT_TRUE(load_file(folder_.write(L"two items", kTwoItems)));
  for (const wchar_t* name : {L"Fl\u00FC\u00DFe.itm", L"\u6D41\u91CF.itm"}) {
    if (!folder_.takes(name)) continue;
    EXPECT_TRUE(load_file(folder_.write(name, kTwoItems))) << printable(name);
  }
}

TEST_F(ItemFile, IsReadWhileOthersReadAndWriteIt) {
  const std::wstring file = folder_.write(L"a.itm", kTwoItems);
  const LockedFile other(file, FILE_SHARE_READ | FILE_SHARE_WRITE);
  EXPECT_TRUE(load_file(file));
}

// --- Files that are none

TEST_F(ItemFile, ThatCannotBeOpenedKeepsTheOldItems) {
  add_item(items_, L"old", 1);
  const std::wstring locked = folder_.write(L"locked.itm", kTwoItems);
  const LockedFile lock(locked, 0);
  for (const std::wstring& file :
       {folder_.file(L"missing.itm"), folder_.file(L""), L""s, L"no:such|name"s, locked,
        folder_.file(L"missing\\a.itm"), folder_.write(L"a.itm", kTwoItems) + L"\0.txt"s}) {
    EXPECT_FALSE(load_file(file)) << printable(file);
  }
  EXPECT_EQ(texts_of(items_), (Texts{L"old"}));
  EXPECT_EQ(items_.get(L"Changed"), true);
}

TEST_F(ItemFile, WithoutItemsKeepsTheOldItems) {
  add_item(items_, L"old", 1);
  for (const char* bytes :
       {"", "\r\n", "[Items]", "[Items]\r\nCount=0\r\n", "[Items]\r\nCount=-5\r\n",
        "[Items]\r\nCount=40000\r\n", "[Items]\r\nCount=none\r\n", "[Items]\r\nCount=0.5\r\n",
        "[items]\r\nCount=2\r\n", "Count=2\r\n[Items]\r\n", "\xEF\xBB\xBF[Items]\r\nCount=2\r\n",
        "[Lists]\r\nCount=2\r\n"}) {
    EXPECT_FALSE(load(bytes)) << bytes;
  }
  EXPECT_FALSE(load("[\0I\0t\0e\0m\0s\0]\0\n\0"s));
  EXPECT_EQ(texts_of(items_), (Texts{L"old"}));
  EXPECT_EQ(items_.get(L"Changed"), true);
}

TEST_F(ItemFile, OfManyGigabytesKeepsTheOldItems) {
  add_item(items_, L"old", 1);
  const std::wstring file = folder_.write(L"huge.itm", kTwoItems);
  const HANDLE handle =
      CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  LARGE_INTEGER size;
  size.QuadPart = (1LL << 32) + 1000;  // the lower half alone would be the size of a small file
  const bool grown = SetFilePointerEx(handle, size, nullptr, FILE_BEGIN) && SetEndOfFile(handle);
  CloseHandle(handle);
  if (!grown) GTEST_SKIP() << "the file system takes no such file";
  EXPECT_FALSE(load_file(file));
  EXPECT_EQ(texts_of(items_), (Texts{L"old"}));
  DeleteFileW(file.c_str());
}

// --- Damaged files

TEST_F(ItemFile, WithoutSettingsLineGivesTheDefaultItem) {
  ASSERT_TRUE(load("[Items]\r\nCount=1\r\n\r\n[ITEM1]\r\nCount=0\r\n"));
  const Object one = item(L"59");
  EXPECT_EQ(one.get(L"ItemID"), 59);
  EXPECT_EQ(one.get(L"ByMeaning"), true);
  EXPECT_EQ(one.get(L"Access"), 0);
  EXPECT_EQ(one.get(L"Historian"), false);
  EXPECT_EQ(one.get(L"Restore"), true);
  EXPECT_EQ(one.get(L"SmartWait"), 0.0f);
  EXPECT_EQ(one.get(L"Length"), 0);
}

TEST_F(ItemFile, WithoutVariableLineGivesTheDefaultVariable) {
  ASSERT_TRUE(load("[Items]\r\nCount=1\r\n\r\n[ITEM1]\r\nSettings=7|7|0|1|0|0|0|4|\r\n"));
  // The missing count took the search to the end, so the settings are the default ones too.
  const Object only = variable(L"59", L"1");
  EXPECT_EQ(only.get(L"Caption"), L"");
  EXPECT_EQ(only.get(L"DimensionID"), 3);
  EXPECT_EQ(only.get(L"UnitID"), 6);
  EXPECT_EQ(only.get(L"Decimals"), 2);
  EXPECT_EQ(only.get(L"ListID"), 0);
  EXPECT_EQ(only.get(L"DataType"), 0);
  EXPECT_EQ(only.get(L"Value"), L"0");
}

TEST_F(ItemFile, TakesFieldsTolerantly) {
  ASSERT_TRUE(
      load("[Items]\r\nCount=1 item\r\n\r\n[ITEM1]\r\nCount=1.2\r\n"
           "Settings= k |12 kg|tRUE|3.5|yes|2|1e2x|40000|more|\r\n"
           "VAR1=v\r\n"));
  const Object one = item(L" k ");
  EXPECT_EQ(one.get(L"ItemID"), 12);
  EXPECT_EQ(one.get(L"ByMeaning"), true);
  EXPECT_EQ(one.get(L"Access"), 4);
  EXPECT_EQ(one.get(L"Historian"), false);
  EXPECT_EQ(one.get(L"Restore"), true);
  EXPECT_EQ(one.get(L"SmartWait"), 100.0f);
  EXPECT_EQ(one.get(L"Length"), 0);
  EXPECT_EQ(variable(1, L"v").get(L"Caption"), L"");
}

TEST_F(ItemFile, ReadsBooleansAsTheUtilityConvertsThem) {
  const Object utility = Object::create(L"pvItems32.CUtility");
  for (const wchar_t* text :
       {L"#TRUE#", L"#FALSE#", L"#true#",  L"&H1",    L"&H0",        L"$1",
        L"(1)",    L"(0)",     L"1,000.5", L"0,0",    L"0.5",        L"0,5",
        L"True",   L"tRUE",    L" True",   L"False",  L"-1",         L"0",
        L"-0",     L"00",      L"+1",      L" 1 ",    L"1 kg",       L"yes",
        L"",       L"1e2",     L"1e999",   L"1e-400", L"1234567890", L"12345678901234567890",
        L"Wahr",   L"Igaz",    L"-"}) {
    const std::string field = in_code_page(text);
    ASSERT_TRUE(load("[Items]\nCount=1\n[ITEM1]\nCount=0\nSettings=1|1|" + field + "|1|" + field +
                     "|" + field + "|0|4|\n"));
    const Value expected = utility.call(L"pvCBool", text);
    for (const wchar_t* flag : {L"ByMeaning", L"Historian", L"Restore"}) {
      EXPECT_EQ(item(1).get(flag), expected) << field;
    }
  }
}

TEST_F(ItemFile, ReadsSmartWaitInEitherNotation) {
  for (const auto& [text, wait] : {std::pair{"0.25", 0.25f}, std::pair{"0,25", 0.25f},
                                   std::pair{"1e39", 0.0f}, std::pair{"-3", -3.0f}}) {
    ASSERT_TRUE(
        load("[Items]\nCount=1\n[ITEM1]\nCount=0\nSettings=1|1|0|1|0|0|"s + text + "|4|\n"));
    EXPECT_EQ(item(1).get(L"SmartWait"), wait) << text;
  }
}

TEST_F(ItemFile, SkipsAnItemWhoseKeyIsTakenWithItsVariablesAndWithoutMessage) {
  const DialogAnswerer answerer;
  ASSERT_TRUE(
      load("[Items]\nCount=3\n"
           "[ITEM1]\nCount=1\nSettings=k|1|0|1|0|0|0|4|\nVAR1=1|one||0|1|1|2||0|4||\n"
           "[ITEM2]\nCount=2\nSettings=K|2|0|1|0|0|0|4|\nVAR1=1|two||0|1|1|2||0|4||\n"
           "VAR2=1|two||0|1|1|2||0|4||\n"
           "[ITEM3]\nCount=1\nSettings=l|3|0|1|0|0|0|4|\nVAR1=1|three||0|1|1|2||0|4||\n"));
  EXPECT_EQ(texts_of(items_), (Texts{L"k", L"l"}));
  EXPECT_EQ(item(L"k").get(L"Caption"), L"one");
  EXPECT_EQ(item(L"l").get(L"Caption"), L"three");
  EXPECT_TRUE(answerer.boxes().empty());
}

TEST_F(ItemFile, TakesSeveralItemsWithoutKey) {
  ASSERT_TRUE(
      load("[Items]\nCount=2\n[ITEM1]\nCount=0\nSettings=|1|0|1|0|0|0|4|\n"
           "[ITEM2]\nCount=0\nSettings=|2|0|1|0|0|0|4|\n"));
  EXPECT_EQ(items_.get(L"AllItemCount"), 2);
  EXPECT_EQ(item(2).get(L"ItemID"), 2);
}

// --- Variables that cannot be created

TEST_F(ItemFile, TellsAboutAVariableWhoseKeyIsTakenAndGoesOn) {
  const DialogAnswerer answerer;
  ASSERT_TRUE(
      load("[Items]\nCount=2\n"
           "[ITEM1]\nCount=4\nSettings=1|1|0|1|0|0|0|4|\nVAR1=a|1st||0|1|1|2||0|4||\n"
           "VAR2=A|2nd||0|1|1|2||0|4||\nVAR3=c|3rd||0|1|1|2||0|4||\n"
           "VAR4=c|4th||0|1|1|2||0|4||\n"
           "[ITEM2]\nCount=0\nSettings=2|2|0|1|0|0|0|4|\n"));
  EXPECT_EQ(texts_of(item(1).get_object(L"Variables"), L"Caption"), (Texts{L"1st", L"3rd"}));
  EXPECT_EQ(texts_of(items_), (Texts{L"1", L"2"}));
  EXPECT_EQ(items_.get(L"Changed"), false);
  const auto boxes = answerer.boxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].title, L"KalVOS");
  EXPECT_EQ(boxes[0].prompt, L"Could not create item:A");
  EXPECT_EQ(boxes[0].icon, 16);
  EXPECT_EQ(boxes[0].buttons.size(), 1u);
  EXPECT_EQ(boxes[1].prompt, L"Could not create item:c");
}

TEST_F(ItemFile, TellsAboutMissingVariableLines) {
  const DialogAnswerer answerer;
  ASSERT_TRUE(
      load("[Items]\nCount=1\n[ITEM1]\nCount=3\nSettings=7|7|0|1|0|0|0|4|\n"
           "VAR1=1|only||0|1|1|2||0|4||\n"));
  EXPECT_EQ(texts_of(item(L"7").get_object(L"Variables"), L"Caption"), (Texts{L"only"}));
  const auto boxes = answerer.boxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].prompt, L"Could not create item:1");
  EXPECT_EQ(boxes[1].prompt, L"Could not create item:1");
}

/// A window of the host, which does something when it handles the message posted to it.
class ActingWindow {
 public:
  explicit ActingWindow(std::function<void()> action)
      : action_(std::move(action)), window_(create()) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&action_));
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&handle));
    PostMessageW(window_, WM_APP, 0, 0);
  }
  ActingWindow(const ActingWindow&) = delete;
  ActingWindow& operator=(const ActingWindow&) = delete;
  ~ActingWindow() { DestroyWindow(window_); }

 private:
  static HWND create() {
    return CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                           nullptr);
  }
  static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message != WM_APP) return DefWindowProcW(window, message, w, l);
    (*reinterpret_cast<std::function<void()>*>(GetWindowLongPtrW(window, GWLP_USERDATA)))();
    return 0;
  }

  std::function<void()> action_;
  HWND window_;
};

constexpr char kSameVariables[] =
    "[Items]\nCount=2\n[ITEM1]\nCount=5\nSettings=1|1|0|1|0|0|0|4|\n"
    "VAR1=same|||0|1|1|2||0|4||\nVAR2=same|||0|1|1|2||0|4||\nVAR3=same|||0|1|1|2||0|4||\n"
    "VAR4=same|||0|1|1|2||0|4||\nVAR5=same|||0|1|1|2||0|4||\n"
    "[ITEM2]\nCount=2\nSettings=2|2|0|1|0|0|0|4|\n"
    "VAR1=other|||0|1|1|2||0|4||\nVAR2=other|||0|1|1|2||0|4||\n";

TEST_F(ItemFile, IsInPlaceWhenTheMessagesAreShown) {
  add_item(items_, L"old", 1);
  Texts seen;
  const ActingWindow window([&] { seen = texts_of(items_); });
  const DialogAnswerer answerer;
  EXPECT_TRUE(load(kSameVariables));
  EXPECT_EQ(seen, (Texts{L"1", L"2"}));
  Texts prompts;
  for (const ShownBox& box : answerer.boxes()) prompts.push_back(box.prompt.substr(22));
  EXPECT_EQ(prompts, (Texts{L"same", L"same", L"same", L"same", L"other"}));
}

TEST_F(ItemFile, KeepsAnItemThatAHostAddsWhileTheMessageIsOpen) {
  const ActingWindow window([&] { add_item(items_, L"added", 3); });
  const DialogAnswerer answerer;
  EXPECT_TRUE(load(kSameVariables));
  EXPECT_EQ(texts_of(items_), (Texts{L"1", L"2", L"added"}));
  EXPECT_EQ(items_.get(L"Changed"), true);
}

TEST_F(ItemFile, SurvivesAHostThatClearsTheItemsWhileTheMessageIsOpen) {
  const ActingWindow window([&] { items_.call(L"Clear"); });
  const DialogAnswerer answerer;
  EXPECT_TRUE(load(kSameVariables));
  EXPECT_EQ(answerer.boxes().size(), 5u);
  EXPECT_EQ(texts_of(items_), Texts{});
}

}  // namespace
}  // namespace pv::test
