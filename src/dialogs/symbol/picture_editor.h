// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>

#include "com/automation.h"
#include "com/ref.h"
#include "dialogs/kit/metrics.h"

namespace pv {

class Control;
class Form;

/// The two numbers that an editor remembers for its user; their meaning is the editor's own.
struct EditorSettings {
  long first = 0;
  long second = 15;
  bool operator==(const EditorSettings&) const = default;
};

/// The part of a form in which a symbol is drawn. It lives as long as its form and works without a
/// window, too.
class PictureEditor {
 public:
  virtual ~PictureEditor() = default;

  virtual void start_empty() = 0;
  virtual std::wstring symbol() const = 0;
  virtual void load(const std::wstring& symbol) = 0;
  virtual EditorSettings settings() const = 0;
  virtual void apply(const EditorSettings& settings) = 0;
  /// The picture of any symbol text, `size` pixels wide and high; the one being drawn stays. None
  /// for a text of another editor.
  virtual Ref<IPictureDisp> picture(const std::wstring& symbol, long size) = 0;

  /// The smallest size that shows everything; only while the form is shown.
  virtual TwipSize smallest_size() const = 0;
  virtual void place(const TwipBox& box) = 0;
  /// Gets the focus when the form opens; null: the first control that takes it.
  virtual Control* main_control() = 0;
  /// A key message before the form sees it; true takes it away.
  virtual bool translate(MSG& message) = 0;
};

/// The control that is registered as pvPicEdit32.pvPicEdit when there is one that works, else the
/// library's own editor. Its controls have ids from 1100.
std::unique_ptr<PictureEditor> make_picture_editor(Form& form);

}  // namespace pv
