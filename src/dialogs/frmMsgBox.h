// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>

#include "dialogs/kit/form.h"
#include "dialogs/kit/long_text.h"
#include "dialogs/message_box.h"

namespace pv {

/// The message box. Its control ids: 1000 to 1002 buttons, 1010 prompt, 1011 prompt that is too
/// long for the screen and scrolls, 1020 to 1023 icons (stop, question, exclamation, information).
class frmMsgBox final : public Form {
 public:
  explicit frmMsgBox(const MessageBoxRequest& request);

  /// A box that was ended from outside counts as cancelled where that is an answer.
  short result() const;

 protected:
  void layout() override;
  void on_opening() override;
  bool preview_key(WPARAM key, bool down) override;
  void on_close() override;
  Control* first_focus() override { return &bBut_[0]; }

 private:
  static constexpr int kButtons = 3;

  void prepare_buttons();
  void prepare_icon(short picture);
  std::wstring spoken() const;
  void press(int index);
  bool has_cancel() const;
  TwipSize button_size() const;
  TwipBox fit_prompt(Twips height_below);
  Twips row_width(const TwipSize& button) const;

  short set_;
  short result_ = 0;
  UINT sound_ = 0;
  Icon Image1_[4];
  LongText pInfo_;
  Button bBut_[kButtons];
  std::array<short, kButtons> tags_{};
};

}  // namespace pv
