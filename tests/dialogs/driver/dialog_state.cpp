// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/dialog_state.h"

#include <windows.h>

#include <commctrl.h>

#include <iterator>
#include <sstream>

namespace pv::dialogs_test {
namespace {

bool is(const Dialog& dialog, int id, const wchar_t* window_class) {
  return lstrcmpiW(class_of(dialog.control(id)).c_str(), window_class) == 0;
}

DWORD style(const Dialog& dialog, int id) {
  return static_cast<DWORD>(GetWindowLongW(dialog.control(id), GWL_STYLE));
}

bool is_check_box(const Dialog& dialog, int id) {
  return is(dialog, id, L"Button") && (style(dialog, id) & BS_TYPEMASK) == BS_AUTOCHECKBOX;
}

bool has_caption(const Dialog& dialog, int id) {
  return is(dialog, id, L"Button") || is(dialog, id, L"Static");
}

std::string list_entries(const Dialog& dialog, int id) {
  std::string entries;
  const LRESULT count = dialog.ask(id, CB_GETCOUNT);
  for (LRESULT i = 0; i < count; ++i) {
    wchar_t entry[256] = L"";
    dialog.ask(id, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(entry));
    entries.append(" ").append(test::printable(entry));
  }
  return entries;
}

void change(const Dialog& dialog, int id) {
  if (is(dialog, id, L"Edit") && !(style(dialog, id) & ES_READONLY)) {
    dialog.type(id, L"changed");
  } else if (is(dialog, id, L"ComboBox")) {
    dialog.ask(id, CB_SETCURSEL, 4);
  } else if (is_check_box(dialog, id)) {
    dialog.ask(id, BM_CLICK);
  } else if (is(dialog, id, L"SysDateTimePick32")) {
    const SYSTEMTIME moment{1999, 12, 0, 31, 23, 59, 58, 0};
    dialog.ask(id, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&moment));
  }
}

}  // namespace

std::vector<int> control_ids(const Dialog& dialog) {
  std::vector<int> ids;
  for (HWND child = GetWindow(dialog.window(), GW_CHILD); child;
       child = GetWindow(child, GW_HWNDNEXT))
    ids.push_back(GetDlgCtrlID(child));
  return ids;
}

std::wstring class_of(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return name;
}

Lines appearance(const Dialog& dialog) {
  const SIZE size = dialog.outer();
  std::ostringstream title;
  title << test::printable(dialog.title()) << " " << size.cx << " x " << size.cy;
  Lines lines{title.str()};
  for (const int id : control_ids(dialog)) {
    const RECT place = dialog.pixels(id);
    std::ostringstream line;
    line << id << " (" << place.left << ", " << place.top << ") - (" << place.right << ", "
         << place.bottom << ")" << (dialog.shows(id) ? "" : " hidden")
         << (dialog.enabled(id) ? "" : " disabled");
    if (has_caption(dialog, id)) line << " " << test::printable(dialog.text(id));
    if (is(dialog, id, L"ComboBox")) line << list_entries(dialog, id);
    lines.push_back(line.str());
  }
  return lines;
}

Lines contents(const Dialog& dialog) {
  Lines lines{"focus on " + std::to_string(dialog.focused())};
  for (const int id : control_ids(dialog)) {
    std::ostringstream line;
    line << id;
    if (is(dialog, id, L"ComboBox")) {
      line << " choice " << dialog.ask(id, CB_GETCURSEL);
    } else if (is_check_box(dialog, id)) {
      line << " mark " << dialog.ask(id, BM_GETCHECK);
    } else if (is(dialog, id, L"Edit")) {
      line << " " << test::printable(dialog.text(id)) << " mask "
           << dialog.ask(id, EM_GETPASSWORDCHAR) << " lock " << (style(dialog, id) & ES_READONLY);
    } else if (is(dialog, id, L"SysDateTimePick32") && dialog.shows(id)) {  // else it is now
      line << " " << test::printable(dialog.text(id));
    } else {
      continue;
    }
    lines.push_back(line.str());
  }
  return lines;
}

void change_everything(const Dialog& dialog) {
  for (const int id : control_ids(dialog))
    if (dialog.shows(id)) change(dialog, id);
}

}  // namespace pv::dialogs_test
