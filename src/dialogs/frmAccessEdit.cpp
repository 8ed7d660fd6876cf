// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/frmAccessEdit.h"

#include <algorithm>

#include "com/call.h"
#include "core/access/access_word.h"
#include "core/text/number_text.h"
#include "dialogs/access_editor.h"
#include "dialogs/kit/form_layout.h"
#include "dialogs/kit/host_window.h"
#include "dialogs/kit/thread_form.h"
#include "resources/text_ids.h"

namespace pv {
namespace {

constexpr int kLevels[] = {TEXT_ACCESS_ALWAYS, TEXT_ACCESS_WITH_PW1, TEXT_ACCESS_WITH_PW2,
                           TEXT_ACCESS_WITH_PW3, TEXT_ACCESS_WITH_PW4};

constexpr Twips kListWidth = 3000;
constexpr Twips kFrameTop = 300;  // space for the heading

void select_level(DropDownList& list, short level) {
  if (!list.select(level)) throw automation_error(ErrorCode::kInvalidCall, L"password level");
}

}  // namespace

frmAccessEdit::frmAccessEdit()
    : Form(L"frmAccessEdit"),
      fraMisc_(*this, 1010),
      lblMisc0_(*this, 1020),
      cmbReadPW_(*this, 1021),
      lblMisc1_(*this, 1022),
      cmbWritePW_(*this, 1023),
      chkPWUpdate_(*this, 1030),
      chkPWMask_(*this, 1031),
      cmdOK_(*this, 1000, [this] { confirm(); }),
      cmdCancel_(*this, 1001, [this] { finish(false); }) {
  set_caption(TEXT_ACCESS_TITLE);
  lblMisc0_.set_caption(TEXT_ACCESS_READ);
  lblMisc1_.set_caption(TEXT_ACCESS_WRITE);
  chkPWUpdate_.set_caption(TEXT_ACCESS_UPDATE);
  chkPWMask_.set_caption(TEXT_ACCESS_MASK);
  for (DropDownList* list : {&cmbReadPW_, &cmbWritePW_}) {
    list->set_entries({std::begin(kLevels), std::end(kLevels)});
  }
  set_answers(cmdOK_, cmdCancel_);
}

bool frmAccessEdit::prepare(_CTxm* txm, _CItem* item) {
  txm_ = txm;
  item_ = item;
  bool complete = attempt([&] {
    fraMisc_.set_text(result_of(txm_, &_CTxm::get_TxmTypeName) + L": " +
                      format_integer(result_of(item_, &_CItem::get_ItemID)) + L" - " +
                      result_of(item_, &_CItem::get_Caption, short{1}));
  });
  complete &=
      attempt([&] { select_level(cmbReadPW_, result_of(txm_, &_CTxm::GetReadPWLevel, item)); });
  complete &=
      attempt([&] { select_level(cmbWritePW_, result_of(txm_, &_CTxm::GetWritePWLevel, item)); });
  complete &= attempt([&] {
    chkPWUpdate_.set_checked(result_of(txm_, &_CTxm::IsUpdatePW, item) != VARIANT_FALSE);
  });
  complete &= attempt([&] {
    chkPWMask_.set_checked(result_of(txm_, &_CTxm::IsPasswordMask, item) != VARIANT_FALSE);
  });
  return complete;
}

// A list without a choice counts as -1: the word shows it, and so it is wanted.
void frmAccessEdit::confirm() {
  const short word = access_word({cmbReadPW_.selection(), cmbWritePW_.selection(),
                                  chkPWUpdate_.checked(), chkPWMask_.checked()});
  call(item_, &_CItem::put_Access, word);
  finish(true);
}

void frmAccessEdit::layout() {
  const Twips labels = widest({&lblMisc0_, &lblMisc1_});
  // The heading comes from the host and may be longer than the screen is wide.
  const Twips heading = std::min(widest({&fraMisc_}), work_area().width / 2);
  const Twips inner =
      std::max({labels + kFormGap + kListWidth, widest({&chkPWUpdate_, &chkPWMask_}), heading});
  const Column column{2 * kFormMargin, inner, labels};
  Twips top = place_field(lblMisc0_, cmbReadPW_, column, kFormMargin + kFrameTop);
  top = place_field(lblMisc1_, cmbWritePW_, column, top);
  top = place_text(chkPWUpdate_, column, top);
  top = place_text(chkPWMask_, column, top);
  const Column outer{kFormMargin, inner + 2 * kFormMargin, 0};
  fraMisc_.place({outer.left, kFormMargin, outer.width, top - kFormMargin});
  fraMisc_.fit_heading(outer.width);
  const Twips bottom = place_buttons({&cmdOK_, &cmdCancel_}, outer, top + kFormMargin);
  resize_inner({outer.right() + kFormMargin, bottom + kFormMargin});
}

bool edit_access(_CTxm* txm, _CItem* item) {
  if (is_in_use<frmAccessEdit>()) return false;  // asked again from within the editor
  const FormUse<frmAccessEdit> form;
  form->prepare(txm, item);  // the editor opens with what could be filled in
  form->show_modal(host_window());
  return form->ok();
}

}  // namespace pv
