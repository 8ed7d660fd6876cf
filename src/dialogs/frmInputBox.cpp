// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/frmInputBox.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "com/failure.h"
#include "core/text/library_version.h"
#include "dialogs/kit/thread_form.h"
#include "platform/locale.h"
#include "resources/text_ids.h"

namespace pv {
namespace {

constexpr wchar_t kMask = L'*';
constexpr Twips kFieldWidth = 3000;
constexpr Twips kTextWidth = 4200;
constexpr Twips kLongestUnit = 2400;  // longer ones break

std::optional<SYSTEMTIME> read_moment(const Variant& value) {
  SYSTEMTIME moment{};
  bool read = false;
  attempt([&] { read = VariantTimeToSystemTime(to_type(value, VT_DATE).date, &moment); });
  return read ? std::optional(moment) : std::nullopt;
}

// Some locales end a date with a full stop, which the platform writes but does not always read.
Variant without_third_stop(const Variant& value) {
  std::wstring text = to_text(value);
  int stops = 0;
  for (wchar_t& c : text)
    if (c == L'.' && ++stops == 3) c = L' ';
  return Variant(text);
}

// A date, a number or a date text; anything else means now.
SYSTEMTIME moment_of(const Variant& initial) {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  if (initial.vt == VT_EMPTY || is_empty_text(initial)) return now;
  if (const auto moment = read_moment(initial)) return *moment;
  if (initial.vt != VT_BSTR) return now;
  return read_moment(without_third_stop(initial)).value_or(now);
}

double variant_time(SYSTEMTIME moment) {
  double time = 0;
  SystemTimeToVariantTime(&moment, &time);
  return time;
}

}  // namespace

frmInputBox::frmInputBox()
    : Form(L"frmInputBox"),
      lblPrompt_(*this, 1010, 1011),
      txtInput_(*this, 1020),
      dtDate_(*this, 1022, DateTimePicker::Kind::kDate),
      dtTime_(*this, 1023, DateTimePicker::Kind::kTime),
      lblUnit_(*this, 1021),
      butOK_(*this, 1000, [this] { confirm(); }),
      butCancel_(*this, 1001, [this] { finish(false); }) {
  dtDate_.set_caption(TEXT_COLUMN_DATE);
  dtTime_.set_caption(TEXT_COLUMN_TIME);
  set_answers(butOK_, butCancel_);
}

void frmInputBox::prepare(const InputRequest& request) {
  value_ = Variant();
  const bool asks_text = request.kind != InputKind::kDateTime;
  set_title(request.title.empty() ? library_title() : request.title);
  lblPrompt_.set_text(request.prompt);
  lblUnit_.set_text(request.unit);
  txtInput_.set_visible(asks_text);
  txtInput_.set_mask(request.kind == InputKind::kMasked ? kMask : L'\0');
  txtInput_.set_text(asks_text ? to_text(request.initial) : std::wstring());
  for (DateTimePicker* picker : {&dtDate_, &dtTime_}) {
    picker->set_visible(!asks_text);
    picker->set_value(moment_of(asks_text ? Variant() : request.initial));
  }
}

Control* frmInputBox::first_focus() {
  if (asks_for_text()) return &txtInput_;
  return &dtDate_;
}

// Whole days of the one picker, time of day of the other, whatever its own date. Days before day
// zero are negative, and the time of day is then counted away from zero, too.
double frmInputBox::entered_moment() const {
  SYSTEMTIME date = dtDate_.value();
  date.wHour = date.wMinute = date.wSecond = date.wMilliseconds = 0;
  SYSTEMTIME time = dtTime_.value();
  // On day zero the number of the moment is the time of day alone.
  time.wYear = 1899;
  time.wMonth = 12;
  time.wDay = 30;
  const double days = variant_time(date);
  return days + std::copysign(variant_time(time), days);
}

void frmInputBox::confirm() {
  value_ = asks_for_text() ? Variant(txtInput_.typed_text()) : Variant(entered_moment());
  finish(true);
}

TwipSize frmInputBox::unit_size() const {
  if (lblUnit_.text().empty()) return {};
  const TwipSize size = lblUnit_.natural_size();
  return size.width <= kLongestUnit ? size : lblUnit_.natural_size(kLongestUnit);
}

// A prompt that would be too high gets a wider form.
Column frmInputBox::fit_column(Twips unit_room, Twips highest_prompt) const {
  const Twips picker = std::max(dtDate_.natural_size().width, dtTime_.natural_size().width);
  const Twips fields = asks_for_text() ? kFieldWidth : 2 * picker + kFormGap;
  Column column{kFormMargin, std::max(kTextWidth, fields + unit_room), 0};
  if (lblPrompt_.natural_size(column.width).height > highest_prompt)
    column.width = std::max(column.width, work_area().width * 5 / 8);
  return column;
}

void frmInputBox::layout() {
  const TwipSize unit = unit_size();
  const Twips unit_room = unit.width ? kFormGap + unit.width : 0;
  const Twips field_height = txtInput_.natural_size().height;
  const Control& first = asks_for_text() ? static_cast<const Control&>(txtInput_) : dtDate_;
  const Twips unit_below = first.text_top(0);
  const Twips row = std::max(field_height, unit_below + unit.height);
  const Twips around_prompt = 2 * kFormMargin + row + 3 * kFormGap + butOK_.natural_size().height;
  const Twips highest_prompt = work_area().height - frame().height - around_prompt;

  const Column column = fit_column(unit_room, highest_prompt);
  const Twips top = place_long_text(lblPrompt_, column, kFormMargin, highest_prompt);
  const Twips field_width = column.width - unit_room;
  const Twips picker_height = dtDate_.natural_size().height;
  const Twips half = (field_width - kFormGap) / 2;
  txtInput_.place({column.left, top, field_width, field_height});
  dtDate_.place({column.left, top, half, picker_height});
  dtTime_.place({column.left + half + kFormGap, top, half, picker_height});
  lblUnit_.place({column.right() - unit.width, first.text_top(top), unit.width, unit.height});
  const Twips bottom = place_buttons({&butOK_, &butCancel_}, column, top + row + 2 * kFormGap);
  resize_inner({column.right() + kFormMargin, bottom + kFormMargin});
}

bool show_input_box(const InputRequest& request) {
  if (is_in_use<frmInputBox>()) return false;  // asked again from within the box
  auto& form = thread_form<frmInputBox>();
  form.prepare(request);
  form.show_modal(request.owner);
  return form.ok();
}

Variant input_box_value() {
  const auto* form = loaded_form<frmInputBox>();
  return form ? form->value() : Variant();
}

void close_input_box() { unload_form<frmInputBox>(); }

}  // namespace pv
