// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "dialogs/kit/accessible.h"
#include "dialogs/kit/control.h"

namespace pv {

/// A control that paints itself and takes the pointer and keys. Its text is its name for screen
/// readers.
class Canvas : public Control {
 public:
  Canvas(Form& form, int id, bool takes_focus, DWORD extended_style = 0);

  void repaint() const;

 protected:
  Caption caption() const override { return Caption::kNone; }
  void fill_window() override;
  void read_window() override;

  /// What screen readers are told: a picture without a value, unless overridden.
  virtual AccessibleDescription describe() const;
  void tell_value() const;

  bool has_focus() const { return window() && GetFocus() == window(); }
  SIZE inner_size() const;
  /// In the place of what cannot be shown.
  static void paint_hatch(HDC device, const RECT& area);

  /// Paints the whole inside of the control; what was there before is gone.
  virtual void paint(HDC device, const SIZE& size) = 0;
  /// The pointer goes down with its first or second button, moves while it is down, and is let go.
  virtual void pointer_down(POINT, bool /*second*/) {}
  virtual void pointer_moved(POINT) {}
  virtual void pointer_up() {}
  /// A key; true when it had a meaning.
  virtual bool key_down(WPARAM) { return false; }

 private:
  bool react(UINT message, WPARAM w, LPARAM l);
  void paint_buffered();
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                    DWORD_PTR canvas);

  bool takes_focus_;
  std::unique_ptr<AccessibleWindow> accessible_;
};

}  // namespace pv
