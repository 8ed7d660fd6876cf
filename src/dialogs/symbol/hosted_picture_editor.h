// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>

#include "dialogs/kit/control.h"
#include "dialogs/symbol/control_site.h"
#include "dialogs/symbol/picture_editor.h"
#include "host/late_bound.h"

namespace pv {

/// A picture editor that is a control of somebody else, reached late bound:
///   NewSymbol                        starts an empty symbol
///   Symbol (text, get and put)       the symbol being drawn
///   Setting1, Setting2 (32-bit, get and put)
///   SymbolPicture (Symbol, Size)     a picture object, Size pixels wide and high
/// Its id is 1100. It is active in place while the form is shown.
class HostedPictureEditor final : public PictureEditor, private Control {
 public:
  /// None when no such control is registered or it cannot be used.
  static std::unique_ptr<PictureEditor> create(Form& form);

  HostedPictureEditor(Form& form, Ref<IOleObject> control);
  ~HostedPictureEditor() override;
  HostedPictureEditor(const HostedPictureEditor&) = delete;
  HostedPictureEditor& operator=(const HostedPictureEditor&) = delete;

  void start_empty() override;
  std::wstring symbol() const override;
  void load(const std::wstring& symbol) override;
  EditorSettings settings() const override;
  void apply(const EditorSettings& settings) override;
  Ref<IPictureDisp> picture(const std::wstring& symbol, long size) override;

  TwipSize smallest_size() const override;
  void place(const TwipBox& box) override { Control::place(box); }
  Control* main_control() override { return nullptr; }
  bool translate(MSG& message) override;

 protected:
  Caption caption() const override { return Caption::kNone; }
  void fill_window() override;
  void read_window() override;
  void on_moved() override;

 private:
  RECT inside() const;
  void take_tab_stop() const;

  Ref<IOleObject> control_;
  LateBound members_;
  Ref<ControlSite> site_;
};

}  // namespace pv
