// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/input_box.h"
#include "dialogs/kit/form.h"
#include "dialogs/kit/form_layout.h"
#include "dialogs/kit/long_text.h"

namespace pv {

/// The input form. Its control ids: 1000 OK, 1001 Cancel, 1010 prompt, 1011 prompt that is too long
/// for the screen and scrolls, 1020 text, 1021 unit, 1022 date, 1023 time.
class frmInputBox final : public Form {
 public:
  frmInputBox();

  void prepare(const InputRequest& request);
  const Variant& value() const { return value_; }

 protected:
  void layout() override;
  Control* first_focus() override;

 private:
  TwipSize unit_size() const;
  Column fit_column(Twips unit_room, Twips highest_prompt) const;
  bool asks_for_text() const { return txtInput_.visible(); }
  void confirm();
  double entered_moment() const;

  LongText lblPrompt_;
  TextBox txtInput_;
  DateTimePicker dtDate_;
  DateTimePicker dtTime_;
  Label lblUnit_;
  Button butOK_;
  Button butCancel_;

  Variant value_;
};

}  // namespace pv
