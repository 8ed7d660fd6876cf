// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The access editor: what it shows of an access word, and the word that it stores.

#include <gtest/gtest.h>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

constexpr int kOk = 1000, kCancel = 1001, kFrame = 1010;
constexpr int kReadLabel = 1020, kReadList = 1021, kWriteLabel = 1022, kWriteList = 1023;
constexpr int kUpdate = 1030, kMask = 1031;

class AccessEditor : public testing::Test {
 protected:
  AccessEditor() { utility_.set_language(1); }
  ~AccessEditor() override { utility_.set_language(1); }

  bool edit(const Object& item, const Script& script) {
    bool answer = false;
    drive(
        L"frmAccessEdit",
        [&] { answer = utility_.object().call(L"ItemAccessEdit", device_.txm, item).boolean(); },
        script);
    return answer;
  }

  /// The word that OK stores without any change.
  long confirmed(short access) {
    const Object item = device_.add_item(++last_id_, access);
    EXPECT_TRUE(edit(item, [](const Dialog& dialog) {
      dialog.click(kOk);
      EXPECT_TRUE(dialog.wait_closed());
    }));
    return item.get(L"Access").number();
  }

  Utility utility_;
  Device device_;
  short last_id_ = 100;
};

std::pair<LRESULT, LRESULT> levels(const Dialog& dialog) {
  return {dialog.ask(kReadList, CB_GETCURSEL), dialog.ask(kWriteList, CB_GETCURSEL)};
}

std::pair<LRESULT, LRESULT> flags(const Dialog& dialog) {
  return {dialog.ask(kUpdate, BM_GETCHECK), dialog.ask(kMask, BM_GETCHECK)};
}

std::vector<std::wstring> entries(const Dialog& dialog, int list) {
  std::vector<std::wstring> texts;
  const LRESULT count = dialog.ask(list, CB_GETCOUNT);
  for (LRESULT i = 0; i < count; ++i) {
    const auto position = static_cast<WPARAM>(i);
    std::wstring text(static_cast<std::size_t>(dialog.ask(list, CB_GETLBTEXTLEN, position)), L' ');
    dialog.ask(list, CB_GETLBTEXT, position, reinterpret_cast<LPARAM>(text.data()));
    texts.push_back(text);
  }
  return texts;
}

TEST_F(AccessEditor, ShowsTheItemAndItsWord) {
  const Object item = device_.add_item(33, 19, L"Damping & more");
  std::vector<std::wstring> levels_expected;
  for (long id = 520; id <= 524; ++id) levels_expected.push_back(utility_.text(id));
  std::vector<std::wstring> texts;
  for (const long id : {501, 510, 511, 512, 513, 200, 201}) texts.push_back(utility_.text(id));
  edit(item, [&](const Dialog& dialog) {
    EXPECT_EQ(dialog.title(), texts[0]);
    EXPECT_EQ(dialog.caption(kReadLabel), texts[1]);
    EXPECT_EQ(dialog.caption(kWriteLabel), texts[2]);
    EXPECT_EQ(dialog.caption(kUpdate), texts[3]);
    EXPECT_EQ(dialog.caption(kMask), texts[4]);
    EXPECT_EQ(dialog.caption(kOk), texts[5]);
    EXPECT_EQ(dialog.caption(kCancel), texts[6]);
    EXPECT_EQ(dialog.caption(kFrame), L"Fluxor: 33 - Damping & more");
    EXPECT_EQ(entries(dialog, kReadList), levels_expected);
    EXPECT_EQ(entries(dialog, kWriteList), levels_expected);
    EXPECT_EQ(levels(dialog), (std::pair<LRESULT, LRESULT>{2, 3}));
    EXPECT_EQ(flags(dialog), (std::pair<LRESULT, LRESULT>{BST_UNCHECKED, BST_UNCHECKED}));
    EXPECT_EQ(dialog.focused(), kReadList);
  });
}

TEST_F(AccessEditor, OkWithoutChangesKeepsEveryWordThatTheListsCanShow) {
  EXPECT_EQ(confirmed(19), 19);
  EXPECT_EQ(confirmed(0), 0);
  EXPECT_EQ(confirmed(64 + 8 * 4 + 4), 100);
  EXPECT_EQ(confirmed(128 + 8), 136);
  EXPECT_EQ(confirmed(255 - 27), 228);  // both flags, levels 4
}

TEST_F(AccessEditor, BitsAboveTheFlagsAreDropped) {
  EXPECT_EQ(confirmed(0x7F00 + 19), 19);
  EXPECT_EQ(confirmed(-32768 + 64), 64);
}

TEST_F(AccessEditor, LevelsWithoutAnEntryCountAsMinusOne) {
  for (short level = 5; level <= 7; ++level) {
    EXPECT_EQ(confirmed(static_cast<short>(level * 8 + 3)), -8 + 3);
    EXPECT_EQ(confirmed(static_cast<short>(2 * 8 + level)), 2 * 8 - 1);
    EXPECT_EQ(confirmed(static_cast<short>(level * 9)), -9);
    EXPECT_EQ(confirmed(static_cast<short>(level * 8 + 64 + 128)), -8 + 64 + 128);
  }
}

TEST_F(AccessEditor, ALevelWithoutAnEntryOpensWithoutAChoice) {
  edit(device_.add_item(33, 5 * 8 + 7), [](const Dialog& dialog) {
    EXPECT_EQ(levels(dialog), (std::pair<LRESULT, LRESULT>{CB_ERR, CB_ERR}));
    EXPECT_EQ(dialog.text(kReadList), L"");
  });
}

TEST_F(AccessEditor, EveryFlagHasItsBox) {
  const std::pair<LRESULT, LRESULT> expected[] = {{0, 0}, {1, 0}, {0, 1}, {1, 1}};
  for (short i = 0; i < 4; ++i) {
    edit(device_.add_item(++last_id_, static_cast<short>(i * 64)),
         [&](const Dialog& dialog) { EXPECT_EQ(flags(dialog), expected[i]); });
  }
}

TEST_F(AccessEditor, WhatWasChosenIsStored) {
  const Object item = device_.add_item(33, 19);
  EXPECT_TRUE(edit(item, [](const Dialog& dialog) {
    dialog.press_key(VK_DOWN);  // read level 2 becomes 3
    EXPECT_TRUE(wait_until([&] { return levels(dialog).first == 3; }));
    dialog.ask(kWriteList, CB_SETCURSEL, 1);
    dialog.click(kUpdate);
    dialog.click(kMask);
    dialog.click(kOk);
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(item.get(L"Access"), 3 * 8 + 1 + 64 + 128);
}

TEST_F(AccessEditor, EveryWayOfCancellingKeepsTheWord) {
  const Script ways[] = {
      [](const Dialog& dialog) { dialog.click(kCancel); },
      [](const Dialog& dialog) { dialog.close(); },
      [](const Dialog& dialog) { dialog.press_close_box(); },
      [](const Dialog& dialog) { dialog.press_key(VK_ESCAPE); },
  };
  const Object item = device_.add_item(33, 0x7F13);
  for (const Script& way : ways) {
    EXPECT_FALSE(edit(item, [&](const Dialog& dialog) {
      dialog.ask(kWriteList, CB_SETCURSEL, 1);
      dialog.click(kMask);
      way(dialog);
      EXPECT_TRUE(dialog.wait_closed());
    }));
    EXPECT_EQ(item.get(L"Access"), 0x7F13);
  }
}

TEST_F(AccessEditor, NothingOfTheLastShowIsLeft) {
  EXPECT_EQ(confirmed(2 * 8 + 3 + 64 + 128), 2 * 8 + 3 + 64 + 128);
  edit(device_.add_item(33, 5 * 9), [](const Dialog& dialog) {
    EXPECT_EQ(levels(dialog), (std::pair<LRESULT, LRESULT>{CB_ERR, CB_ERR}));
    EXPECT_EQ(flags(dialog), (std::pair<LRESULT, LRESULT>{0, 0}));
    dialog.click(kCancel);
  });
}

TEST_F(AccessEditor, ATransmitterWithoutServerStillGetsItsEditor) {
  const Object item = device_.add_item(33, 19);
  device_.txm.set(L"Server", Value::nothing());
  EXPECT_TRUE(edit(item, [](const Dialog& dialog) {
    EXPECT_EQ(levels(dialog), (std::pair<LRESULT, LRESULT>{2, 3}));
    dialog.click(kOk);
  }));
  EXPECT_EQ(item.get(L"Access"), 19);
}

TEST_F(AccessEditor, AnOpenListShowsAllLevels) {
  edit(device_.add_item(33, 19), [](const Dialog& dialog) {
    for (const int list : {kReadList, kWriteList}) {
      dialog.ask(list, CB_SHOWDROPDOWN, TRUE);
      COMBOBOXINFO info{};
      info.cbSize = sizeof info;
      dialog.ask(list, CB_GETCOMBOBOXINFO, 0, reinterpret_cast<LPARAM>(&info));
      RECT room{};
      GetClientRect(info.hwndList, &room);
      EXPECT_TRUE(IsWindowVisible(info.hwndList));
      EXPECT_GE(room.bottom, 5 * dialog.ask(list, CB_GETITEMHEIGHT));
      dialog.ask(list, CB_SHOWDROPDOWN, FALSE);
    }
  });
}

TEST_F(AccessEditor, RelabellingKeepsTheChoices) {
  const HostWindow host;
  edit(device_.add_item(33, 19 + 64), [&](const Dialog& dialog) {
    dialog.ask(kReadList, CB_SETCURSEL, 4);
    const std::vector<std::wstring> before = entries(dialog, kReadList);
    host.send([&] { utility_.set_language(2); });
    EXPECT_NE(entries(dialog, kReadList), before);
    EXPECT_EQ(levels(dialog), (std::pair<LRESULT, LRESULT>{4, 3}));
    EXPECT_EQ(flags(dialog), (std::pair<LRESULT, LRESULT>{1, 0}));
    EXPECT_EQ(dialog.layout_faults(), "");
  });
}

TEST_F(AccessEditor, AHeadingThatIsTooLongForTheScreenEndsInAnEllipsis) {
  const std::wstring caption(400, L'm');
  for (const int dpi : {96, 192}) {
    const Resolution resolution(dpi);
    edit(device_.add_item(++last_id_, 19, caption + L" & more"), [](const Dialog& dialog) {
      EXPECT_EQ(dialog.layout_faults(), "");
      EXPECT_TRUE(dialog.text(kFrame).starts_with(L"Fluxor: "));
      EXPECT_TRUE(dialog.text(kFrame).ends_with(L"mmm\x2026"));
    });
  }
}

TEST_F(AccessEditor, AnItemThatRefusesTheWordEndsItWithTheError) {
  const Object item = device_.add_item(33, 19);
  test::Outcome outcome;
  drive(
      L"frmAccessEdit",
      [&] {
        outcome = utility_.object().try_call(L"ItemAccessEdit", device_.txm, Value::nothing());
      },
      [](const Dialog& dialog) {
        dialog.click(kOk);
        EXPECT_TRUE(dialog.wait_closed());
      });
  EXPECT_EQ(outcome.number(), 91);
  EXPECT_TRUE(edit(item, [](const Dialog& dialog) { dialog.click(kOk); })) << "usable again";
}

}  // namespace
}  // namespace pv::dialogs_test
