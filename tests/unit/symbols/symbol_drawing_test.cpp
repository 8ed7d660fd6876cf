// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Drawing on symbols: tools, strokes and undo.

#include "core/symbols/symbol_drawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <utility>

namespace pv {
namespace {

using Points = std::set<std::pair<int, int>>;

constexpr std::uint8_t kBlack = 0;
constexpr std::uint8_t kRed = 12;

Points points_of(const Symbol& symbol, std::uint8_t colour) {
  Points points;
  for (int y = 0; y < Symbol::kSide; ++y)
    for (int x = 0; x < Symbol::kSide; ++x)
      if (symbol.at(x, y) == colour) points.emplace(x, y);
  return points;
}

Points drawn(SymbolTool tool, SymbolPoint from, SymbolPoint to) {
  SymbolDrawing drawing;
  drawing.begin(tool, from, kBlack);
  drawing.move_to(to);
  drawing.end();
  return points_of(drawing.symbol(), kBlack);
}

TEST(SymbolDrawing, BeginsEmptyAndWithoutAnythingToUndo) {
  SymbolDrawing drawing;
  EXPECT_EQ(drawing.symbol(), Symbol());
  EXPECT_FALSE(drawing.can_undo());
  EXPECT_FALSE(drawing.undo());
}

TEST(SymbolDrawing, WhatCannotBeReadIsSoUntilSomethingIsDrawn) {
  SymbolDrawing drawing = SymbolDrawing::unreadable();
  EXPECT_TRUE(drawing.is_unreadable());
  EXPECT_EQ(drawing.symbol(), Symbol());
  drawing.mirror_left_right();
  drawing.begin(SymbolTool::kPencil, {-1, 5}, kBlack);  // outside
  drawing.end();
  drawing.begin(SymbolTool::kFill, {-1, 5}, kBlack);
  drawing.end();
  EXPECT_TRUE(drawing.is_unreadable());
  EXPECT_FALSE(drawing.can_undo());
  drawing.begin(SymbolTool::kPencil, {5, 5}, Symbol::kEmpty);  // looks the same, but is drawn
  EXPECT_FALSE(drawing.is_unreadable());
  drawing.cancel();
  EXPECT_TRUE(drawing.is_unreadable());
  drawing.begin(SymbolTool::kFill, {5, 5}, Symbol::kEmpty);
  drawing.end();
  EXPECT_FALSE(drawing.is_unreadable());
  EXPECT_TRUE(drawing.undo());
  EXPECT_TRUE(drawing.is_unreadable());
}

TEST(SymbolDrawing, ClearingWhatCannotBeReadIsAStep) {
  SymbolDrawing drawing = SymbolDrawing::unreadable();
  drawing.clear();
  EXPECT_FALSE(drawing.is_unreadable());
  EXPECT_TRUE(drawing.undo());
  EXPECT_TRUE(drawing.is_unreadable());
  EXPECT_FALSE(SymbolDrawing().is_unreadable());
  EXPECT_FALSE(SymbolDrawing(Symbol()).is_unreadable());
}

TEST(SymbolDrawing, ThePencilDrawsWhereItWent) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kPencil, {3, 4}, kBlack);
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{3, 4}}));
  drawing.move_to({3, 6});
  drawing.move_to({5, 6});
  drawing.end();
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{3, 4}, {3, 5}, {3, 6}, {4, 6}, {5, 6}}));
}

TEST(SymbolDrawing, ALineSpansBetweenItsEndsOnly) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kLine, {0, 0}, kBlack);
  drawing.move_to({31, 0});
  drawing.move_to({3, 3});
  drawing.end();
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{0, 0}, {1, 1}, {2, 2}, {3, 3}}));
}

TEST(SymbolDrawing, LinesHaveNoGapsInAnyDirection) {
  for (int x = 0; x <= 20; ++x) {
    for (int y = 0; y <= 20; ++y) {
      const Points line = drawn(SymbolTool::kLine, {10, 10}, {x, y});
      const auto length = static_cast<std::size_t>(std::max(std::abs(x - 10), std::abs(y - 10)));
      EXPECT_EQ(line.size(), length + 1);
      EXPECT_TRUE(line.contains({10, 10}));
      EXPECT_TRUE(line.contains({x, y}));
    }
  }
}

TEST(SymbolDrawing, ARectangleIsItsOutline) {
  EXPECT_EQ(drawn(SymbolTool::kRectangle, {4, 4}, {2, 2}),
            (Points{{2, 2}, {3, 2}, {4, 2}, {2, 3}, {4, 3}, {2, 4}, {3, 4}, {4, 4}}));
  EXPECT_EQ(drawn(SymbolTool::kRectangle, {4, 4}, {4, 4}), (Points{{4, 4}}));
}

TEST(SymbolDrawing, FillStaysInsideItsBorder) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kRectangle, {5, 5}, kBlack);
  drawing.move_to({9, 8});
  drawing.begin(SymbolTool::kFill, {7, 6}, kRed);
  drawing.move_to({20, 20});  // a fill does not follow the pen
  drawing.end();
  EXPECT_EQ(points_of(drawing.symbol(), kRed),
            (Points{{6, 6}, {7, 6}, {8, 6}, {6, 7}, {7, 7}, {8, 7}}));
}

TEST(SymbolDrawing, FillDoesNotPassCorners) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kLine, {0, 1}, kBlack);
  drawing.move_to({1, 0});
  drawing.begin(SymbolTool::kFill, {0, 0}, kRed);
  drawing.end();
  EXPECT_EQ(points_of(drawing.symbol(), kRed), (Points{{0, 0}}));
}

TEST(SymbolDrawing, FillingAnAreaWithItsOwnColourChangesNothing) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kFill, {0, 0}, Symbol::kEmpty);
  drawing.end();
  EXPECT_FALSE(drawing.can_undo());
}

TEST(SymbolDrawing, FillReachesEveryPixelOfAnEmptySymbol) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kFill, {31, 31}, kRed);
  EXPECT_EQ(points_of(drawing.symbol(), kRed).size(), 1024u);
}

TEST(SymbolDrawing, WhatLiesOutsideIsLost) {
  EXPECT_EQ(drawn(SymbolTool::kLine, {-2, -2}, {1, 1}), (Points{{0, 0}, {1, 1}}));
  EXPECT_EQ(drawn(SymbolTool::kPencil, {-5, 40}, {-5, 50}), Points());
  EXPECT_EQ(drawn(SymbolTool::kFill, {-1, 0}, {0, 0}), Points());
  const Points row = drawn(SymbolTool::kLine, {-2147483647 - 1, 7}, {2147483647, 7});
  EXPECT_EQ(row.size(), 32u);
}

TEST(SymbolDrawing, EachStrokeIsTakenBackAtOnce) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kPencil, {0, 0}, kBlack);
  drawing.move_to({9, 0});
  drawing.end();
  const Symbol first = drawing.symbol();
  drawing.begin(SymbolTool::kFill, {5, 5}, kRed);
  drawing.end();
  EXPECT_TRUE(drawing.undo());
  EXPECT_EQ(drawing.symbol(), first);
  EXPECT_TRUE(drawing.undo());
  EXPECT_EQ(drawing.symbol(), Symbol());
  EXPECT_FALSE(drawing.undo());
}

TEST(SymbolDrawing, UndoTakesAnOpenStrokeBack) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kLine, {0, 0}, kBlack);
  drawing.move_to({9, 9});
  EXPECT_TRUE(drawing.is_drawing());
  EXPECT_TRUE(drawing.undo());
  EXPECT_FALSE(drawing.is_drawing());
  EXPECT_EQ(drawing.symbol(), Symbol());
  drawing.move_to({20, 20});  // no stroke, so nothing is drawn
  EXPECT_EQ(drawing.symbol(), Symbol());
}

TEST(SymbolDrawing, AStrokeThatChangesNothingIsNoStep) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kPencil, {0, 0}, kBlack);
  drawing.end();
  drawing.begin(SymbolTool::kPencil, {0, 0}, kBlack);
  drawing.end();
  EXPECT_TRUE(drawing.undo());
  EXPECT_EQ(drawing.symbol(), Symbol());
}

TEST(SymbolDrawing, MirrorsBothWaysAndTakesThemBack) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kPencil, {1, 2}, kBlack);
  drawing.end();
  drawing.mirror_left_right();
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{30, 2}}));
  drawing.mirror_top_bottom();
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{30, 29}}));
  drawing.undo();
  drawing.undo();
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{1, 2}}));
}

TEST(SymbolDrawing, MirroringEndsAnOpenStroke) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kPencil, {1, 2}, kBlack);
  drawing.mirror_left_right();
  EXPECT_FALSE(drawing.is_drawing());
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{30, 2}}));
  drawing.undo();
  EXPECT_EQ(points_of(drawing.symbol(), kBlack), (Points{{1, 2}}));
}

TEST(SymbolDrawing, ClearingIsOneStep) {
  SymbolDrawing drawing;
  drawing.begin(SymbolTool::kFill, {1, 2}, kBlack);
  drawing.clear();
  EXPECT_EQ(drawing.symbol(), Symbol());
  drawing.undo();
  EXPECT_EQ(points_of(drawing.symbol(), kBlack).size(), 1024u);
}

TEST(SymbolDrawing, KeepsTheLastTwoHundredSteps) {
  SymbolDrawing drawing;
  for (int i = 0; i < 300; ++i) {
    drawing.begin(SymbolTool::kPencil, {i % 32, i / 32}, kBlack);
    drawing.end();
  }
  int steps = 0;
  while (drawing.undo()) ++steps;
  EXPECT_EQ(steps, 200);
  EXPECT_EQ(points_of(drawing.symbol(), kBlack).size(), 100u);
}

TEST(SymbolDrawing, UndoingEverythingLeadsBackToTheStart) {
  std::mt19937 random(3);
  const auto coordinate = [&] { return static_cast<int>(random() % 48) - 8; };
  for (int round = 0; round < 200; ++round) {
    SymbolDrawing drawing;
    for (int step = 0; step < 30; ++step) {
      drawing.begin(static_cast<SymbolTool>(random() % 4), {coordinate(), coordinate()},
                    static_cast<std::uint8_t>(random() % Symbol::kColours));
      drawing.move_to({coordinate(), coordinate()});
      if (random() % 4 == 0) drawing.mirror_left_right();
      if (random() % 8 == 0) drawing.cancel();
      drawing.end();
      ASSERT_EQ(parse_symbol(format_symbol(drawing.symbol())), drawing.symbol());
    }
    while (drawing.undo()) {
    }
    ASSERT_EQ(drawing.symbol(), Symbol());
  }
}

}  // namespace
}  // namespace pv
