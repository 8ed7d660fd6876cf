// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "tests/dialogs/driver/dialog_driver.h"

// What an open dialog shows, line by line, for comparing one show with another.
namespace pv::dialogs_test {

using Lines = std::vector<std::string>;

/// Ids of all controls, in the order of their windows.
std::vector<int> control_ids(const Dialog& dialog);
std::wstring class_of(HWND window);

/// Title, size, and of every control: its place, its caption, whether it is visible and enabled.
Lines appearance(const Dialog& dialog);

/// What belongs to the user: texts, dates, choices, marks, with masks and locks; and the focus.
Lines contents(const Dialog& dialog);

/// Types, chooses and marks something else wherever the user can.
void change_everything(const Dialog& dialog);

}  // namespace pv::dialogs_test
