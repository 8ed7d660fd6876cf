// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/frmSymbolEdit.h"

#include <algorithm>

#include "com/failure.h"
#include "core/symbols/symbol_text.h"
#include "core/text/number_text.h"
#include "dialogs/kit/form_layout.h"
#include "dialogs/kit/host_window.h"
#include "dialogs/kit/thread_form.h"
#include "dialogs/message_box.h"
#include "dialogs/symbol_editor.h"
#include "host/window_memory.h"
#include "platform/profile.h"
#include "resources/text_ids.h"

namespace pv {
namespace {

constexpr const wchar_t* kSection = L"SymbolEditor";
constexpr const wchar_t* kSettingsKey = L"Settings";

// Without a settings file nothing is remembered.
bool can_remember() { return !thread_state().ini_file.empty(); }

PlacementSlot placement_slot() { return {thread_state().ini_file, kSection, L"Window"}; }

// Two numbers with "|" between them; what is missing counts as 0, as unreadable numbers do.
EditorSettings stored_settings() {
  if (!can_remember()) return {};
  const std::wstring text = read_profile(thread_state().ini_file, kSection, kSettingsKey, L"0|15");
  const auto bar = text.find(L'|');
  const std::wstring second = bar == std::wstring::npos ? L"" : text.substr(bar + 1);
  return {lenient_integer<long>(text.substr(0, bar)), lenient_integer<long>(second)};
}

void store_settings(const EditorSettings& settings) {
  if (!can_remember()) return;
  write_profile(thread_state().ini_file, kSection, kSettingsKey,
                format_integer(settings.first) + L"|" + format_integer(settings.second));
}

}  // namespace

frmSymbolEdit::frmSymbolEdit()
    : Form(L"frmSymbolEdit"),
      pedMisc_(make_picture_editor(*this)),
      cmdOK_(*this, 1000, [this] { confirm(); }),
      cmdCancel_(*this, 1001, [this] { finish(false); }) {
  set_caption(TEXT_SYMBOL_TITLE);
  set_answers(cmdOK_, cmdCancel_);
  enable_sizing();
}

// The form may have been loaded for pictures long before: the settings of now count.
void frmSymbolEdit::prepare(const std::wstring& symbol) {
  attempt([this] { pedMisc_->apply(stored_settings()); });
  symbol_ = symbol;
  if (symbol.empty()) {
    pedMisc_->start_empty();
    symbol_ = pedMisc_->symbol();
  }
  pedMisc_->load(symbol_);
  attempt([this] { opened_ = pedMisc_->symbol(); });
}

bool frmSymbolEdit::is_changed() const {
  bool changed = false;
  attempt([&] { changed = pedMisc_->symbol() != opened_; });
  return changed;
}

bool frmSymbolEdit::may_discard() const {
  constexpr short kOkCancel = 1, kQuestionPicture = 32, kOk = 1;
  MessageBoxRequest question;
  question.prompt = localized(TEXT_SYMBOL_DISCARD);
  question.title = title();
  question.buttons = kOkCancel;
  question.picture = kQuestionPicture;
  question.owner = window();
  return show_message_box(question) == kOk;
}

// A key that is easily struck; the button and the close box are meant.
void frmSymbolEdit::on_escape() {
  if (!is_changed() || may_discard()) on_close();
}

void frmSymbolEdit::confirm() {
  symbol_ = pedMisc_->symbol();
  attempt([this] { store_settings(pedMisc_->settings()); });
  finish(true);
}

Ref<IPictureDisp> frmSymbolEdit::picture(const std::wstring& symbol) const {
  return pedMisc_->picture(symbol, Symbol::kSide);
}

void frmSymbolEdit::on_opening() {
  if (!can_remember()) return;
  const auto placement = stored_placement(placement_slot());
  if (!placement) return;
  place_outer({static_cast<Twips>(placement->left), static_cast<Twips>(placement->top),
               static_cast<Twips>(placement->width), static_cast<Twips>(placement->height)});
}

void frmSymbolEdit::on_closing() {
  if (!can_remember()) return;
  const TwipBox box = outer_box();
  const auto twips = [](Twips length) { return static_cast<double>(length); };
  attempt([&] {
    store_placement({twips(box.left), twips(box.top), twips(box.width), twips(box.height), 0},
                    placement_slot());
  });
}

void frmSymbolEdit::layout() {
  const TwipSize editor = pedMisc_->smallest_size();
  const Twips buttons = cmdOK_.natural_size().height;
  const TwipSize edges{2 * kFormMargin, 2 * kFormMargin + 2 * kFormGap + buttons};
  const Twips narrowest = std::max(editor.width, row_width({&cmdOK_, &cmdCancel_}));
  const TwipSize inner = wanted_inner({narrowest + edges.width, editor.height + edges.height});
  const Column column{kFormMargin, inner.width - edges.width, 0};
  const Twips height = inner.height - edges.height;
  pedMisc_->place({column.left, kFormMargin, column.width, height});
  place_buttons({&cmdOK_, &cmdCancel_}, column, kFormMargin + height + 2 * kFormGap);
  resize_inner(inner);
}

bool edit_symbol(std::wstring& symbol) {
  if (is_in_use<frmSymbolEdit>()) return false;  // asked again from within the editor
  const FormUse<frmSymbolEdit> form;
  form->prepare(symbol);
  form->show_modal(host_window());
  if (form->ok()) symbol = form->symbol();
  return form->ok();
}

Ref<IPictureDisp> picture_of_symbol(const std::wstring& symbol) {
  return thread_form<frmSymbolEdit>().picture(symbol);
}

}  // namespace pv
