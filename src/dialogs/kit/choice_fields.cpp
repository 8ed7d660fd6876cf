// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// clang-format off: the controls' header needs the platform's types before it.
#include "com/automation.h"
// clang-format on

#include <commctrl.h>

#include <algorithm>

#include "apartment/localized.h"
#include "dialogs/kit/control.h"
#include "dialogs/kit/field_size.h"
#include "dialogs/kit/form.h"

// The fields in which the user chooses: lists and pickers.
namespace pv {
namespace {

constexpr Twips kPickerPadding = 240;  // what a picker adds between its parts

// A moment as the picker shows it.
std::wstring user_text(const SYSTEMTIME& moment, DateTimePicker::Kind kind) {
  wchar_t text[128] = L"";
  if (kind == DateTimePicker::Kind::kDate) {
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &moment, nullptr, text,
                   static_cast<int>(std::size(text)));
  } else {
    GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &moment, nullptr, text,
                   static_cast<int>(std::size(text)));
  }
  return text;
}

}  // namespace

DropDownList::DropDownList(Form& form, int id)
    : Control(form, id, WC_COMBOBOXW, WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST) {}

void DropDownList::set_entries(std::vector<int> text_ids) {
  entries_ = std::move(text_ids);
  selection_ = -1;
  fill_window();
}

int DropDownList::selection() const {
  return window() ? static_cast<int>(send(CB_GETCURSEL)) : selection_;
}

bool DropDownList::select(int position) {
  if (position < 0 || position >= static_cast<int>(entries_.size())) return false;
  selection_ = position;
  send(CB_SETCURSEL, static_cast<WPARAM>(position));
  return true;
}

TwipSize DropDownList::measure(const Metrics& metrics, Twips) const {
  Twips width = 0;
  for (const int entry : entries_)
    width = std::max(width, metrics.text_size(localized(entry), DT_NOPREFIX).width);
  return field_size(metrics, width + arrow_width(metrics));
}

// The platform counts the open list to the window of the closed one.
Twips DropDownList::window_height(const Metrics& metrics) const {
  const auto entry = static_cast<int>(send(CB_GETITEMHEIGHT, 0));
  const auto entries = static_cast<Twips>(entries_.size());
  return box().height + entries * metrics.twips(entry) + metrics.twips(2);
}

// In the middle of the part that shows the choice; the platform decides on its height.
int DropDownList::text_inset(const Metrics& metrics) const {
  COMBOBOXINFO parts{};
  parts.cbSize = sizeof parts;
  GetComboBoxInfo(window(), &parts);
  const RECT& choice = parts.rcItem;
  return static_cast<int>(choice.top + choice.bottom - metrics.pixels(metrics.line_height())) / 2;
}

void DropDownList::fill_window() {
  if (window()) {  // its parts take their places only when there is space for them
    const TwipSize size = natural_size();
    SetWindowPos(window(), nullptr, 0, 0, form_.metrics().pixels(size.width),
                 form_.metrics().pixels(size.height), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  send(CB_RESETCONTENT);
  for (const int entry : entries_)
    send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(localized(entry).c_str()));
  send(CB_SETCURSEL, static_cast<WPARAM>(selection_));
}

void DropDownList::read_window() { selection_ = selection(); }

void DropDownList::refresh_texts() {
  if (!window()) return;
  read_window();
  fill_window();
}

DateTimePicker::DateTimePicker(Form& form, int id, Kind kind)
    : Control(form, id, DATETIMEPICK_CLASSW,
              WS_TABSTOP | (kind == Kind::kDate ? DTS_SHORTDATEFORMAT : DTS_TIMEFORMAT)),
      kind_(kind) {
  GetLocalTime(&value_);
}

SYSTEMTIME DateTimePicker::value() const {
  SYSTEMTIME shown = value_;
  if (window()) DateTime_GetSystemtime(window(), &shown);
  return shown;
}

void DateTimePicker::set_value(const SYSTEMTIME& value) {
  value_ = value;
  fill_window();
}

// The widest of a year and a day in the user's format. With the same inset above and below it does
// not matter whether the platform puts the text at the top or in the middle.
TwipSize DateTimePicker::measure(const Metrics& metrics, Twips) const {
  Twips width = 0;
  for (WORD i = 0; i < 12; ++i) {
    const SYSTEMTIME sample{2000,
                            static_cast<WORD>(i + 1),
                            0,
                            static_cast<WORD>(20 + i % 7),
                            static_cast<WORD>(i + 11),
                            58,
                            58,
                            0};
    width = std::max(width, metrics.text_size(user_text(sample, kind_), DT_NOPREFIX).width);
  }
  return {field_size(metrics, width + kPickerPadding + arrow_width(metrics)).width,
          metrics.line_height() + metrics.twips(2 * edge_inset())};
}

int DateTimePicker::text_inset(const Metrics&) const { return edge_inset(); }

void DateTimePicker::fill_window() {
  if (!window()) return;
  DateTime_SetSystemtime(window(), GDT_VALID, &value_);
  if (accessible_) return;
  accessible_ = std::make_unique<AccessibleWindow>(window(), [this] {
    return AccessibleDescription{text(), 0, L""};
  });
}

void DateTimePicker::read_window() {
  value_ = value();
  accessible_.reset();
}

}  // namespace pv
