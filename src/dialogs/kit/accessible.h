// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>

#include "com/automation.h"
#include "com/ref.h"

namespace pv {

/// What a window says of itself to screen readers.
struct AccessibleDescription {
  std::wstring name;
  long role = 0;       // one of ROLE_SYSTEM_...; 0: that of the window class
  std::wstring value;  // empty: that of the window class
};

class AccessibleObject;

/// Answers screen readers for a window, as long as it lives: with the description, and with what
/// the platform knows for the rest. Ends before the window does.
class AccessibleWindow {
 public:
  AccessibleWindow(HWND window, std::function<AccessibleDescription()> describe);
  ~AccessibleWindow();
  AccessibleWindow(const AccessibleWindow&) = delete;
  AccessibleWindow& operator=(const AccessibleWindow&) = delete;

  /// Tells screen readers that the value has changed.
  void tell_value() const;

 private:
  LRESULT answer(WPARAM w);
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                    DWORD_PTR self);

  HWND window_;
  std::function<AccessibleDescription()> describe_;
  Ref<AccessibleObject> object_;
};

}  // namespace pv
