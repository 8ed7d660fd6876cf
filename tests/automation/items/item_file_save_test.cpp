// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Item files as the item database saves them, and saves that are refused.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "resources/version.h"
#include "tests/automation/items/item_support.h"
#include "tests/support/dialogs/dialog_answerer.h"
#include "tests/support/dispatch_object.h"

namespace pv::test {
namespace {

using namespace std::string_literals;

class ItemFileSave : public testing::Test {
 protected:
  Object make_items() const { return Object::create(L"pvItems32.CItems"); }
  bool save(const std::wstring& file) const {
    const Value result = items_.call(L"SaveSettingsNew", file);
    EXPECT_EQ(result.vt, VT_BOOL);
    return result.boolean();
  }
  std::string saved(const Object& items) const {
    const std::wstring file = folder_.file(L"saved.itm");
    EXPECT_EQ(items.call(L"SaveSettingsNew", file), true);
    return bytes_of(file);
  }

  const TestFolder folder_;
  const Object items_ = make_items();
};

std::string head(int count) {
  return "[Items]\r\nCount=" + std::to_string(count) +
         "\r\nVersion=1.00.00\r\nDate=" PV_COMMENTS "\r\n";
}

TEST_F(ItemFileSave, WritesTheFileInItsExactForm) {
  const Object one = items_.call_object(L"Add", L"7", 7, true, 26, true, false, 1.25f, 8);
  const Object variables = one.get_object(L"Variables");
  variables.call(L"Add", L"a", L"H\u00F6he", L"Flow rate", L"PUMP", -1, 11, 4, 2, 99.5, 3, 4);
  variables.call(L"Add", L"", L"", L"", L"", 0, 17, 1, 0, L"text", L"STATES", 3);
  items_.call(L"Add", L"", -8, false, 0, false, true, 0.0f, 4);
  const std::string decimal = printable(user_decimal());
  EXPECT_EQ(saved(items_), head(2) + "\r\n[ITEM1]\r\nCount=2\r\nSettings=7|7|-1|26|-1|0|1" +
                               decimal +
                               "25|8|\r\nVAR1=a|H\xF6he|Flow rate|-1|11|4|2||3|4|PUMP|\r\n"
                               "VAR2=|||0|17|1|0||STATES|3||\r\n\r\n"
                               "[ITEM2]\r\nCount=0\r\nSettings=|-8|0|0|0|-1|0|4|\r\n");
}

TEST_F(ItemFileSave, OfNoItemsWritesTheHeadOnly) {
  EXPECT_EQ(saved(items_), head(0));
  EXPECT_EQ(make_items().call(L"LoadSettingsNew", folder_.file(L"saved.itm")), false);
}

TEST_F(ItemFileSave, HoldsAllItemsWhateverTheVersion) {
  add_item(items_, L"1", 1);
  add_item(items_, L"2", 2);
  items_.get_object(L"Versions").call(L"Add", L"V", 1);
  items_.put(L"Version", L"V");
  const std::string bytes = saved(items_);
  EXPECT_TRUE(bytes.starts_with(head(2))) << bytes;
  EXPECT_NE(bytes.find("[ITEM2]\r\nCount=0\r\nSettings=2|2|"), std::string::npos) << bytes;
}

TEST_F(ItemFileSave, ClearsChangedWhenItWorked) {
  add_item(items_, L"1", 1);
  ASSERT_TRUE(save(folder_.file(L"a.itm")));
  EXPECT_EQ(items_.get(L"Changed"), false);
}

TEST_F(ItemFileSave, ReplacesALongerFileWhole) {
  const std::wstring file = folder_.write(L"saved.itm", std::string(100'000, 'x'));
  EXPECT_EQ(saved(items_), head(0));
  EXPECT_EQ(folder_.names(), (Texts{L"saved.itm"}));
}

TEST_F(ItemFileSave, TakesUnicodeFileNames) {
  Texts saved_names;
  for (const wchar_t* name : {L"Fl\u00FC\u00DFe.itm", L"\u6D41\u91CF.itm"}) {
    if (!folder_.takes(name)) continue;
    EXPECT_TRUE(save(folder_.file(name))) << printable(name);
    saved_names.emplace_back(name);
  }
  if (saved_names.empty()) GTEST_SKIP() << "the file system takes no such names";
  EXPECT_EQ(folder_.names(), saved_names);
}

TEST_F(ItemFileSave, WritesCharactersWithoutPlaceInTheCodePageAsQuestionMarks) {
  add_variable(add_item(items_, L"1", 1).get_object(L"Variables"), L"\u6D41");
  EXPECT_NE(saved(items_).find("VAR1=?|Caption ?|"), std::string::npos);
}

TEST_F(ItemFileSave, WritesAListWithoutTextAsEmpty) {
  const Object item = add_item(items_, L"1", 1, 1);
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"ListID", Value::null());
  EXPECT_NE(saved(items_).find("|2|||4||\r\n"), std::string::npos);
}

/// What a host may put into a variable: its text is "7", and whoever asks for it sets off an
/// action.
class ActingText final : public DispatchObject {
 public:
  explicit ActingText(std::function<void()> action) : action_(std::move(action)) {}
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    if (id != DISPID_VALUE) return DISP_E_MEMBERNOTFOUND;
    action_();
    *result = Value(L"7").detach();
    return S_OK;
  }

 private:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }

  std::function<void()> action_;
};

TEST_F(ItemFileSave, WithinASaveOfTheSameFileWorksToo) {
  const Object item = add_item(items_, L"1", 1, 1);
  int inner = 0;
  const Ref<IDispatch> text(new ActingText([&] {
    if (++inner == 1) {
      EXPECT_TRUE(save(folder_.file(L"saved.itm")));
    }
  }));
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"ListID", Value(text.get()));
  EXPECT_NE(saved(items_).find("|2||7|4||\r\n"), std::string::npos);
  EXPECT_EQ(inner, 2);
  EXPECT_EQ(folder_.names(), (Texts{L"saved.itm"}));
}

TEST_F(ItemFileSave, OfAVariableThatGoesMeanwhileHasItStill) {
  const Object item = add_item(items_, L"1", 1, 1);
  const Object variables = item.get_object(L"Variables");
  const Ref<IDispatch> text(new ActingText([&] { variables.call(L"Clear"); }));
  variables.get_object(L"Item", 1).put(L"ListID", Value(text.get()));
  EXPECT_NE(saved(items_).find("VAR1=1|Caption 1|"), std::string::npos);
}

TEST_F(ItemFileSave, ThatFailsWithAnErrorLeavesTheOldFileAndNothingBesideIt) {
  // Many items before the error: a part of the new file is written by then.
  for (int i = 1; i <= 2000; ++i) add_item(items_, std::to_wstring(i).c_str(), i, 1);
  const Object variables = add_item(items_, L"last", 2001, 2).get_object(L"Variables");
  const Ref<IDispatch> text(new ActingText([&] { variables.call(L"Clear"); }));
  variables.get_object(L"Item", 1).put(L"ListID", Value(text.get()));
  const std::wstring file = folder_.write(L"a.itm", "old content");
  EXPECT_FALSE(items_.try_call(L"SaveSettingsNew", file).worked());
  EXPECT_EQ(bytes_of(file), "old content");
  EXPECT_EQ(folder_.names(), (Texts{L"a.itm"}));
}

// --- Round trips

TEST_F(ItemFileSave, OfTheExampleComesBackAsItWas) {
  ASSERT_EQ(items_.call(L"LoadSettingsNew", example_file(L"fluxor.itm")), true);
  const std::string first = saved(items_);
  const Object reloaded = make_items();
  ASSERT_EQ(reloaded.call(L"LoadSettingsNew", folder_.file(L"saved.itm")), true);
  EXPECT_EQ(saved(reloaded), first);

  // But for head and decimal separator the bytes are those of the example.
  const auto body = [](const std::string& bytes) { return bytes.substr(bytes.find("[ITEM1]")); };
  std::string expected = body(bytes_of(example_file(L"fluxor.itm")));
  std::string given = body(first);
  if (user_decimal() == L",") {
    for (std::size_t at = 0; (at = given.find("Settings=", at)) != std::string::npos; ++at) {
      const std::size_t end = given.find('\r', at);
      std::replace(given.begin() + static_cast<std::ptrdiff_t>(at),
                   given.begin() + static_cast<std::ptrdiff_t>(end), ',', '.');
    }
  }
  EXPECT_EQ(given, expected);
}

TEST_F(ItemFileSave, KeepsKeysOrderAndTexts) {
  for (const wchar_t* key : {L"b", L"", L"A", L"H\u00F6he", L"10"}) add_item(items_, key, 3, 2);
  saved(items_);
  const Object reloaded = make_items();
  ASSERT_EQ(reloaded.call(L"LoadSettingsNew", folder_.file(L"saved.itm")), true);
  EXPECT_EQ(texts_of(reloaded), texts_of(items_));
  for (int position = 1; position <= 5; ++position) {
    const Object before = items_.get_object(L"Item", position).get_object(L"Variables");
    const Object after = reloaded.get_object(L"Item", position).get_object(L"Variables");
    EXPECT_EQ(texts_of(after), texts_of(before));
    EXPECT_EQ(texts_of(after, L"Caption"), texts_of(before, L"Caption"));
  }
}

TEST_F(ItemFileSave, KeepsSmartWaitsInAnyLocale) {
  const float waits[] = {0.0f, 0.1f, -2.5f, 1e-6f, 3.402823e38f, 123456.7f};
  for (const float wait : waits) {
    items_.call(L"Add", L"", 1, true, 1, false, false, wait, 4);
  }
  saved(items_);
  const Object reloaded = make_items();
  ASSERT_EQ(reloaded.call(L"LoadSettingsNew", folder_.file(L"saved.itm")), true);
  int position = 0;
  for (const float wait : waits) {
    EXPECT_FLOAT_EQ(
        static_cast<float>(reloaded.get_object(L"Item", ++position).get(L"SmartWait").real()),
        wait);
  }
}

TEST_F(ItemFileSave, KeepsSmartWaitsWithAnUnusualDecimalSeparator) {
  for (const wchar_t* separator : {L"'", L"*", L","}) {
    const UserDecimal set(separator);
    const Object items = make_items();
    items.call(L"Add", L"", 1, true, 1, false, false, 2.5f, 4);
    const std::string file = saved(items);
    EXPECT_NE(file.find(in_code_page(in_user_locale(L"|2.5|"))), std::string::npos) << file;
    const Object reloaded = make_items();
    ASSERT_EQ(reloaded.call(L"LoadSettingsNew", folder_.file(L"saved.itm")), true);
    EXPECT_EQ(reloaded.get_object(L"Item", 1).get(L"SmartWait"), 2.5f);
  }
}

// A damaged file gives whatever items it gives; what is saved of them comes back the same.
TEST_F(ItemFileSave, OfDamagedFilesComesBackAsSaved) {
  const DialogAnswerer answerer;
  const std::string whole = bytes_of(example_file(L"fluxor.itm"));
  std::mt19937 random(4711);
  for (int round = 0; round < 25; ++round) {
    std::string bytes = whole;
    for (int i = 0; i < 8; ++i) bytes[random() % bytes.size()] = static_cast<char>(random());
    if (round % 5 == 0) bytes.resize(random() % bytes.size());
    const Object damaged = make_items();
    damaged.call(L"LoadSettingsNew", folder_.write(L"damaged.itm", bytes));
    const std::string first = saved(damaged);
    const Object reloaded = make_items();
    const bool any = damaged.get(L"AllItemCount").number() > 0;
    ASSERT_EQ(reloaded.call(L"LoadSettingsNew", folder_.file(L"saved.itm")), any) << round;
    if (any) {
      ASSERT_EQ(saved(reloaded), first) << round;
    }
  }
}

TEST_F(ItemFileSave, OfRandomBytesComesBackAsSaved) {
  std::mt19937 random(815);
  for (int round = 0; round < 50; ++round) {
    std::string bytes = "[Items]\nCount=3\n[ITEM1]\nCount=1\nSettings=";
    for (int i = 0; i < 200; ++i) bytes.push_back("|\n\r\0=[]19,. A\xFF\x80"[random() % 16]);
    const Object damaged = make_items();
    ASSERT_EQ(damaged.call(L"LoadSettingsNew", folder_.write(L"random.itm", bytes)), true);
    const std::string first = saved(damaged);
    const Object reloaded = make_items();
    ASSERT_EQ(reloaded.call(L"LoadSettingsNew", folder_.file(L"saved.itm")), true) << round;
    ASSERT_EQ(saved(reloaded), first) << round;
  }
}

// --- Saves that are refused

TEST_F(ItemFileSave, OverALockedFileLeavesTheOldFileWhole) {
  add_item(items_, L"1", 1);
  const std::wstring file = folder_.write(L"a.itm", "old content");
  {
    const LockedFile lock(file);
    EXPECT_FALSE(save(file));
    EXPECT_EQ(bytes_of(file), "old content");
  }
  EXPECT_EQ(folder_.names(), (Texts{L"a.itm"}));
  EXPECT_EQ(items_.get(L"Changed"), true);
  EXPECT_TRUE(save(file));
}

TEST_F(ItemFileSave, OverAReadOnlyFileLeavesTheOldFileWhole) {
  add_item(items_, L"1", 1);
  const std::wstring file = folder_.write(L"a.itm", "old content");
  SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_FALSE(save(file));
  EXPECT_EQ(bytes_of(file), "old content");
  SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(folder_.names(), (Texts{L"a.itm"}));
  EXPECT_EQ(items_.get(L"Changed"), true);
}

TEST_F(ItemFileSave, WithoutRoomForASecondFileLeavesTheOldFileWhole) {
  // A name so long that no longer one can stand beside it.
  const std::wstring name(255, L'a');
  const std::wstring file = L"\\\\?\\" + folder_.write(L"short", "") + L"";
  const std::wstring longest = file.substr(0, file.size() - 5) + name;
  ASSERT_TRUE(MoveFileW(file.c_str(), longest.c_str()));
  EXPECT_FALSE(save(longest));
  EXPECT_EQ(folder_.names(), (Texts{name}));
  EXPECT_EQ(bytes_of(longest), "");
}

TEST_F(ItemFileSave, ToAPlaceThatIsNoneIsFalseAndWritesNothing) {
  add_item(items_, L"1", 1);
  for (const std::wstring& file : {L""s, folder_.file(L""), folder_.file(L"missing\\a.itm"),
                                   folder_.file(L"a\0.itm"s), L"no:such|name"s, L"\\\\?\\"s}) {
    EXPECT_FALSE(save(file)) << printable(file);
  }
  EXPECT_TRUE(folder_.names().empty());
  EXPECT_EQ(items_.get(L"Changed"), true);
}

TEST_F(ItemFileSave, UnderANameWithANulLeavesTheFileBeforeItAlone) {
  const std::wstring file = folder_.write(L"a.itm", "old content");
  EXPECT_FALSE(save(file + L"\0x"s));
  EXPECT_EQ(bytes_of(file), "old content");
  EXPECT_EQ(folder_.names(), (Texts{L"a.itm"}));
}

TEST_F(ItemFileSave, OverAFolderIsFalse) {
  CreateDirectoryW(folder_.file(L"a.itm").c_str(), nullptr);
  EXPECT_FALSE(save(folder_.file(L"a.itm")));
  EXPECT_EQ(folder_.names(), (Texts{L"a.itm"}));
}

}  // namespace
}  // namespace pv::test
