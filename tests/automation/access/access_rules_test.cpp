// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Access control: levels, refusals and their messages.

#include <gtest/gtest.h>

#include "tests/automation/txm/txm_support.h"

namespace pv::test {
namespace {

constexpr int kPrompt = 1010, kOk = 1000, kSecondButton = 1001;
constexpr int kExclamation = 1022;  // the visible one of the icons

struct Access : testing::Test, Transmitter {
  Access() {
    device_answers(true);
    txm.put(L"Historian", 0);
    utility.set(L"Application", application.get());
  }
  std::wstring text(int id) const { return utility.call(L"pvString", id).text(); }
  std::wstring refusal(int id, const std::wstring& label, const std::wstring& level) const {
    return text(id) + L"\r\n" + label + L"\r\n" + text(1102) + level;
  }
};

TEST_F(Access, LevelsOfEveryWordOfOneByte) {
  const Object item = add_item(7);
  for (int word = 0; word < 256; ++word) {
    item.put(L"Access", word);
    ASSERT_EQ(txm.call(L"GetReadPWLevel", item), word / 8 % 8);
    ASSERT_EQ(txm.call(L"GetWritePWLevel", item), word % 8);
    ASSERT_EQ(txm.call(L"IsUpdatePW", item), word / 64 % 2 == 1);
    ASSERT_EQ(txm.call(L"IsPasswordMask", item), word / 128 % 2 == 1);
  }
}

TEST_F(Access, BitsAboveTheFlagsChangeNoDecision) {
  const Object item = add_item(7, 0x7F00);
  EXPECT_EQ(txm.call(L"IsReadable", item), true);
  EXPECT_EQ(txm.call(L"IsWriteable", item), true);
  EXPECT_EQ(txm.call(L"IsUpdatePW", item), false);
  EXPECT_EQ(txm.call(L"IsPasswordMask", item), false);
  item.put(L"Access", -32768);
  EXPECT_EQ(txm.call(L"IsReadable", item), true);
}

TEST_F(Access, ALevelOpensEverythingUpToIt) {
  const Object item = add_item(7, 8 * 2 + 3);
  const bool readable[] = {false, false, true, true, true};
  const bool writeable[] = {false, false, false, true, true};
  for (int level = 0; level <= 4; ++level) {
    txm.put(L"Password", level);
    EXPECT_EQ(txm.call(L"IsReadable", item), readable[level]) << level;
    EXPECT_EQ(txm.call(L"IsWriteable", item), writeable[level]) << level;
  }
}

TEST_F(Access, LevelsOfFiveToSevenAreNeverOpen) {
  for (int level = 5; level <= 7; ++level) {
    const Object item = add_item(static_cast<short>(level), static_cast<short>(level * 9));
    txm.put(L"Password", 4);
    EXPECT_EQ(txm.call(L"IsReadable", item), false);
    EXPECT_EQ(txm.call(L"IsWriteable", item), false);
  }
}

TEST_F(Access, ANegativeLevelClosesEverything) {
  txm.put(L"Password", -1);
  EXPECT_EQ(txm.call(L"IsReadable", add_item(7)), false);
  EXPECT_EQ(txm.call(L"IsWriteable", add_item(8)), false);
}

TEST_F(Access, WithoutAnItemTheLevelIsSeven) {
  EXPECT_EQ(txm.call(L"GetReadPWLevel", Value::nothing()), 7);
  EXPECT_EQ(txm.call(L"GetWritePWLevel", Value::nothing()), 7);
  EXPECT_EQ(txm.call(L"IsReadable", Value::nothing()), false);
  EXPECT_EQ(txm.call(L"IsWriteable", Value::nothing()), false);
  txm.put(L"Password", 7);
  EXPECT_EQ(txm.call(L"IsReadable", Value::nothing()), true);
  EXPECT_EQ(txm.try_call(L"IsPasswordMask", Value::nothing()).number(), 91);
  EXPECT_EQ(txm.try_call(L"IsUpdatePW", Value::nothing()).number(), 91);
}

TEST_F(Access, TheDeviceIsAskedForItsLevelWithAReference) {
  txm.put(L"Address", 12);
  server.on(L"ReadPassword", [](const Arguments& a) {
    a.set(1, 4);
    return Value(true);
  });
  EXPECT_EQ(txm.call(L"GetPassword"), 4);
  EXPECT_EQ(txm.get(L"Password"), 0);  // storing it is up to the caller
  EXPECT_EQ(calls(), Lines{"call server.ReadPassword(I2 12, I2& 0, I2 1, BSTR \"4800,n,8,1\")"});
}

TEST_F(Access, OnlyTrueIsAnAnswer) {
  for (const Value& answer :
       {Value(false), Value(1), Value(0), Value(), Value(-1.25), Value(L"no"), Value(L""),
        Value::null(), Value::nothing(), Value(txm), Value::missing()}) {
    server.on(L"ReadPassword", [answer](const Arguments& a) {
      a.set(1, 4);
      return answer;
    });
    EXPECT_EQ(txm.call(L"GetPassword"), 0);
  }
  server.on(L"ReadPassword", [](const Arguments& a) {
    a.set(1, 4);
    return Value(-1);
  });
  EXPECT_EQ(txm.call(L"GetPassword"), 4);
}

TEST_F(Access, ErrorsOfAskingTheDevicePass) {
  server.fail(L"ReadPassword");
  EXPECT_EQ(txm.try_call(L"GetPassword").number(), 1234);
  txm.set(L"Server", Value::nothing());
  EXPECT_EQ(txm.try_call(L"GetPassword").number(), 91);
  txm.set(L"Server", add_item(7));
  EXPECT_EQ(txm.try_call(L"GetPassword").number(), 438);
}

// --- Refusals ---------------------------------------------------------------------------------

TEST_F(Access, ARefusedReadShowsItsMessageAfterTheRead) {
  const Object item = add_item(7, 8 * 2);
  log.name(item, "item");
  bool was_open = false;
  std::unique_ptr<DialogResponder> dialogs;
  server.on(L"ReadTxm", [&](const Arguments&) {
    was_open = dialogs->shown().empty();
    return Value(true);
  });
  dialogs = std::make_unique<DialogResponder>(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item), false, true), true);
  EXPECT_TRUE(was_open);
  ASSERT_EQ(dialogs->shown().size(), 1u);
  EXPECT_EQ(dialogs->shown()[0].caption, L"Kalvos 7");
  EXPECT_EQ(dialogs->shown()[0].texts.at(kPrompt), refusal(1103, L"7, Caption 1", L"2"));
  EXPECT_EQ(dialogs->shown()[0].texts.at(kOk), text(200));
  EXPECT_EQ(dialogs->shown()[0].texts.count(kSecondButton), 0u);
  EXPECT_EQ(dialogs->shown()[0].texts.count(kExclamation), 1u);
  EXPECT_EQ(item.get(L"Dirty", 1), true);
  EXPECT_EQ(calls(), joined({exchange_lines("ReadTxm"), {"get application.Title"}}));
}

TEST_F(Access, ARefusedReadStillAnswersWhatTheServerAnswered) {
  server.answer(L"ReadTxm", false);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(add_item(7, 8)), false, true), false);
  EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(Access, WithoutAccessControlNothingIsRefused) {
  const Object item = add_item(7, 63);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item)), true);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(item)), true);
  EXPECT_EQ(item.get(L"Dirty", 1), false);
  EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(Access, AnOpenLevelRefusesNothing) {
  const Object item = add_item(7, 8 * 2 + 3);
  txm.put(L"Password", 3);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"ReadTxm", ItemVariable(item), false, true), true);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(item), true), true);
  EXPECT_EQ(item.get(L"Dirty", 1), false);
  EXPECT_TRUE(dialogs.shown().empty());
}

TEST_F(Access, TheRefusalUsesTheItemThatCameBack) {
  const Object other = add_item(8, 8 * 4);
  server.on(L"ReadTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(true);
  });
  const Object first = add_item(7);
  const ItemVariable item(first);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"ReadTxm", item, false, true), true);
  ASSERT_EQ(dialogs.shown().size(), 1u);
  EXPECT_EQ(dialogs.shown()[0].texts.at(kPrompt), refusal(1103, L"8, Caption 1", L"4"));
  EXPECT_EQ(other.get(L"Dirty", 1), true);
  EXPECT_EQ(first.get(L"Dirty", 1), false);
}

TEST_F(Access, ARefusedWriteReadsTheItemAgain) {
  const Object item = add_item(7, 64 + 7, true);
  log.name(item, "item");
  txm.put(L"Password", 4);
  txm.put(L"Historian", 2);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(item), true), false);
  ASSERT_EQ(dialogs.shown().size(), 1u);
  EXPECT_EQ(dialogs.shown()[0].caption, L"Kalvos 7");
  EXPECT_EQ(dialogs.shown()[0].texts.at(kPrompt), refusal(1101, L"7, Caption 1", L"7"));
  EXPECT_EQ(txm.get(L"Password"), 4);
  EXPECT_EQ(item.get(L"Dirty", 1), false);
  EXPECT_EQ(calls(), joined({{"get application.Title"}, exchange_lines("ReadTxm")}));
}

TEST_F(Access, ARefusedWriteHandsTheReadItemBack) {
  const Object other = add_item(8);
  server.on(L"ReadTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(true);
  });
  const ItemVariable item(add_item(7, 1));
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", item, true), false);
  EXPECT_EQ(item.object(), other);
}

TEST_F(Access, ARefusalSpeaksTheActiveLanguage) {
  const Object languages = utility.get_object(L"Languages");
  const Value before = languages.get(L"ActiveLanguageID");
  const std::wstring english = text(1101);
  languages.put(L"ActiveLanguageID", 5);
  EXPECT_NE(text(1101), english);
  {
    const DialogResponder dialogs(DialogResponder::kFirst);
    EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 1)), true), false);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown()[0].texts.at(kPrompt), refusal(1101, L"7, Caption 1", L"1"));
  }
  languages.put(L"ActiveLanguageID", before);
}

TEST_F(Access, AMissingApplicationSwallowsNoRefusal) {
  utility.set(L"Application", Value::nothing());
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 1)), true), false);
  ASSERT_EQ(dialogs.shown().size(), 1u);
  EXPECT_FALSE(dialogs.shown()[0].caption.empty());
}

TEST_F(Access, AnApplicationWithoutTitleSwallowsNoRefusal) {
  application.fail(L"Title");
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 1)), true), false);
  EXPECT_EQ(dialogs.shown().size(), 1u);
}

}  // namespace
}  // namespace pv::test
