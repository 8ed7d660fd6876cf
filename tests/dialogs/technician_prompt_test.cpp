// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The prompt of the audit log, as a write shows it.

#include <gtest/gtest.h>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

constexpr int kOk = 1000, kCancel = 1001, kPrompt = 1010, kItem = 1011, kScrolledItem = 1012;
constexpr int kNameLabel = 1020, kName = 1021, kCommentLabel = 1022, kComment = 1023;

class TechnicianPrompt : public testing::Test {
 protected:
  TechnicianPrompt() {
    utility_.set_language(1);
    device_.txm.put(L"Historian", 2);
    device_.txm.put(L"HistorianTechName", L"before");
    device_.txm.put(L"HistorianComment", L"old comment");
  }
  ~TechnicianPrompt() override { utility_.set_language(1); }

  /// Writes the item, which asks for the technician.
  void write(const Script& script) {
    Value item = item_;
    drive(
        L"frmTechName", [&] { device_.txm.call(L"WriteTxm", test::by_ref(item), false); }, script);
  }
  void expect_note(const wchar_t* name, const wchar_t* comment) {
    EXPECT_EQ(device_.txm.get(L"HistorianTechName"), name);
    EXPECT_EQ(device_.txm.get(L"HistorianComment"), comment);
  }

  Utility utility_;
  Device device_;
  Object item_ = device_.add_item(33, 0, L"Damping & more");
};

TEST_F(TechnicianPrompt, AsksForNameAndComment) {
  std::vector<std::wstring> texts;
  for (const long id : {301, 302, 303, 304, 200, 201}) texts.push_back(utility_.text(id));
  write([&](const Dialog& dialog) {
    EXPECT_EQ(dialog.title(), texts[0]);
    EXPECT_EQ(dialog.text(kPrompt), texts[1]);
    EXPECT_EQ(dialog.caption(kNameLabel), texts[2]);
    EXPECT_EQ(dialog.caption(kCommentLabel), texts[3]);
    EXPECT_EQ(dialog.caption(kOk), texts[4]);
    EXPECT_EQ(dialog.caption(kCancel), texts[5]);
    EXPECT_TRUE(dialog.text(kItem).ends_with(L" : 33, Damping & more"));
    EXPECT_EQ(dialog.text(kName), L"");
    EXPECT_EQ(dialog.text(kComment), L"");
    EXPECT_EQ(dialog.focused(), kName);
  });
}

TEST_F(TechnicianPrompt, OkKeepsBothTexts) {
  write([](const Dialog& dialog) {
    dialog.type(kName, L"A. Smith");
    dialog.type(kComment, L"adjusted, twice");
    dialog.click(kOk);
    EXPECT_TRUE(dialog.wait_closed());
  });
  expect_note(L"A. Smith", L"adjusted, twice");
}

TEST_F(TechnicianPrompt, NoFieldIsMandatory) {
  write([](const Dialog& dialog) { dialog.press_key(VK_RETURN); });
  expect_note(L"", L"");
}

TEST_F(TechnicianPrompt, EveryWayOfCancellingKeepsTheNotesBefore) {
  const Script ways[] = {
      [](const Dialog& dialog) { dialog.click(kCancel); },
      [](const Dialog& dialog) { dialog.close(); },
      [](const Dialog& dialog) { dialog.press_close_box(); },
      [](const Dialog& dialog) { dialog.press_key(VK_ESCAPE); },
  };
  for (const Script& way : ways) {
    write([&](const Dialog& dialog) {
      dialog.type(kName, L"nobody");
      way(dialog);
      EXPECT_TRUE(dialog.wait_closed());
    });
    expect_note(L"before", L"old comment");
  }
}

TEST_F(TechnicianPrompt, EnteringAFieldSelectsItsWholeText) {
  write([](const Dialog& dialog) {
    dialog.type(kComment, L"comment");
    dialog.press_key(VK_TAB);
    EXPECT_TRUE(wait_until([&] { return dialog.focused() == kComment; }));
    EXPECT_EQ(dialog.selection(kComment), (std::pair{0, 7}));
    dialog.type(kName, L"name");
    dialog.press_alt(dialog.access_key(kNameLabel));
    EXPECT_TRUE(wait_until([&] { return dialog.focused() == kName; }));
    EXPECT_EQ(dialog.selection(kName), (std::pair{0, 4}));
  });
}

TEST_F(TechnicianPrompt, NothingOfTheLastShowIsLeft) {
  write([](const Dialog& dialog) {
    dialog.type(kName, L"somebody");
    dialog.type(kComment, L"something");
    dialog.click(kOk);
  });
  write([](const Dialog& dialog) {
    EXPECT_EQ(dialog.text(kName), L"");
    EXPECT_EQ(dialog.text(kComment), L"");
  });
}

TEST_F(TechnicianPrompt, RelabellingKeepsWhatWasTyped) {
  const HostWindow host;
  utility_.set_language(5);
  const std::wstring title = utility_.text(301);
  utility_.set_language(1);
  write([&](const Dialog& dialog) {
    dialog.type(kName, L"typed");
    host.send([&] { utility_.set_language(5); });
    EXPECT_EQ(dialog.title(), title);
    EXPECT_EQ(dialog.text(kName), L"typed");
    EXPECT_EQ(dialog.layout_faults(), "");
  });
}

TEST_F(TechnicianPrompt, ALongItemLabelBreaksAndOneThatIsTooLongForTheScreenScrolls) {
  for (const int dpi : {96, 192}) {
    const Resolution resolution(dpi);
    item_ = device_.add_item(static_cast<short>(dpi), 0, std::wstring(150, L'm') + L" and words");
    write([](const Dialog& dialog) {
      EXPECT_EQ(dialog.layout_faults(), "");
      EXPECT_TRUE(dialog.shows(kItem));
    });
    item_ = device_.add_item(static_cast<short>(dpi + 1), 0, std::wstring(9000, L'm'));
    write([](const Dialog& dialog) {
      EXPECT_EQ(dialog.layout_faults(), "");
      EXPECT_FALSE(dialog.shows(kItem));
      EXPECT_TRUE(dialog.shows(kScrolledItem));
      EXPECT_EQ(dialog.text(kScrolledItem), dialog.text(kItem));
      EXPECT_EQ(dialog.ask(kScrolledItem, EM_GETFIRSTVISIBLELINE), 0);
      EXPECT_EQ(dialog.focused(), kName);
    });
  }
}

}  // namespace
}  // namespace pv::dialogs_test
