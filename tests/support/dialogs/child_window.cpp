// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/dialogs/child_window.h"

namespace pv::test {
namespace {

struct Search {
  HWND form;
  int id;
  HWND found = nullptr;
};

// Parts of controls are listed, too, and have numbers of their own.
BOOL CALLBACK take_control(HWND window, LPARAM search_address) {
  auto& search = *reinterpret_cast<Search*>(search_address);
  if (GetDlgCtrlID(window) != search.id || GetParent(window) != search.form) return TRUE;
  search.found = window;
  return FALSE;
}

}  // namespace

HWND child_window(HWND form, int id) {
  Search search{form, id};
  if (form) EnumChildWindows(form, &take_control, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace pv::test
