// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Drawing in the symbol editor: tools, colours, keys.

#include "tests/dialogs/symbol_editor_support.h"

#include <gtest/gtest.h>

namespace pv::dialogs_test {
namespace {

using test::Object;

TEST_F(SymbolEditor, TheToolsDrawWithThePointer) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.draw({{2, 2}, {4, 2}, {4, 3}});
            }),
            with_points({{2, 2}, {3, 2}, {4, 2}, {4, 3}}));
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.choose(kLine);
              editor.draw({{2, 2}, {9, 2}, {4, 4}});
            }),
            with_points({{2, 2}, {3, 3}, {4, 4}}));
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.choose(kRectangle);
              editor.draw({{2, 2}, {4, 3}});
            }),
            with_points({{2, 2}, {3, 2}, {4, 2}, {2, 3}, {3, 3}, {4, 3}}));
  EXPECT_EQ(format_symbol(*drawn([](const Editor& editor, const Dialog&) {
              editor.choose(kFill);
              editor.draw({{2, 2}});
            })),
            L"S1:A1024");
}

TEST_F(SymbolEditor, TheEraserAndTheSecondButtonDrawWithTheSecondColour) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.draw({{0, 0}, {5, 0}});
              editor.choose(kEraser);
              editor.draw({{1, 0}, {2, 0}});
              editor.choose(kPencil);
              editor.draw({{4, 0}}, true);
            }),
            with_points({{0, 0}, {3, 0}, {5, 0}}));
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.pick(kRed, true);
              editor.draw({{7, 7}}, true);
            }),
            with_points({{7, 7}}, kRed));
}

TEST_F(SymbolEditor, ColoursArePickedWithThePointerAndWithKeys) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog& dialog) {
              editor.pick(kRed);
              EXPECT_EQ(dialog.focused(), kPalette);
              dialog.press_key(VK_RIGHT);
              dialog.press_key(VK_UP);
              dialog.drain();
              editor.draw({{3, 3}});
            }),
            with_points({{3, 3}}, kRed + 1 - 4));
}

TEST_F(SymbolEditor, TheColoursEndAtTheEdgesOfThePalette) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog& dialog) {
              editor.pick(kWhite);
              for (const WORD key : {VK_RIGHT, VK_DOWN}) dialog.press_key(key);
              dialog.drain();
              editor.pick(kBlack);
              for (const WORD key : {VK_LEFT, VK_UP}) dialog.press_key(key);
              dialog.drain();
              editor.draw({{3, 3}});
            }),
            with_points({{3, 3}}, kBlack));
}

TEST_F(SymbolEditor, WhatIsDrawnOutsideIsLost) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog&) {
              editor.draw({{30, 30}, {60, 60}});
              editor.draw({{0, 1}, {-9, 1}});
              editor.draw({{40, 3}, {3, 3}});  // begins outside
            }),
            with_points({{30, 30}, {31, 31}, {0, 1}}));
}

TEST_F(SymbolEditor, KeysMoveACursorAndDraw) {
  EXPECT_EQ(drawn([](const Editor&, const Dialog& dialog) {
              dialog.press_key(VK_SPACE);
              for (const WORD key : {VK_RIGHT, VK_DOWN, VK_SPACE, VK_END, VK_SPACE, VK_HOME})
                dialog.press_key(key);
              for (const WORD key : {VK_LEFT, VK_DOWN, VK_SPACE}) dialog.press_key(key);
              dialog.drain();
            }),
            with_points({{0, 0}, {1, 1}, {31, 1}, {0, 2}}));
}

TEST_F(SymbolEditor, KeysSpanALineBetweenTwoPresses) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog& dialog) {
              editor.choose(kLine);
              SendMessageW(dialog.window(), WM_NEXTDLGCTL,
                           reinterpret_cast<WPARAM>(dialog.control(kGrid)), TRUE);
              for (const WORD key : {VK_SPACE, VK_RIGHT, VK_RIGHT, VK_SPACE, VK_DOWN})
                dialog.press_key(key);
              dialog.drain();
            }),
            with_points({{0, 0}, {1, 0}, {2, 0}}));
}

TEST_F(SymbolEditor, EscapeTakesAnOpenLineBackBeforeItClosesTheForm) {
  const Object item = new_item();
  EXPECT_FALSE(edit(item, [](const Dialog& dialog) {
    Editor(dialog).choose(kLine);
    SendMessageW(dialog.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.control(kGrid)),
                 TRUE);
    for (const WORD key : {VK_SPACE, VK_RIGHT, VK_ESCAPE}) dialog.press_key(key);
    dialog.drain();
    EXPECT_TRUE(dialog.open());
    EXPECT_FALSE(dialog.enabled(kUndo));
    dialog.press_key(VK_ESCAPE);
    EXPECT_TRUE(dialog.wait_closed());
  }));
}

TEST_F(SymbolEditor, UndoGoesBackStepByStep) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog& dialog) {
              editor.draw({{1, 1}});
              editor.draw({{2, 2}, {8, 8}});
              editor.draw({{3, 3}, {9, 3}});
              EXPECT_TRUE(dialog.enabled(kUndo));
              dialog.ask(kUndo, BM_CLICK);
              dialog.ask(kUndo, BM_CLICK);
              EXPECT_TRUE(dialog.enabled(kUndo));
            }),
            with_points({{1, 1}}));
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog& dialog) {
              editor.draw({{1, 1}});
              dialog.ask(kUndo, BM_CLICK);
              EXPECT_FALSE(dialog.enabled(kUndo));
              EXPECT_EQ(dialog.focused(), kGrid);
            }),
            Symbol());
}

TEST_F(SymbolEditor, ControlZIsUndo) {
  EXPECT_EQ(drawn([](const Editor& editor, const Dialog& dialog) {
              editor.draw({{1, 1}});
              editor.draw({{2, 2}});
              stroke_key('Z', VK_CONTROL);
              stroke_key('Z');  // without Ctrl it is no key of the editor
              stroke_key('Z', VK_CONTROL);
              EXPECT_TRUE(wait_until([&] { return !dialog.enabled(kUndo); }));
              editor.draw({{9, 9}});
            }),
            with_points({{9, 9}}));
}

TEST_F(SymbolEditor, ClearsAndMirrors) {
  const Symbol start = with_points({{1, 2}});
  EXPECT_EQ(drawn([](const Editor&, const Dialog& dialog) { dialog.ask(kClear, BM_CLICK); }, start),
            Symbol());
  EXPECT_EQ(drawn([](const Editor&, const Dialog& dialog) { dialog.ask(kMirrorAcross, BM_CLICK); },
                  start),
            with_points({{30, 2}}));
  EXPECT_EQ(drawn([](const Editor&, const Dialog& dialog) { dialog.ask(kMirrorUpright, BM_CLICK); },
                  start),
            with_points({{1, 29}}));
}

// The colour of a point of the preview's window, as it is on the screen.
COLORREF preview_colour(const Dialog& dialog, int x, int y) {
  const HWND preview = dialog.control(kPreview);
  RedrawWindow(preview, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  RECT inside{};
  GetClientRect(preview, &inside);
  POINT at{(inside.right - Symbol::kSide) / 2 + x, (inside.bottom - Symbol::kSide) / 2 + y};
  ClientToScreen(preview, &at);
  const HDC screen = GetDC(nullptr);
  const COLORREF colour = GetPixel(screen, static_cast<int>(at.x), static_cast<int>(at.y));
  ReleaseDC(nullptr, screen);
  return colour;
}

TEST_F(SymbolEditor, ThePreviewFollowsTheDrawingAtItsRealSize) {
  edit(new_item(), [](const Dialog& dialog) {
    EXPECT_TRUE(wait_until([&] { return preview_colour(dialog, 31, 31) == RGB(255, 255, 255); }));
    Editor(dialog).pick(kRed);
    Editor(dialog).draw({{31, 31}});
    EXPECT_TRUE(wait_until([&] { return preview_colour(dialog, 31, 31) == RGB(255, 0, 0); }));
    EXPECT_EQ(preview_colour(dialog, 30, 31), RGB(255, 255, 255));
  });
}

}  // namespace
}  // namespace pv::dialogs_test
