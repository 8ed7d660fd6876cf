// The symbol editor with the library's own drawing part: tools, keys, what is stored and
// remembered.

#include <gtest/gtest.h>

#include <optional>
#include <set>

#include "core/symbols/symbol_drawing.h"
#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

constexpr int kOk = 1000, kCancel = 1001;
constexpr int kPencil = 1100, kLine = 1101, kRectangle = 1102, kFill = 1103, kEraser = 1104;
constexpr int kGrid = 1106, kPalette = 1108, kPreview = 1110;
constexpr int kUndo = 1111, kClear = 1112, kMirrorAcross = 1113, kMirrorUpright = 1114;
constexpr std::uint8_t kBlack = 0, kRed = 12, kWhite = 15;
constexpr int kDrawingLabel = 1105;

/// A settings file of its own for each test, known to the library as the application's.
class SettingsFile {
 public:
  explicit SettingsFile(const Utility& utility) : utility_(utility.object()) {
    wchar_t folder[MAX_PATH];
    wchar_t name[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    GetTempFileNameW(folder, L"sym", 0, name);
    name_ = name;
    utility_.put(L"AppIniFileName", name_);
  }
  ~SettingsFile() {
    utility_.put(L"AppIniFileName", L"");
    DeleteFileW(name_.c_str());
  }
  SettingsFile(const SettingsFile&) = delete;
  SettingsFile& operator=(const SettingsFile&) = delete;

  std::wstring value(const wchar_t* key) const {
    return utility_.call(L"pvGetSetting", name_, L"SymbolEditor", key, L"nothing").text();
  }
  void store(const wchar_t* key, const std::wstring& value) const {
    ASSERT_TRUE(utility_.call(L"pvSaveSetting", name_, L"SymbolEditor", key, value).boolean());
  }

 private:
  Object utility_;
  std::wstring name_;
};

/// The open editor, used with the pointer.
class Editor {
 public:
  explicit Editor(const Dialog& dialog) : dialog_(dialog) {}

  void choose(int tool) const {
    dialog_.ask(tool, BM_CLICK);
    EXPECT_EQ(dialog_.ask(tool, BM_GETCHECK), BST_CHECKED);
  }
  /// Goes down at the first point, through the others, and up.
  void draw(std::initializer_list<SymbolPoint> points, bool second = false) const {
    const UINT down = second ? WM_RBUTTONDOWN : WM_LBUTTONDOWN;
    const UINT up = second ? WM_RBUTTONUP : WM_LBUTTONUP;
    UINT message = down;
    LPARAM at = 0;
    for (const SymbolPoint& point : points) {
      at = position(kGrid, point, Symbol::kSide);
      dialog_.ask(kGrid, message, MK_LBUTTON, at);
      message = WM_MOUSEMOVE;
    }
    dialog_.ask(kGrid, up, 0, at);
  }
  void pick(std::uint8_t colour, bool second = false) const {
    const LPARAM at = position(kPalette, {colour % 4, colour / 4}, 4);
    dialog_.ask(kPalette, second ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, 0, at);
    dialog_.ask(kPalette, second ? WM_RBUTTONUP : WM_LBUTTONUP, 0, at);
  }
  void confirm() const {
    dialog_.click(kOk);
    EXPECT_TRUE(dialog_.wait_closed());
  }

 private:
  // The middle of a cell when `cells` lie side by side.
  LPARAM position(int control, SymbolPoint cell, int cells) const {
    RECT inside{};
    GetClientRect(dialog_.control(control), &inside);
    const int side = static_cast<int>(inside.right) / cells;
    return MAKELPARAM(cell.x * side + side / 2, cell.y * side + side / 2);
  }

  const Dialog& dialog_;
};

class SymbolEditor : public testing::Test {
 protected:
  SymbolEditor() { utility_.set_language(1); }
  ~SymbolEditor() override { utility_.set_language(1); }

  bool edit(const Object& item, const Script& script, const Value& variable = Value::missing()) {
    bool answer = false;
    drive(
        L"frmSymbolEdit",
        [&] { answer = utility_.object().call(L"ItemSymbolEdit", item, variable).boolean(); },
        script);
    return answer;
  }
  Object new_item(const std::wstring& symbol = L"") {
    const Object item = device_.add_item(++last_id_, 0);
    item.put(L"Symbol", symbol);
    return item;
  }
  /// What is stored after a script that ends with OK.
  std::optional<Symbol> drawn(const std::function<void(const Editor&, const Dialog&)>& script,
                              const Symbol& start = Symbol()) {
    const Object item = new_item(format_symbol(start));
    EXPECT_TRUE(edit(item, [&](const Dialog& dialog) {
      const Editor editor(dialog);
      script(editor, dialog);
      editor.confirm();
    }));
    const std::wstring text = item.get(L"Symbol").text();
    return text.empty() ? Symbol() : parse_symbol(text);
  }

  Utility utility_;
  SettingsFile settings_{utility_};
  Device device_;
  short last_id_ = 200;
};

Symbol with_points(std::initializer_list<SymbolPoint> points, std::uint8_t colour = kBlack) {
  Symbol symbol;
  for (const SymbolPoint& point : points) symbol.at(point.x, point.y) = colour;
  return symbol;
}

TEST_F(SymbolEditor, AnEmptySymbolOpensAnEmptyDrawing) {
  const Object item = new_item();
  const std::wstring ok = utility_.text(200), cancel = utility_.text(201);
  EXPECT_TRUE(edit(item, [&](const Dialog& dialog) {
    EXPECT_EQ(dialog.title(), L"Symbol Editor");
    EXPECT_EQ(dialog.caption(kOk), ok);
    EXPECT_EQ(dialog.caption(kCancel), cancel);
    EXPECT_EQ(dialog.focused(), kGrid);
    EXPECT_FALSE(dialog.enabled(kUndo));
    Editor(dialog).confirm();
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"") << "nothing drawn is no symbol";
}

TEST_F(SymbolEditor, EveryWayOfCancellingKeepsTheSymbol) {
  const Script ways[] = {
      [](const Dialog& dialog) { dialog.click(kCancel); },
      [](const Dialog& dialog) { dialog.close(); },
      [](const Dialog& dialog) { dialog.press_close_box(); },
  };
  for (const wchar_t* symbol : {L"", L"S1:A1024", L"of another editor"}) {
    const Object item = new_item(symbol);
    for (const Script& way : ways) {
      EXPECT_FALSE(edit(item, [&](const Dialog& dialog) {
        Editor(dialog).draw({{1, 1}, {5, 5}});
        way(dialog);
        EXPECT_TRUE(dialog.wait_closed());
      }));
      EXPECT_EQ(item.get(L"Symbol"), symbol);
    }
  }
}

TEST_F(SymbolEditor, EscapeAsksBeforeAChangedDrawingIsDropped) {
  const std::wstring question = L"Discard the changes?";
  for (const bool drops : {false, true}) {
    const Object item = new_item(L"FLOW");
    EXPECT_EQ(edit(item,
                   [&](const Dialog& dialog) {
                     Editor(dialog).draw({{0, 0}});
                     dialog.press_key(VK_ESCAPE);
                     const DWORD thread = GetWindowThreadProcessId(dialog.window(), nullptr);
                     const Dialog box = wait_for_dialog(thread);
                     EXPECT_EQ(box.text(1010), question);
                     EXPECT_EQ(box.title(), dialog.title());
                     box.click(drops ? kOk : kCancel);
                     EXPECT_TRUE(box.wait_closed());
                     if (!drops) dialog.click(kOk);
                     EXPECT_TRUE(dialog.wait_closed());
                   }),
              !drops);
    EXPECT_EQ(item.get(L"Symbol"), drops ? L"FLOW" : L"S1:AP1023");
  }
}

TEST_F(SymbolEditor, EscapeDoesNotAskWhenNothingIsChanged) {
  for (const wchar_t* symbol : {L"", L"FLOW", L"S1:P1024", L"s1:ap1023"}) {
    EXPECT_FALSE(edit(new_item(symbol), [](const Dialog& dialog) {
      Editor(dialog).draw({{1, 1}, {5, 5}});
      dialog.ask(kUndo, BM_CLICK);
      dialog.press_key(VK_ESCAPE);
      EXPECT_TRUE(dialog.wait_closed());
    }));
  }
}

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

TEST_F(SymbolEditor, AnEmptyDrawingIsNoSymbol) {
  const Object item = new_item(L"S1:AP1023");
  EXPECT_TRUE(edit(item, [&](const Dialog& dialog) {
    dialog.ask(kClear, BM_CLICK);
    Editor(dialog).confirm();
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"");
  item.put(L"Symbol", L"S1:P1024");
  EXPECT_TRUE(edit(item, [&](const Dialog& dialog) { Editor(dialog).confirm(); }));
  EXPECT_EQ(item.get(L"Symbol"), L"");
}

constexpr const wchar_t* kForeign[] = {L"FLOW", L"S2:P1024", L"S1:P1023", L"|", L" "};

TEST_F(SymbolEditor, ASymbolOfAnotherEditorIsShownAsSuchAndComesBackUnchanged) {
  const std::wstring own_label = L"Drawing:", foreign_label = L"Symbol of another editor:";
  for (const wchar_t* symbol : kForeign) {
    const Object item = new_item(symbol);
    EXPECT_TRUE(edit(item, [&](const Dialog& dialog) {
      EXPECT_EQ(dialog.caption(kDrawingLabel), foreign_label);
      dialog.ask(kMirrorAcross, BM_CLICK);
      Editor(dialog).pick(kRed);
      Editor(dialog).draw({{1, 1}});
      EXPECT_EQ(dialog.caption(kDrawingLabel), own_label);
      dialog.ask(kUndo, BM_CLICK);
      EXPECT_EQ(dialog.caption(kDrawingLabel), foreign_label);
      EXPECT_EQ(dialog.layout_faults(), "");
      Editor(dialog).confirm();
    }));
    EXPECT_EQ(item.get(L"Symbol"), symbol);
  }
}

TEST_F(SymbolEditor, WhatIsDrawnTakesThePlaceOfASymbolOfAnotherEditor) {
  const Object item = new_item(L"FLOW");
  EXPECT_TRUE(edit(item, [](const Dialog& dialog) {
    Editor(dialog).draw({{0, 0}});
    Editor(dialog).confirm();
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"S1:AP1023");
  item.put(L"Symbol", L"FLOW");
  EXPECT_TRUE(edit(item, [](const Dialog& dialog) {
    dialog.ask(kClear, BM_CLICK);
    EXPECT_TRUE(dialog.enabled(kUndo));
    Editor(dialog).confirm();
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"");
}

TEST_F(SymbolEditor, EditsTheVariableThatWasAskedFor) {
  const Object item = new_item(L"S1:A1024");
  item.get_object(L"Variables")
      .call(L"Add", L"2", L"Second", L"", L"S1:B1024", 0, 17, 1, 2, 7, 0, 4);
  EXPECT_TRUE(edit(
      item,
      [](const Dialog& dialog) {
        dialog.ask(kMirrorAcross, BM_CLICK);
        Editor(dialog).draw({{0, 0}});
        Editor(dialog).confirm();
      },
      2));
  EXPECT_EQ(item.get(L"Symbol", 1), L"S1:A1024");
  EXPECT_EQ(item.get(L"Symbol", 2), L"S1:AB1023");
}

TEST_F(SymbolEditor, ShowsNothingForAVariableThatIsNotThere) {
  const Object item = new_item();
  for (const int variable : {0, 2, -1}) {
    EXPECT_EQ(utility_.object().call(L"ItemSymbolEdit", item, variable), false);
  }
  EXPECT_EQ(utility_.object().call(L"ItemSymbolEdit", Value::nothing()), false);
}

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

TEST_F(SymbolEditor, NothingOfTheLastShowIsLeft) {
  edit(new_item(), [](const Dialog& dialog) {
    Editor(dialog).choose(kFill);
    Editor(dialog).draw({{0, 0}});
    dialog.click(kCancel);
  });
  const Object item = new_item();
  EXPECT_TRUE(edit(item, [](const Dialog& dialog) {
    EXPECT_EQ(dialog.ask(kPencil, BM_GETCHECK), BST_CHECKED);
    EXPECT_EQ(dialog.ask(kFill, BM_GETCHECK), BST_UNCHECKED);
    EXPECT_FALSE(dialog.enabled(kUndo));
    Editor(dialog).confirm();
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"");
}

TEST_F(SymbolEditor, IsNotOpenedTwiceButStillMakesPictures) {
  const HostWindow host;
  const Object other = new_item(L"S1:B1024");
  const Object item = new_item(L"S1:A1024");
  EXPECT_TRUE(edit(item, [&](const Dialog& dialog) {
    Editor(dialog).draw({{0, 0}}, true);
    host.send([&] {
      EXPECT_EQ(utility_.object().call(L"ItemSymbolEdit", other), false);
      EXPECT_TRUE(utility_.object().call_object(L"ItemSymbolGetPicture", other));
    });
    Editor(dialog).confirm();
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"S1:PA1023");
  EXPECT_EQ(other.get(L"Symbol"), L"S1:B1024");
}

TEST_F(SymbolEditor, RelabellingKeepsTheDrawingAndTheTool) {
  const HostWindow host;
  const Object item = new_item();
  EXPECT_TRUE(edit(item, [&](const Dialog& dialog) {
    Editor(dialog).choose(kLine);
    Editor(dialog).draw({{0, 0}, {1, 0}});
    host.send([&] { utility_.set_language(2); });
    EXPECT_EQ(dialog.caption(kPencil), L"Ceruza");
    EXPECT_EQ(dialog.ask(kLine, BM_GETCHECK), BST_CHECKED);
    EXPECT_TRUE(dialog.enabled(kUndo));
    EXPECT_EQ(dialog.layout_faults(), "");
    Editor(dialog).confirm();
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"S1:A2P1022");
}

TEST_F(SymbolEditor, IsLabelledInTheActiveLanguage) {
  const std::pair<const wchar_t*, const wchar_t*> labels[] = {
      {L"Symbol Editor", L"Line"},        {L"Szimbólumszerkesztő", L"Vonal"},
      {L"Symboleditor", L"Linie"},        {L"Editor di simboli", L"Linea"},
      {L"Éditeur de symboles", L"Ligne"}, {L"Symbooleditor", L"Lijn"}};
  long language = 0;
  for (const auto& [title, line] : labels) {
    utility_.set_language(++language);
    edit(new_item(), [&](const Dialog& dialog) {
      EXPECT_EQ(dialog.title(), title);
      EXPECT_EQ(dialog.caption(kLine), line);
    });
  }
  utility_.set_language(7);
  edit(new_item(), [](const Dialog& dialog) { EXPECT_EQ(dialog.title(), L"Symbol Editor"); });
}

TEST_F(SymbolEditor, RealKeysReachEveryPart) {
  const Object item = new_item();
  EXPECT_TRUE(edit(item, [](const Dialog& dialog) {
    const auto tab_to = [&](int id) {
      for (int i = 0; i < 12 && dialog.focused() != id; ++i) {
        const int before = dialog.focused();
        stroke_key(VK_TAB);
        EXPECT_TRUE(wait_until([&] { return dialog.focused() != before; }));
      }
      EXPECT_EQ(dialog.focused(), id);
    };
    EXPECT_EQ(dialog.focused(), kGrid);
    stroke_key(VK_RIGHT);
    stroke_key(VK_SPACE);
    EXPECT_TRUE(wait_until([&] { return dialog.enabled(kUndo); }));
    tab_to(kPalette);
    stroke_key(VK_RIGHT);
    stroke_key(VK_LEFT, VK_SHIFT);
    tab_to(kMirrorAcross);
    stroke_key(VK_SPACE);
    tab_to(kOk);
    stroke_key(VK_RETURN);
    EXPECT_TRUE(dialog.wait_closed());
  }));
  EXPECT_EQ(item.get(L"Symbol"), L"S1:P30AP993");
  EXPECT_EQ(settings_.value(L"Settings"), L"1|14");
}

TEST_F(SymbolEditor, NothingIsClippedAndAccessKeysAreUniqueInEveryLanguage) {
  for (const int dpi : {96, 120, 144, 192}) {
    const Resolution resolution(dpi);
    for (long language = 1; language <= 6; ++language) {
      SCOPED_TRACE(testing::Message() << "language " << language << ", dpi " << dpi);
      utility_.set_language(language);
      edit(new_item(), [](const Dialog& dialog) {
        EXPECT_EQ(dialog.layout_faults(), "");
        std::set<wchar_t> keys;
        std::size_t named = 0;
        for (const int id : {kPencil, kLine, kRectangle, kFill, kEraser, 1105, 1107, kUndo, kClear,
                             kMirrorAcross, kMirrorUpright}) {
          keys.insert(dialog.access_key(id));
          ++named;
        }
        EXPECT_EQ(keys.size(), named);
        EXPECT_FALSE(keys.contains(L'\0'));
      });
    }
  }
}

}  // namespace
}  // namespace pv::dialogs_test
