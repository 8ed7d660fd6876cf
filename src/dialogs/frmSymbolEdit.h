// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/kit/form.h"
#include "dialogs/symbol/picture_editor.h"

namespace pv {

/// The symbol editor. Its control ids: 1000 OK, 1001 Cancel, from 1100 those of the drawing part,
/// which is the control that is registered for it or the library's own.
class frmSymbolEdit final : public Form {
 public:
  frmSymbolEdit();

  void prepare(const std::wstring& symbol);
  const std::wstring& symbol() const { return symbol_; }
  Ref<IPictureDisp> picture(const std::wstring& symbol) const;

 protected:
  void layout() override;
  Control* first_focus() override { return pedMisc_->main_control(); }
  void on_opening() override;
  void on_closing() override;
  void on_escape() override;
  bool preview_message(MSG& message) override { return pedMisc_->translate(message); }

 private:
  void confirm();
  bool is_changed() const;
  bool may_discard() const;

  std::unique_ptr<PictureEditor> pedMisc_;
  Button cmdOK_;
  Button cmdCancel_;

  std::wstring symbol_;
  std::wstring opened_;  // as the editor itself writes the symbol
};

}  // namespace pv
