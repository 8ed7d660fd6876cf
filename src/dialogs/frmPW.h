// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/variant.h"
#include "dialogs/kit/form.h"
#include "pvItems32.h"

namespace pv {

/// The password dialog. Its control ids: 1000 OK, 1001 Cancel, 1002 Modify, 1010 to 1012 labels,
/// 1020 to 1022 fields (password, new password, its repetition).
class frmPW final : public Form {
 public:
  frmPW();

  /// False when the store has no such password.
  bool prepare(_CPasswords* passwords, const VARIANT& index);

 protected:
  void layout() override;
  Control* first_focus() override { return &txtPW0_; }
  bool preview_key(WPARAM key, bool down) override;
  void on_deactivated() override { show_mask(true); }

 private:
  enum class Mode { kEnter, kModify };

  Ref<_CPassword> password() const;
  void set_mode(Mode mode);
  void show_mask(bool masked);
  void modify();
  void confirm();
  void confirm_entry();
  void confirm_change();
  void refuse_entry();
  void warn(int text_id) const;

  FieldLabel lblMisc0_;
  TextBox txtPW0_;
  FieldLabel lblMisc1_;
  TextBox txtPW1_;
  FieldLabel lblMisc2_;
  TextBox txtPW2_;
  Button cmdOK_;
  Button cmdModify_;
  Button cmdCancel_;

  Ref<_CPasswords> passwords_;
  Variant index_;
  Mode mode_ = Mode::kEnter;
  short tries_left_ = 0;
};

}  // namespace pv
