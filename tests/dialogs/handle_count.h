#pragma once

namespace pv::dialogs_test {

/// How many handles are in use; only differences mean something.
struct HandleCount {
  long gdi;      // fonts, bitmaps, device contexts
  long user;     // windows, icons, menus
  long windows;  // top-level windows of this thread
};

HandleCount count_handles();

}  // namespace pv::dialogs_test
