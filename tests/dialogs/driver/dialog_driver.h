// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <windows.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/dialogs/driver/automation_client.h"
#include "tests/support/dialogs/child_window.h"

// Dialogs are shown by one thread and driven by another, as a user would: find the window, read it,
// press something. Nothing here waits without a limit.
namespace pv::dialogs_test {

/// Polls until the condition holds; false after half a minute, so that a busy machine does no harm.
bool wait_until(const std::function<bool()>& condition,
                std::chrono::milliseconds limit = std::chrono::seconds(30));

/// A rectangle in twips, relative to the inside of the dialog.
struct TwipRect {
  long left, top, right, bottom;
  long width() const { return right - left; }
  long height() const { return bottom - top; }
};

/// An open dialog of another thread.
class Dialog {
 public:
  explicit Dialog(HWND window) : window_(window) {}

  HWND window() const { return window_; }
  bool open() const { return IsWindow(window_); }
  bool wait_closed() const {
    return wait_until([this] { return !open(); });
  }
  std::wstring title() const { return text_of(window_); }

  HWND control(int id) const { return test::child_window(window_, id); }
  bool shows(int id) const { return (GetWindowLongW(control(id), GWL_STYLE) & WS_VISIBLE) != 0; }
  std::wstring text(int id) const { return text_of(control(id)); }
  /// The text as the user reads it, without the mark of the access key.
  std::wstring caption(int id) const;
  /// The lower-case access key, or 0.
  wchar_t access_key(int id) const;
  int focused() const;

  void click(int id) const { PostMessageW(control(id), BM_CLICK, 0, 0); }
  void press_close_box() const { PostMessageW(window_, WM_SYSCOMMAND, SC_CLOSE, 0); }
  void close() const { PostMessageW(window_, WM_CLOSE, 0, 0); }
  /// A key for the control that has the focus.
  void press_key(WORD key) const;
  void hold_key(WORD key) const;
  void release_key(WORD key) const;
  void press_alt(wchar_t letter) const;
  /// Strikes a real key, with another one held down, until the condition holds. A stroke that
  /// comes while the platform is still moving the focus gets lost; then it is repeated.
  bool stroke(WORD key, WORD with, const std::function<bool()>& condition) const;
  bool stroke_to_close(WORD key, WORD with = 0) const {
    return stroke(key, with, [this] { return !open(); });
  }
  /// Waits until the dialog has handled everything that was posted to it.
  void drain() const;

  void type(int id, const std::wstring& text) const;
  bool enabled(int id) const { return IsWindowEnabled(control(id)) != FALSE; }
  /// A message to a control and its answer.
  LRESULT ask(int id, UINT message, WPARAM w = 0, LPARAM l = 0) const;
  /// The selected range of a text box, from and up to.
  std::pair<int, int> selection(int id) const;
  /// The controls that show less than their whole text, overlap others or stand too near the
  /// edge, and whether the dialog leaves the screen, in words; empty when all is well.
  std::string layout_faults() const;
  /// Whether it stands in the middle of its owner's monitor.
  bool is_centred() const;

  RECT pixels(int id) const;
  TwipRect twips(int id, int dpi) const;
  SIZE outer() const;
  SIZE inner() const;

 private:
  static std::wstring text_of(HWND window);
  HWND focus_window() const;
  bool bring_to_front() const;

  HWND window_;
};

/// A real key stroke for the active window, with another key held down.
void stroke_key(WORD key, WORD with = 0);

/// Dialogs of a thread that are open, by the name of the form; the one opened last comes first.
std::vector<HWND> open_dialogs(DWORD thread, const wchar_t* form);

/// Waits for `count` open dialogs of a thread; the one opened last. Fails the test after a while.
Dialog wait_for_dialog(DWORD thread, const wchar_t* form = L"frmMsgBox", std::size_t count = 1);

using Script = std::function<void(const Dialog&)>;

/// Shows the box on this thread while another thread runs the script, and gives the answer. A box
/// that the script leaves open is closed by its last button.
long show(const Utility& utility, const Box& box, const Script& script);

/// Runs the script beside `shower`, which shows one dialog on this thread. A dialog that the script
/// leaves open is closed.
void drive(const wchar_t* form, const std::function<void()>& shower, const Script& script);

/// Reads and closes the message that appears over a dialog.
struct Message {
  std::wstring title;
  std::wstring prompt;
  bool stop_icon = false;
};
Message answer_message(const Dialog& over);

/// A visible window of this thread with a child, as an owner; also runs functions on its thread.
class HostWindow {
 public:
  HostWindow();
  ~HostWindow();
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;

  HWND window() const { return window_; }
  HWND child() const { return child_; }
  /// Runs the function on the window's thread: at once, or when its turn comes.
  void send(std::function<void()> function) const;
  void post(std::function<void()> function) const;

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l);

  HWND window_;
  HWND child_;
};

/// Makes the dialogs appear in another resolution as long as it lives.
class Resolution {
 public:
  explicit Resolution(int dpi);
  ~Resolution();
  Resolution(const Resolution&) = delete;
  Resolution& operator=(const Resolution&) = delete;
};

}  // namespace pv::dialogs_test
