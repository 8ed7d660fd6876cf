// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What a write does for the audit file, and the prompt for the technician.

#include <optional>

#include "tests/automation/txm/audit.h"

namespace pv::test {
namespace {

constexpr int kPrompt = 1010, kItem = 1011, kName = 1021, kComment = 1023;

// A timer of the host. It goes off once, where messages are handled: while a dialog is open.
class HostTimer {
 public:
  explicit HostTimer(std::function<void()> step) {
    step_ = std::move(step);
    timer_ = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, &go_off);
  }
  HostTimer(const HostTimer&) = delete;
  HostTimer& operator=(const HostTimer&) = delete;
  ~HostTimer() { stop(); }

 private:
  static void stop() {
    if (timer_) KillTimer(nullptr, std::exchange(timer_, 0));
  }
  static void CALLBACK go_off(HWND, UINT, UINT_PTR, DWORD) {
    stop();
    step_();
  }
  static inline UINT_PTR timer_ = 0;
  static inline std::function<void()> step_;
};

struct Prompt : Audit {
  // Writes an item, and `second` while the prompt for the first one is open. What the second write
  // answered.
  Value write_meanwhile(const Object& second) {
    txm.put(L"Historian", kEnabled);
    std::optional<DialogResponder> dialogs;
    Value answer;
    const HostTimer timer([&] {
      dialogs.emplace(DialogResponder::kFirst,
                      std::map<int, std::wstring>{{kName, L"Ann"}, {kComment, L"why"}});
      calls();
      answer = txm.call(L"WriteTxm", ItemVariable(second));
      calls_meanwhile = calls();
    });
    EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), true);
    EXPECT_TRUE(dialogs && dialogs->shown().size() == 1);
    return answer;
  }
  Lines calls_meanwhile;
};

// --- Modes ------------------------------------------------------------------------------------

TEST_F(Audit, DisabledRecordsNothing) {
  txm.put(L"Historian", kDisabled);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), true);
  EXPECT_EQ(history.bytes(), "");
}

TEST_F(Audit, SilentRecordsTheItemsThatAskForIt) {
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, false))), true);
  EXPECT_EQ(history.bytes(), "");
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 0, true))), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("8", "7"), ""}));
}

TEST_F(Audit, AWriteThatFailedIsRecordedToo) {
  server.answer(L"WriteTxm", false);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 0, true))), false);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("8", "7"), ""}));
}

TEST_F(Audit, TheItemThatCameBackIsRecorded) {
  const Object other = add_item(9, 0, false, 99);
  server.on(L"WriteTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(true);
  });
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 0, true))), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("9", "99"), ""}));
}

TEST_F(Audit, ARefusedWriteIsNotRecorded) {
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 1, true)), true), false);
  EXPECT_EQ(history.bytes(), "");
}

// --- The prompt -------------------------------------------------------------------------------

TEST_F(Prompt, OpensOnlyForItemsThatAreRecorded) {
  txm.put(L"Historian", kEnabled);
  const DialogResponder dialogs(DialogResponder::kSecond);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, false))), true);
  EXPECT_TRUE(dialogs.shown().empty());
  EXPECT_EQ(history.bytes(), "");
}

TEST_F(Prompt, OkWritesAndRecordsWithTheAnswers) {
  txm.put(L"Historian", kEnabled);
  const Object item = add_item(7, 0, true);
  log.name(item, "item");
  {
    const DialogResponder dialogs(DialogResponder::kFirst,
                                  {{kName, L"Ann"}, {kComment, L"because"}});
    EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(item)), true);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const auto& shown = dialogs.shown()[0];
    EXPECT_EQ(shown.caption, L"Kalvos Historian");
    EXPECT_EQ(shown.texts.at(kPrompt), utility.call(L"pvString", 302).text());
    EXPECT_EQ(shown.texts.at(kItem), L"TXM#1:Untitled TXM (Fluxor) : 7, Caption 1");
    EXPECT_EQ(shown.texts.at(kName), L"");
    EXPECT_EQ(shown.texts.at(kComment), L"");
  }
  EXPECT_EQ(txm.get(L"HistorianTechName"), L"Ann");
  EXPECT_EQ(txm.get(L"HistorianComment"), L"because");
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7", "because"), ""}));
  const Lines all = calls();
  EXPECT_EQ(Lines(all.begin(), all.begin() + 4),
            joined({{"get server.TypeName"}, exchange_lines("WriteTxm")}));
}

TEST_F(Prompt, NoFieldIsMandatory) {
  txm.put(L"Historian", kEnabled);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), true);
  EXPECT_EQ(txm.get(L"HistorianTechName"), L"");
  EXPECT_EQ(txm.get(L"HistorianComment"), L"");
}

TEST_F(Prompt, OpensWithEmptyFieldsEachTime) {
  txm.put(L"Historian", kEnabled);
  const Object item = add_item(7, 0, true);
  const DialogResponder dialogs(DialogResponder::kFirst, {{kName, L"Ann"}});
  txm.call(L"WriteTxm", ItemVariable(item));
  txm.call(L"WriteTxm", ItemVariable(item));
  ASSERT_EQ(dialogs.shown().size(), 2u);
  EXPECT_EQ(dialogs.shown()[1].texts.at(kName), L"");
}

TEST_F(Prompt, CancelAndTheCloseBoxReadTheItemAgain) {
  txm.put(L"Historian", kEnabled);
  server.answer(L"ReadPassword", false);
  const Object item = add_item(7, 64, true);
  log.name(item, "item");
  for (int button : {+DialogResponder::kSecond, +DialogResponder::kCloseBox}) {
    txm.put(L"Password", 3);
    const DialogResponder dialogs(button, {{kName, L"Bob"}, {kComment, L"x"}});
    EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(item)), true);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(calls(), joined({{"get server.TypeName"},
                               exchange_lines("ReadTxm"),
                               {"call server.ReadPassword(I2 1, I2& 0, I2 1, BSTR "
                                "\"4800,n,8,1\")"}}));
    EXPECT_EQ(txm.get(L"HistorianTechName"), L"Ann");
    EXPECT_EQ(txm.get(L"Password"), 0);
    EXPECT_EQ(history.bytes(), "");
  }
}

TEST_F(Prompt, AWriteThatWouldAskWhileItIsOpenIsRefused) {
  const Object second = add_item(8, 64, true);
  EXPECT_EQ(write_meanwhile(second), false);
  EXPECT_EQ(calls_meanwhile, Lines());
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), ""}));
}

TEST_F(Prompt, AWriteThatAsksNobodyIsDoneWhileItIsOpen) {
  const Object second = add_item(8);
  log.name(second, "item");
  EXPECT_EQ(write_meanwhile(second), true);
  EXPECT_EQ(calls_meanwhile, exchange_lines("WriteTxm"));
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), ""}));
}

TEST_F(Prompt, ACancelledWriteAnswersWhatTheReadAnswered) {
  txm.put(L"Historian", kEnabled);
  server.answer(L"ReadTxm", false);
  const DialogResponder dialogs(DialogResponder::kSecond);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), false);
}

}  // namespace
}  // namespace pv::test
