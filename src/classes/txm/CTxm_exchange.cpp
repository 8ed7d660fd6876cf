// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "apartment/localized.h"
#include "apartment/message_title.h"
#include "apartment/shared_objects.h"
#include "classes/txm/CTxm.h"
#include "com/call.h"
#include "core/text/number_text.h"
#include "dialogs/message_box.h"
#include "dialogs/technician_prompt.h"
#include "resources/text_ids.h"

// Reading and writing one item: the order of the steps is part of the contract.
namespace pv {
namespace {

constexpr short kExclamation = 48;

}  // namespace

bool CTxm::read_parent(_CItem* item) const {
  const auto variables = result_of(item, &_CItem::get_Variables);
  const auto variable = result_of(variables, &_CVariables::get_Item, Variant(1L));
  const short parent_id = result_of(variable, &_CVariable::get_ParentVariable);
  if (parent_id <= 0) return true;
  Ref<_CItem> parent = item_with_id(parent_id);
  return parent && server_.read(station(), parent.in_out());
}

void CTxm::refuse(int text, _CItem* item, short level) const {
  MessageBoxRequest message;
  message.prompt = localized(text) + L"\r\n" + item_label(item) + L"\r\n" +
                   localized(TEXT_NECESSARY_LEVEL) + format_integer(level);
  message.picture = kExclamation;
  message.title = message_title();
  show_message_box(message);
}

bool CTxm::read(_CItem** item, bool with_parent, bool access_control) {
  if (off_line_ || !modem_connected()) {
    disconnect();
    return false;
  }
  select_protocol();
  if (with_parent && !read_parent(*item)) {
    disconnect();
    return false;
  }
  const bool was_read = server_.read(station(), item);
  // The device is asked first on purpose; a refusal only marks the value as not current.
  if (access_control && !allows(*item, &AccessRules::read_level)) {
    refuse(TEXT_READ_PROTECTED, *item, needed_level(*item, &AccessRules::read_level));
    call(*item, &_CItem::put_Dirty, short{1}, VARIANT_TRUE);
  }
  return was_read;
}

CTxm::WriteDecision CTxm::decide_write(_CItem* item) {
  if (historian_ == histDisabled || result_of(item, &_CItem::get_Historian) == VARIANT_FALSE) {
    return WriteDecision::kUnrecorded;
  }
  if (historian_ == histSilent) return WriteDecision::kRecorded;
  // The host may write again from a timer while the prompt is open: it cannot be asked twice.
  if (is_technician_prompt_open()) return WriteDecision::kRefused;
  const auto note = ask_technician(formatted(txmNameFull) + L" : " + item_label(item));
  if (!note) return WriteDecision::kCancelled;
  historian_tech_name_ = note->name;
  historian_comment_ = note->comment;
  return WriteDecision::kRecorded;
}

bool CTxm::write(_CItem** item, bool access_control) {
  if (off_line_) return false;
  if (access_control && !allows(*item, &AccessRules::write_level)) {
    refuse(TEXT_WRITE_PROTECTED, *item, needed_level(*item, &AccessRules::write_level));
    read(item, false, false);  // the item shows the device's value again
    return false;
  }
  if (!modem_connected()) return false;
  const WriteDecision decision = decide_write(*item);
  if (decision == WriteDecision::kRefused) return false;
  select_protocol();
  const bool done = decision == WriteDecision::kCancelled ? server_.read(station(), item)
                                                          : server_.write(station(), item);
  if (decision == WriteDecision::kRecorded) {
    // A copy: one technician signs, even if the host sets another name during the run.
    const TechnicianNote note{historian_tech_name_, historian_comment_};
    record_change(*item, note);
  }
  if (rules_of(*item).updates_password) password_ = password_from_device();
  return done;
}

STDMETHODIMP CTxm::ReadTxm(_CItem** item, VARIANT_BOOL read_parent, VARIANT_BOOL access_control,
                           VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    return read(required(item), read_parent != VARIANT_FALSE, access_control != VARIANT_FALSE);
  });
}

STDMETHODIMP CTxm::WriteTxm(_CItem** item, VARIANT_BOOL access_control,
                            VARIANT_BOOL* result) noexcept {
  return method_with_result(result,
                            [&] { return write(required(item), access_control != VARIANT_FALSE); });
}

}  // namespace pv
