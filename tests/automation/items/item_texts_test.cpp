// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The texts of the items as one settings file per language.

#include <gtest/gtest.h>

#include "resources/version.h"
#include "tests/automation/items/item_support.h"
#include "tests/automation/utility/language_support.h"

namespace pv::test {
namespace {

constexpr std::size_t kLongestValue = 32'766;  // that the platform's settings files take

/// Settings as the platform reads them.
class TextFile {
 public:
  explicit TextFile(std::wstring_view name = L"texts.001", std::string_view bytes = {})
      : file_(name) {
    if (!bytes.empty()) file_.fill(bytes);
  }

  /// The name that the member gets: the file of English has the extension 001.
  std::wstring asked_for() const { return file_.folder().file(L"texts.txt"); }
  const OwnFile& file() const { return file_; }

  std::string value(const char* section, const char* key) const {
    std::string text(40'000, '\0');
    text.resize(GetPrivateProfileStringA(section, key, "-", text.data(),
                                         static_cast<DWORD>(text.size()),
                                         in_code_page(file_.path()).c_str()));
    return text;
  }
  bool has(const char* section) const {
    char keys[64];
    return GetPrivateProfileSectionA(section, keys, sizeof keys,
                                     in_code_page(file_.path()).c_str()) != 0;
  }

 private:
  OwnFile file_;
};

class ItemTexts : public testing::Test {
 protected:
  ItemTexts() {
    const Object flow = add_item(items_, L"flow", 7, 2);
    flow.put(L"Caption", 1, L"Flow");
    flow.put(L"Description", 1, L"Volume per time");
    flow.put(L"Caption", 2, L"Sum");
    add_item(items_, L"9", 9, 1);
    add_item(items_, L"empty", 11);
  }

  template <class... A>
  Value save(const TextFile& file, const A&... arguments) const {
    return items_.call(L"SaveTextSettings", file.asked_for(), arguments...);
  }
  Object item(const wchar_t* key) const { return items_.get_object(L"Item", key); }

  const Object items_ = Object::create(L"pvItems32.CItems");
};

TEST_F(ItemTexts, AreCaptionAndDescriptionOfEveryVariable) {
  const TextFile file;
  EXPECT_EQ(save(file), true);
  EXPECT_EQ(file.value("ITEM1", "VAR1"), "Flow|Volume per time");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "Sum|");
  EXPECT_EQ(file.value("ITEM1", "VAR3"), "-");
  EXPECT_EQ(file.value("ITEM2", "VAR1"), "Caption 1|");
  EXPECT_FALSE(file.has("ITEM3"));
}

TEST_F(ItemTexts, BeginWithCountVersionAndDate) {
  const TextFile file;
  EXPECT_EQ(save(file), true);
  EXPECT_EQ(file.value("Items", "Count"), "3");
  EXPECT_EQ(file.value("Items", "Version"), "1.00.00");
  EXPECT_EQ(file.value("Items", "Date"), PV_COMMENTS);
}

TEST_F(ItemTexts, OfNoItemsAreTheHeadAlone) {
  const TextFile file;
  const Object none = Object::create(L"pvItems32.CItems");
  EXPECT_EQ(none.call(L"SaveTextSettings", file.asked_for()), true);
  EXPECT_EQ(file.value("Items", "Count"), "0");
  EXPECT_FALSE(file.has("ITEM1"));
}

TEST_F(ItemTexts, GoToTheFileOfTheActiveLanguage) {
  const struct {
    long language;
    const wchar_t* name;
  } rows[] = {{1, L"texts.001"},  {2, L"texts.002"},   {6, L"texts.006"},
              {12, L"texts.012"}, {0, L"texts.000"},   {123, L"texts.123"},
              {-7, L"texts.0-7"}, {-12, L"texts.-12"}, {4567, L"texts.567"}};
  for (const auto& row : rows) {
    const TestFolder folder;
    const ActiveLanguage active(row.language);
    EXPECT_EQ(items_.call(L"SaveTextSettings", folder.file(L"texts.txt")), true);
    EXPECT_EQ(folder.names(), Texts{row.name}) << row.language;
  }
}

TEST_F(ItemTexts, ReplaceTheExtensionAsFileNamesHaveIt) {
  const struct {
    const wchar_t *asked_for, *name;
  } rows[] = {{L"texts", L"texts.001"}, {L"texts.v2.txt", L"texts.001"}, {L"a b.x", L"a b.001"}};
  for (const auto& row : rows) {
    const TestFolder folder;
    EXPECT_EQ(items_.call(L"SaveTextSettings", folder.file(row.asked_for)), true);
    EXPECT_EQ(folder.names(), Texts{row.name});
  }
}

TEST_F(ItemTexts, ReplaceTheItemsThatTheFileRecords) {
  const TextFile file(L"texts.001",
                      "[Other]\r\nk=kept\r\n"
                      "[Items]\r\nCount=4\r\nmore=kept\r\n"
                      "[ITEM1]\r\nVAR1=old\r\nVAR9=old\r\n"
                      "[ITEM4]\r\nVAR1=old\r\n"
                      "[ITEM5]\r\nVAR1=beyond\r\n");
  EXPECT_EQ(save(file), true);
  EXPECT_EQ(file.value("Other", "k"), "kept");
  EXPECT_EQ(file.value("Items", "more"), "kept");
  EXPECT_EQ(file.value("Items", "Count"), "3");
  EXPECT_EQ(file.value("ITEM1", "VAR1"), "Flow|Volume per time");
  EXPECT_EQ(file.value("ITEM1", "VAR9"), "-");
  EXPECT_FALSE(file.has("ITEM4"));
  EXPECT_EQ(file.value("ITEM5", "VAR1"), "beyond");
}

TEST_F(ItemTexts, TakeACountThatIsNoNumberForNone) {
  for (const char* count : {"Count=many", "Count=-3", "Count=40000", "Other=1"}) {
    const TextFile file(L"texts.001", std::string("[Items]\r\n") + count +
                                          "\r\n[ITEM1]\r\nVAR9=old\r\n[ITEM4]\r\nVAR1=old\r\n");
    EXPECT_EQ(save(file), true);
    EXPECT_EQ(file.value("ITEM1", "VAR9"), "old") << count;
    EXPECT_TRUE(file.has("ITEM4")) << count;
    EXPECT_EQ(file.value("Items", "Count"), "3");
  }
}

TEST_F(ItemTexts, AreReplacedWhenTheyAreSavedAgain) {
  const TextFile file;
  EXPECT_EQ(save(file), true);
  item(L"flow").get_object(L"Variables").call(L"Remove", 2);
  items_.call(L"Remove", L"9");
  EXPECT_EQ(save(file), true);
  EXPECT_EQ(file.value("Items", "Count"), "2");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "-");
  EXPECT_FALSE(file.has("ITEM2"));
}

TEST_F(ItemTexts, ComeInCollectionOrderWhateverTheVersion) {
  const Object version = items_.get_object(L"Versions").call_object(L"Add", L"V", 1);
  version.get_object(L"VerItems").call(L"Add", L"1", L"9");
  items_.put(L"Version", L"V");
  ASSERT_EQ(items_.get(L"Count"), 1);
  const TextFile file;
  EXPECT_EQ(save(file), true);
  EXPECT_EQ(file.value("Items", "Count"), "3");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "Sum|");
  EXPECT_EQ(file.value("ITEM2", "VAR1"), "Caption 1|");
}

TEST_F(ItemTexts, AreInTheSystemsCodePage) {
  item(L"flow").put(L"Caption", 1, L"Größe é \u8A9E");
  const TextFile file;
  EXPECT_EQ(save(file), true);
  EXPECT_NE(file.file().bytes().find("VAR1=" + in_code_page(L"Größe é ?") + "|Volume per time\r\n"),
            std::string::npos);
}

TEST_F(ItemTexts, OfOneVariableNumberLeaveOutTheOthers) {
  const TextFile file;
  items_.call(L"Remove", L"empty");
  EXPECT_EQ(save(file, Value::nothing(), 1), true);
  EXPECT_EQ(file.value("ITEM1", "VAR1"), "Flow|Volume per time");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "-");
  EXPECT_EQ(file.value("ITEM2", "VAR1"), "Caption 1|");
  EXPECT_EQ(save(file, Value::nothing(), 2), false);  // the second item has none
  EXPECT_EQ(file.value("ITEM1", "VAR1"), "-");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "Sum|");
  EXPECT_FALSE(file.has("ITEM2"));
}

// --- One item

constexpr const char* kEarlier =
    "[Other]\r\nk=kept\r\n"
    "[Items]\r\nCount=9\r\nVersion=old\r\nDate=old\r\n"
    "[ITEM1]\r\nVAR1=old\r\nVAR9=old\r\nmore=kept\r\n"
    "[ITEM2]\r\nVAR1=old\r\n";

TEST_F(ItemTexts, OfOneItemLeaveTheOtherSectionsAsTheyWere) {
  const TextFile file(L"texts.001", kEarlier);
  EXPECT_EQ(save(file, item(L"flow")), true);
  EXPECT_EQ(file.value("ITEM1", "VAR1"), "Flow|Volume per time");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "Sum|");
  EXPECT_EQ(file.value("ITEM1", "VAR9"), "old");
  EXPECT_EQ(file.value("ITEM1", "more"), "kept");
  EXPECT_EQ(file.value("ITEM2", "VAR1"), "old");
  EXPECT_EQ(file.value("Items", "Count"), "9");
  EXPECT_EQ(file.value("Items", "Version"), "old");
  EXPECT_EQ(file.value("Items", "Date"), "old");
  EXPECT_EQ(file.value("Other", "k"), "kept");
}

TEST_F(ItemTexts, OfOneVariableOfOneItemLeaveItsOthersAsTheyWere) {
  const TextFile file(L"texts.001", kEarlier);
  EXPECT_EQ(save(file, item(L"flow"), 2), true);
  EXPECT_EQ(file.value("ITEM1", "VAR1"), "old");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "Sum|");
}

TEST_F(ItemTexts, OfOneItemStandAtThePositionOfItsNumber) {
  const TextFile file;
  EXPECT_EQ(save(file, item(L"9"), -1), true);
  EXPECT_EQ(file.value("ITEM2", "VAR1"), "Caption 1|");
  EXPECT_FALSE(file.has("ITEM1"));
  EXPECT_FALSE(file.has("Items"));
  add_item(items_, L"again", 9, 2);  // the first of that number counts
  EXPECT_EQ(save(file, item(L"again")), true);
  EXPECT_FALSE(file.has("ITEM4"));
}

TEST_F(ItemTexts, OfAnItemThatIsNotThereAreNotWritten) {
  const TextFile file;
  const Object other = Object::create(L"pvItems32.CItem");
  other.put(L"ItemID", 8);
  EXPECT_EQ(save(file, other), false);
  EXPECT_FALSE(file.file().exists());
}

TEST_F(ItemTexts, OfAVariableThatIsNotThereAreNotWritten) {
  const TextFile file(L"texts.001", kEarlier);
  for (const int variable : {3, 0, -2, 32767, -32768}) {
    EXPECT_EQ(save(file, item(L"flow"), variable), false) << variable;
  }
  EXPECT_EQ(save(file, item(L"empty"), 1), false);
  EXPECT_EQ(file.file().bytes(), kEarlier);
}

TEST_F(ItemTexts, OfAnItemWithoutVariablesAreNoneAndThatWorks) {
  const TextFile file(L"texts.001", kEarlier);
  EXPECT_EQ(save(file, item(L"empty")), true);
  EXPECT_EQ(file.file().bytes(), kEarlier);
}

TEST_F(ItemTexts, NeedAnItemOfTheLibrary) {
  const TextFile file;
  const Outcome outcome = items_.try_call(L"SaveTextSettings", file.asked_for(), items_);
  EXPECT_EQ(outcome.result, DISP_E_TYPEMISMATCH);
  EXPECT_FALSE(file.file().exists());
}

// --- What cannot be written

TEST_F(ItemTexts, GiveFalseWhenTheFileIsLocked) {
  const TextFile file(L"texts.001", kEarlier);
  {
    const LockedFile locked(file.file().path());
    EXPECT_EQ(save(file), false);
    EXPECT_EQ(save(file, item(L"flow")), false);
  }
  EXPECT_EQ(file.file().bytes(), kEarlier);
  EXPECT_EQ(save(file), true);
}

TEST_F(ItemTexts, GiveFalseWhenTheFileIsReadOnly) {
  const TextFile file(L"texts.001", kEarlier);
  SetFileAttributesW(file.file().path().c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(save(file), false);
  SetFileAttributesW(file.file().path().c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(file.file().bytes(), kEarlier);
}

TEST_F(ItemTexts, GiveFalseWhenThereIsNoSuchFolder) {
  const TestFolder folder;
  EXPECT_EQ(items_.call(L"SaveTextSettings", folder.file(L"none\\texts.txt")), false);
  EXPECT_EQ(folder.names(), Texts{});
}

TEST_F(ItemTexts, GiveFalseWhenTheNameIsTooLong) {
  const TestFolder folder;
  EXPECT_EQ(items_.call(L"SaveTextSettings", folder.file(std::wstring(300, L'x'))), false);
  EXPECT_EQ(items_.call(L"SaveTextSettings", folder.file(std::wstring(100'000, L'x'))), false);
  EXPECT_EQ(folder.names(), Texts{});
}

TEST_F(ItemTexts, GiveFalseWhenTheNameHasAnEmbeddedNul) {
  using namespace std::string_literals;
  const TestFolder folder;
  EXPECT_EQ(items_.call(L"SaveTextSettings", folder.file(L"texts\0x.txt"s)), false);
  EXPECT_EQ(folder.names(), Texts{});
}

TEST_F(ItemTexts, GiveFalseForATextThatIsTooLongAndWriteTheOthers) {
  const std::wstring longest(kLongestValue - 1, L'x');
  item(L"flow").put(L"Description", 2, longest);
  item(L"flow").put(L"Caption", 2, L"");
  const TextFile file;
  EXPECT_EQ(save(file), true);
  EXPECT_EQ(file.value("ITEM1", "VAR2").size(), kLongestValue);
  item(L"flow").put(L"Description", 2, longest + L"x");
  EXPECT_EQ(save(file), false);
  EXPECT_EQ(file.value("ITEM1", "VAR1"), "Flow|Volume per time");
  EXPECT_EQ(file.value("ITEM1", "VAR2"), "-");
  EXPECT_EQ(file.value("ITEM2", "VAR1"), "Caption 1|");
  EXPECT_EQ(file.value("Items", "Count"), "3");
}

}  // namespace
}  // namespace pv::test
