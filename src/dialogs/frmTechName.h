// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/kit/form.h"
#include "dialogs/kit/long_text.h"
#include "dialogs/technician_prompt.h"

namespace pv {

/// The prompt of the audit log. Its control ids: 1000 OK, 1001 Cancel, 1010 prompt, 1011 item
/// label, 1012 item label that is too long for the screen and scrolls, 1020 and 1021 name, 1022 and
/// 1023 comment (label and field).
class frmTechName final : public Form {
 public:
  frmTechName();

  void prepare(const std::wstring& item_label);
  /// What was entered; nothing unless the user confirmed.
  const std::optional<TechnicianNote>& note() const { return note_; }

 protected:
  void layout() override;
  Control* first_focus() override { return &txtName_; }

 private:
  void confirm();

  Label lblPrompt_;
  LongText lblItem_;
  FieldLabel lblName_;
  TextBox txtName_;
  FieldLabel lblComment_;
  TextBox txtComment_;
  Button cmdOK_;
  Button cmdCancel_;
  std::optional<TechnicianNote> note_;
};

}  // namespace pv
