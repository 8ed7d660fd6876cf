// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/frmTechName.h"

#include "dialogs/kit/form_layout.h"
#include "dialogs/kit/host_window.h"
#include "dialogs/kit/thread_form.h"
#include "resources/text_ids.h"

namespace pv {
namespace {

constexpr Twips kTextWidth = 5400;

}  // namespace

frmTechName::frmTechName()
    : Form(L"frmTechName"),
      lblPrompt_(*this, 1010),
      lblItem_(*this, 1011, 1012),
      lblName_(*this, 1020),
      txtName_(*this, 1021),
      lblComment_(*this, 1022),
      txtComment_(*this, 1023),
      cmdOK_(*this, 1000, [this] { confirm(); }),
      cmdCancel_(*this, 1001, [this] { finish(false); }) {
  set_caption(TEXT_TECHNICIAN_TITLE);
  lblPrompt_.set_caption(TEXT_TECHNICIAN_PROMPT);
  lblName_.set_caption(TEXT_TECHNICIAN_NAME);
  lblComment_.set_caption(TEXT_TECHNICIAN_COMMENTS);
  set_answers(cmdOK_, cmdCancel_);
}

void frmTechName::prepare(const std::wstring& item_label) {
  lblItem_.set_text(item_label);
  txtName_.set_text(L"");
  txtComment_.set_text(L"");
  note_.reset();
}

void frmTechName::confirm() {
  note_ = TechnicianNote{txtName_.typed_text(), txtComment_.typed_text()};
  finish(true);
}

void frmTechName::layout() {
  const Column column{kFormMargin, kTextWidth, widest({&lblName_, &lblComment_})};
  Twips top = place_text(lblPrompt_, column, kFormMargin);
  const Twips fields = txtName_.natural_size().height + txtComment_.natural_size().height;
  const Twips below_item = fields + 4 * kFormGap + cmdOK_.natural_size().height + kFormMargin;
  top = place_long_text(lblItem_, column, top,
                        work_area().height - frame().height - top - below_item);
  top = place_field(lblName_, txtName_, column, top);
  top = place_field(lblComment_, txtComment_, column, top);
  const Twips bottom = place_buttons({&cmdOK_, &cmdCancel_}, column, top + kFormGap);
  resize_inner({column.right() + kFormMargin, bottom + kFormMargin});
}

bool is_technician_prompt_open() { return is_in_use<frmTechName>(); }

std::optional<TechnicianNote> ask_technician(const std::wstring& item_label) {
  const FormUse<frmTechName> form;
  form->prepare(item_label);
  form->show_modal(host_window());
  return form->note();
}

}  // namespace pv
