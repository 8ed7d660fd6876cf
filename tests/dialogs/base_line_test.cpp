// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Labels and the texts of their fields stand on one line, as they are seen on the screen.

#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include "tests/dialogs/driver/dialog_state.h"
#include "tests/dialogs/driver/every_form.h"
#include "tests/dialogs/driver/photograph.h"

namespace pv::dialogs_test {
namespace {

constexpr wchar_t kLetter[] = L"H";  // stands on the line and has an upright first

LPARAM address(const wchar_t* text) { return reinterpret_cast<LPARAM>(text); }

void write_letter(const Dialog& dialog, int id) {
  const std::wstring name = class_of(dialog.control(id));
  if (name == L"ComboBox") {
    dialog.ask(id, CB_RESETCONTENT);
    dialog.ask(id, CB_ADDSTRING, 0, address(kLetter));
    dialog.ask(id, CB_SETCURSEL, 0);
  } else if (name == L"SysDateTimePick32") {
    dialog.ask(id, DTM_SETFORMATW, 0, address(L"'H'"));
  } else {
    if (name == L"Edit") dialog.ask(id, EM_SETPASSWORDCHAR, 0);
    dialog.type(id, kLetter);
  }
}

// The inside of a control without its edges, on the screen; the letter is at its left.
RECT place_of_letter(const Dialog& dialog, int id) {
  const HWND control = dialog.control(id);
  RECT place{};
  GetClientRect(control, &place);
  const std::wstring name = class_of(control);
  if (name != L"Static" && name != L"Edit") InflateRect(&place, -3, -3);
  place.right = place.left + (place.bottom - place.top);
  MapWindowPoints(control, nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

bool is_dark(COLORREF colour) {
  return GetRValue(colour) + GetGValue(colour) + GetBValue(colour) < 300;
}

// The lowest row of the screen with a part of the letter; -1 before it is painted.
LONG base_line(const Dialog& dialog, int id) {
  RedrawWindow(dialog.control(id), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
  const RECT place = place_of_letter(dialog, id);
  const Picture picture = photograph(place);
  for (LONG y = picture.height; y-- > 0;)
    for (LONG x = 0; x < picture.width; ++x)
      if (is_dark(picture.at(x, y))) return place.top + y;
  return -1;
}

void expect_one_line(const Dialog& dialog, int label, int field) {
  write_letter(dialog, label);
  write_letter(dialog, field);
  dialog.drain();
  LONG label_line = -1;
  LONG field_line = -1;
  wait_until(
      [&] {
        label_line = base_line(dialog, label);
        field_line = base_line(dialog, field);
        return label_line >= 0 && label_line == field_line;
      },
      std::chrono::milliseconds(500));
  EXPECT_GE(label_line, 0) << "label " << label;
  EXPECT_EQ(label_line, field_line) << "label " << label << ", field " << field;
}

bool is_field(const Dialog& dialog, int id) {
  const std::wstring name = class_of(dialog.control(id));
  return name == L"ComboBox" || name == L"SysDateTimePick32" ||
         (name == L"Edit" && !(GetWindowLongW(dialog.control(id), GWL_STYLE) & ES_MULTILINE));
}

bool stands_beside(const Dialog& dialog, int label, int field) {
  const RECT one = dialog.pixels(label);
  const RECT other = dialog.pixels(field);
  return class_of(dialog.control(label)) == L"Static" && !dialog.text(label).empty() &&
         one.top < other.bottom && other.top < one.bottom;
}

TEST(BaseLine, LabelsAndFieldsShareItInEveryResolution) {
  const Utility utility;
  int pairs = 0;
  for (const int dpi : {96, 120, 144, 192}) {
    const Resolution resolution(dpi);
    for (const FormKind& kind : every_form()) {
      if (kind.form == std::wstring(L"frmMsgBox") || kind.form == std::wstring(L"frmSymbolEdit"))
        continue;
      SCOPED_TRACE(testing::Message() << kind.name << ", dpi " << dpi);
      kind.show(utility, [&](const Dialog& dialog) {
        // A field that has the focus inverts its text.
        SendMessageW(dialog.window(), WM_NEXTDLGCTL,
                     reinterpret_cast<WPARAM>(dialog.control(kConfirmButton)), TRUE);
        const std::vector<int> ids = control_ids(dialog);
        for (const int label : ids)
          for (const int field : ids) {
            if (!dialog.shows(label) || !dialog.shows(field) || !is_field(dialog, field)) continue;
            if (!stands_beside(dialog, label, field)) continue;
            expect_one_line(dialog, label, field);
            ++pairs;
          }
      });
    }
  }
  EXPECT_GE(pairs, 4 * 9);
}

}  // namespace
}  // namespace pv::dialogs_test
