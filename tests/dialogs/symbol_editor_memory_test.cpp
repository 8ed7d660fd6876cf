// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the symbol editor remembers: the colours, its place and its size.

#include "tests/dialogs/symbol_editor_support.h"

#include <gtest/gtest.h>

namespace pv::dialogs_test {
namespace {

TEST_F(SymbolEditor, BeginsWithTheColoursZeroAndFifteen) {
  EXPECT_TRUE(edit(new_item(), [](const Dialog& dialog) { Editor(dialog).confirm(); }));
  EXPECT_EQ(settings_.value(L"Settings"), L"0|15");
}

TEST_F(SymbolEditor, RemembersTheColoursOnlyAfterOk) {
  edit(new_item(), [](const Dialog& dialog) {
    Editor(dialog).pick(kRed);
    dialog.click(kCancel);
  });
  EXPECT_EQ(settings_.value(L"Settings"), L"nothing");
  edit(new_item(), [](const Dialog& dialog) {
    Editor(dialog).pick(kRed);
    Editor(dialog).pick(3, true);
    Editor(dialog).confirm();
  });
  EXPECT_EQ(settings_.value(L"Settings"), L"12|3");
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.draw({{1, 1}});
            }),
            with_points({{1, 1}}, kRed));
}

TEST_F(SymbolEditor, SettingsThatAreNoColoursCountAsTheFirstOnes) {
  for (const wchar_t* settings : {L"16|-1", L"99999|70000", L"-5|16"}) {
    settings_.store(L"Settings", settings);
    EXPECT_TRUE(edit(new_item(), [](const Dialog& dialog) { Editor(dialog).confirm(); }));
    EXPECT_EQ(settings_.value(L"Settings"), L"0|15") << test::printable(settings);
  }
  settings_.store(L"Settings", L"7");
  EXPECT_TRUE(edit(new_item(), [](const Dialog& dialog) { Editor(dialog).confirm(); }));
  EXPECT_EQ(settings_.value(L"Settings"), L"7|0");
}

TEST_F(SymbolEditor, ReturnsToItsPlaceWithItsSize) {
  RECT left{};
  edit(new_item(), [&](const Dialog& dialog) {
    SetWindowPos(dialog.window(), nullptr, 40, 50, 720, 560, SWP_NOZORDER | SWP_NOACTIVATE);
    dialog.drain();
    GetWindowRect(dialog.window(), &left);
    EXPECT_EQ(dialog.layout_faults(), "");
    dialog.click(kCancel);
  });
  EXPECT_EQ(settings_.value(L"Window"), L"600|750|10800|8400|0|");
  edit(new_item(), [&](const Dialog& dialog) {
    RECT again{};
    GetWindowRect(dialog.window(), &again);
    EXPECT_TRUE(EqualRect(&left, &again));
    EXPECT_EQ(dialog.layout_faults(), "");
  });
}

TEST_F(SymbolEditor, APlaceThatIsNotOnTheScreenAnyMoreIsNotTaken) {
  for (const wchar_t* place : {L"-90000|-90000|3000|3000|0|", L"900000|900000|9000|9000|0|",
                               L"0|0|1|1|0|", L"0|0|99999999|99999999|2|"}) {
    settings_.store(L"Window", place);
    edit(new_item(), [&](const Dialog& dialog) {
      RECT now{};
      RECT work{};
      GetWindowRect(dialog.window(), &now);
      SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
      RECT both{};
      IntersectRect(&both, &now, &work);
      EXPECT_TRUE(EqualRect(&both, &now)) << test::printable(place);
      EXPECT_EQ(dialog.layout_faults(), "");
    });
  }
}

TEST_F(SymbolEditor, CannotBeMadeTooSmall) {
  edit(new_item(), [](const Dialog& dialog) {
    SetWindowPos(dialog.window(), nullptr, 0, 0, 50, 50,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
    dialog.drain();
    EXPECT_EQ(dialog.layout_faults(), "");
  });
}

TEST_F(SymbolEditor, WorksWithoutASettingsFile) {
  utility_.object().put(L"AppIniFileName", L"");
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.draw({{1, 1}});
            }),
            with_points({{1, 1}}));
}

}  // namespace
}  // namespace pv::dialogs_test
