// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The symbol editor with the library's own drawing part: what is opened, stored and shown.

#include "tests/dialogs/symbol_editor_support.h"

#include <gtest/gtest.h>

#include <set>

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

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
  const std::wstring own_label = L"Drawing:", foreign_label = L"Symbol from another editor:";
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
