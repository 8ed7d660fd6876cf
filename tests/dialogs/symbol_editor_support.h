// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The symbol editor as the tests use it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>

#include "core/symbols/symbol_drawing.h"
#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {

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
  test::Object utility_;
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

  bool edit(const test::Object& item, const Script& script,
            const test::Value& variable = test::Value::missing()) {
    bool answer = false;
    drive(
        L"frmSymbolEdit",
        [&] { answer = utility_.object().call(L"ItemSymbolEdit", item, variable).boolean(); },
        script);
    return answer;
  }
  test::Object new_item(const std::wstring& symbol = L"") {
    const test::Object item = device_.add_item(++last_id_, 0);
    item.put(L"Symbol", symbol);
    return item;
  }
  /// What is stored after a script that ends with OK.
  std::optional<Symbol> drawn(const std::function<void(const Editor&, const Dialog&)>& script,
                              const Symbol& start = Symbol()) {
    const test::Object item = new_item(format_symbol(start));
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

inline Symbol with_points(std::initializer_list<SymbolPoint> points, std::uint8_t colour = kBlack) {
  Symbol symbol;
  for (const SymbolPoint& point : points) symbol.at(point.x, point.y) = colour;
  return symbol;
}

}  // namespace pv::dialogs_test
