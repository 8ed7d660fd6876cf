// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "apartment/localized.h"
#include "apartment/thread_state.h"
#include "dialogs/kit/control.h"
#include "dialogs/kit/metrics.h"

namespace pv {

/// What all modal dialogs share. A form lives as long as it is loaded; it has a window only while
/// it is shown, so between shows nothing is left that could answer messages or show old content.
///
/// A form is prepared by setting its controls, shown with `show_modal`, and ends by `hide`. Inside
/// `show_modal` run the form's own virtual functions and the callbacks of its controls; an
/// exception in one of them ends the show and comes out of `show_modal`.
class Form : public ThreadBound {
 public:
  /// `name` (frmMsgBox) is a property of the window, by which test tools find it. `help_topic` is
  /// opened by F1 when the host set a help file that exists; 0 for none.
  explicit Form(const wchar_t* name, int help_topic = 0);
  ~Form() override;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  /// Shows the form until it is hidden, its owner is destroyed, or the thread is told to quit (the
  /// message is passed on). `owner` may be any window, or none. False when it is shown already.
  bool show_modal(HWND owner);
  void hide();
  bool is_shown() const { return shown_; }
  /// Whether the user confirmed the last show. False until then, and when it ended in any other
  /// way.
  bool ok() const { return ok_; }

  HWND window() const { return window_; }
  /// Resolution and font; only while the form is shown.
  const Metrics& metrics() const { return *metrics_; }

  /// Fetches all texts again and lays the form out anew, keeping what the user typed and chose.
  void refresh();

 protected:
  void set_caption(int text_id);
  void set_title(std::wstring title);
  std::wstring title() const;
  /// Ends the show with the user's answer.
  void finish(bool ok);
  /// Captions of the two buttons that most forms have; Enter presses OK.
  void set_answers(Button& ok, Button& cancel);
  /// Enter presses it.
  void set_default(const Button& button) { default_id_ = button.id(); }
  /// Whether the close box looks as if it worked.
  void enable_close_box(bool enabled) { close_box_enabled_ = enabled; }

  /// Lets the user resize the form; its layout then fills `wanted_inner`.
  void enable_sizing() { sizable_ = true; }

  /// Places all controls and resizes the form. Called when the form is shown, relabelled and
  /// resized by the user.
  virtual void layout() = 0;
  void resize_outer(const TwipSize& size) { outer_ = size; }
  void resize_inner(const TwipSize& size);
  /// The width and height that borders and title bar add.
  TwipSize frame() const;
  /// The part of the owner's monitor that programs may use.
  TwipSize work_area() const;

  /// What the user or `place_outer` made of the inside of the form, but at least `smallest`.
  TwipSize wanted_inner(const TwipSize& smallest);
  /// The whole form on the screen; only while it is shown.
  TwipBox outer_box() const;
  /// Opens the form there instead of in the middle; only from `on_opening`.
  void place_outer(const TwipBox& box);
  /// The window is there, but not yet seen.
  virtual void on_opening() {}
  /// The window is about to go.
  virtual void on_closing() {}

  /// The control that has the focus when the form opens; the first one that takes it by default.
  virtual Control* first_focus() { return nullptr; }
  /// The close box. What it does is the form's own: hiding it, unless overridden.
  virtual void on_close() { hide(); }
  virtual void on_escape() { on_close(); }
  /// Keys, before the controls see them; true takes the key away from them.
  virtual bool preview_key(WPARAM, bool /*down*/) { return false; }
  /// Messages before keys are looked at; true takes the message away.
  virtual bool preview_message(MSG&) { return false; }
  /// Another window became active.
  virtual void on_deactivated() {}

 private:
  friend class Control;

  void attach(Control& control) { controls_.push_back(&control); }
  void open(HWND owner);
  void show_captions();
  void move_windows();
  void focus_first();
  void run();
  bool translate(MSG& message);
  void close_window();
  void forget_window();
  bool handle(UINT message, WPARAM w, LPARAM l);
  void limit_size(MINMAXINFO& limits) const;
  void follow_size();
  void notify(int id, WORD code);
  RECT work_area_pixels() const;
  void protect(const std::function<void()>& reaction);
  static INT_PTR CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l);

  const wchar_t* name_;
  int help_topic_;
  int caption_id_ = 0;
  std::wstring title_;
  std::vector<Control*> controls_;
  int default_id_ = 0;
  bool close_box_enabled_ = true;
  bool sizable_ = false;

  bool shown_ = false;
  bool ok_ = false;
  HWND window_ = nullptr;
  HMONITOR monitor_ = nullptr;
  bool placed_ = false;
  bool done_ = true;
  bool moving_ = false;  // the size changes by the layout, not by the user
  TwipSize outer_;
  TwipSize wanted_;  // what the user made of it
  TwipSize smallest_;
  std::optional<Metrics> metrics_;
  std::exception_ptr failure_;
};

}  // namespace pv
