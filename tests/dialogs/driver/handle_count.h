// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv::dialogs_test {

/// What this process holds; only differences mean something.
struct HandleCount {
  long gdi;          // fonts, bitmaps, device contexts
  long user;         // windows, icons, menus
  long windows;      // top-level windows of this thread
  long threads;      // of this process
  long allocations;  // of C++ code
};

HandleCount count_handles();

}  // namespace pv::dialogs_test
