// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/frmPW.h"

#include <algorithm>

#include "apartment/message_title.h"
#include "apartment/shared_objects.h"
#include "com/call.h"
#include "dialogs/kit/form_layout.h"
#include "dialogs/kit/host_window.h"
#include "dialogs/kit/thread_form.h"
#include "dialogs/message_box.h"
#include "dialogs/password_dialog.h"
#include "resources/text_ids.h"

namespace pv {
namespace {

constexpr int kHelpTopic = 158;
constexpr short kTries = 3;
constexpr short kStopPicture = 16;
constexpr wchar_t kMask = L'*';
constexpr Twips kFieldWidth = 2400;

}  // namespace

frmPW::frmPW()
    : Form(L"frmPW", kHelpTopic),
      lblMisc0_(*this, 1010),
      txtPW0_(*this, 1020, TextBox::Kind::kPassword),
      lblMisc1_(*this, 1011),
      txtPW1_(*this, 1021, TextBox::Kind::kPassword),
      lblMisc2_(*this, 1012),
      txtPW2_(*this, 1022, TextBox::Kind::kPassword),
      cmdOK_(*this, 1000, [this] { confirm(); }),
      cmdModify_(*this, 1002, [this] { modify(); }),
      cmdCancel_(*this, 1001, [this] { finish(false); }) {
  set_caption(TEXT_PASSWORD_TITLE);
  lblMisc0_.set_caption(TEXT_PASSWORD_ENTER);
  lblMisc1_.set_caption(TEXT_PASSWORD_NEW);
  lblMisc2_.set_caption(TEXT_PASSWORD_REPEAT);
  cmdModify_.set_caption(TEXT_MODIFY);
  set_answers(cmdOK_, cmdCancel_);
}

Ref<_CPassword> frmPW::password() const {
  return result_of(passwords_, &_CPasswords::get_Item, index_);
}

bool frmPW::prepare(_CPasswords* passwords, const VARIANT& index) {
  return attempt([&] {
    passwords_ = passwords;
    index_ = index;
    txtPW1_.set_text(L"");
    txtPW2_.set_text(L"");
    const bool is_open = result_of(password(), &_CPassword::Status) != VARIANT_FALSE;
    // A password can be changed only while it is open.
    txtPW0_.set_text(is_open ? result_of(password(), &_CPassword::get_Reference) : std::wstring());
    cmdModify_.set_enabled(is_open);
    tries_left_ = kTries;
    show_mask(true);
    set_mode(Mode::kEnter);
  });
}

void frmPW::set_mode(Mode mode) {
  mode_ = mode;
  const bool modifies = mode == Mode::kModify;
  txtPW0_.set_locked(modifies);
  for (Control* control : {static_cast<Control*>(&lblMisc1_), static_cast<Control*>(&txtPW1_),
                           static_cast<Control*>(&lblMisc2_), static_cast<Control*>(&txtPW2_)}) {
    control->set_visible(modifies);
  }
  refresh();
}

// While Ctrl is held down, the user sees what was typed.
bool frmPW::preview_key(WPARAM key, bool down) {
  if (key == VK_CONTROL) show_mask(!down);
  return false;
}

void frmPW::show_mask(bool masked) {
  for (TextBox* field : {&txtPW0_, &txtPW1_, &txtPW2_}) field->set_mask(masked ? kMask : L'\0');
}

void frmPW::modify() {
  if (mode_ == Mode::kModify) return;
  set_mode(Mode::kModify);
  txtPW1_.set_text(L"");
  txtPW2_.set_text(L"");
  txtPW1_.focus();
  cmdModify_.set_enabled(false);
}

void frmPW::confirm() {
  if (mode_ == Mode::kEnter) {
    confirm_entry();
  } else {
    confirm_change();
  }
}

void frmPW::confirm_entry() {
  const std::wstring entered = txtPW0_.typed_text();
  call(password(), &_CPassword::put_Current, Bstr(entered));
  if (entered.empty()) {
    result_of(passwords_, &_CPasswords::RaiseOnPasswordReset, to_short(index_));
    finish(true);
  } else if (result_of(password(), &_CPassword::Status) != VARIANT_FALSE) {
    result_of(passwords_, &_CPasswords::RaiseOnPasswordSet, to_short(index_));
    finish(true);
  } else {
    refuse_entry();
  }
}

// The wrong text stays in the password, which keeps it closed.
void frmPW::refuse_entry() {
  warn(TEXT_PASSWORD_INCORRECT);
  txtPW0_.set_text(L"");
  txtPW0_.focus();
  if (--tries_left_ <= 0) finish(false);
}

void frmPW::confirm_change() {
  const std::wstring changed = txtPW1_.typed_text();
  if (changed != txtPW2_.typed_text()) {
    warn(TEXT_PASSWORD_REPEAT_NEW);
    txtPW2_.focus();
    return;
  }
  call(password(), &_CPassword::put_Current, Bstr(changed));
  call(password(), &_CPassword::put_Reference, Bstr(changed));
  finish(true);
}

void frmPW::warn(int text_id) const {
  MessageBoxRequest message;
  message.prompt = localized(text_id);
  message.picture = kStopPicture;
  message.title = message_title();
  message.owner = window();
  show_message_box(message);
}

void frmPW::layout() {
  const Twips labels = widest({&lblMisc0_, &lblMisc1_, &lblMisc2_});
  const std::initializer_list<Control*> buttons{&cmdOK_, &cmdModify_, &cmdCancel_};
  const Column column{kFormMargin, std::max(labels + kFormGap + kFieldWidth, row_width(buttons)),
                      labels};
  Twips top = place_field(lblMisc0_, txtPW0_, column, kFormMargin);
  if (mode_ == Mode::kModify) {
    top = place_field(lblMisc1_, txtPW1_, column, top);
    top = place_field(lblMisc2_, txtPW2_, column, top);
  }
  const Twips bottom = place_buttons(buttons, column, top + kFormGap);
  resize_inner({column.right() + kFormMargin, bottom + kFormMargin});
}

bool edit_password(_CPasswords* passwords, const VARIANT& index) {
  if (is_in_use<frmPW>()) return false;  // asked again from within the dialog
  const FormUse<frmPW> form;
  if (!form->prepare(passwords, index)) return false;
  form->show_modal(host_window());
  return form->ok();
}

}  // namespace pv
