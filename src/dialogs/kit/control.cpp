// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/control.h"

#include <commctrl.h>

#include <algorithm>

#include "apartment/localized.h"
#include "com/module.h"
#include "core/errors/automation_error.h"
#include "core/forms/access_keys.h"
#include "dialogs/kit/field_size.h"
#include "dialogs/kit/form.h"

namespace pv {
namespace {

constexpr Twips kIconSize = 480;
constexpr Twips kButtonWidth = 1350;
constexpr Twips kButtonHeight = 390;
constexpr Twips kButtonPadding = 150;
constexpr Twips kCheckMark = 330;      // the box of a check box and its gap
constexpr Twips kHeadingMargin = 240;  // of a frame's heading, left and right together

constexpr DWORD text_box_style(TextBox::Kind kind) {
  switch (kind) {
    case TextBox::Kind::kPassword:
      return WS_TABSTOP | ES_AUTOHSCROLL | ES_PASSWORD;
    case TextBox::Kind::kScrolledReading:
      return WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY;
    default:
      return WS_TABSTOP | ES_AUTOHSCROLL;
  }
}

std::wstring window_text(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

// Multi-line text boxes break lines at CR LF only.
std::wstring with_text_box_breaks(const std::wstring& text) {
  std::wstring broken;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n';
    if (pair) ++i;
    if (pair || text[i] == L'\r' || text[i] == L'\n') {
      broken += L"\r\n";
    } else {
      broken += text[i];
    }
  }
  return broken;
}

}  // namespace

Control::Control(Form& form, int id, const wchar_t* window_class, DWORD style, DWORD extended_style)
    : form_(form),
      id_(id),
      window_class_(window_class),
      style_(style),
      extended_style_(extended_style) {
  form.attach(*this);
}

void Control::set_caption(int text_id) {
  if (text_id_ == text_id) return;
  text_id_ = text_id;
  refresh_texts();
  if (window_) form_.refresh();
}

void Control::set_text(std::wstring text) {
  text_id_ = 0;
  text_ = std::move(text);
  if (!window_) return;
  if (caption() == Caption::kNone) {
    show_text(text_);
  } else {
    form_.refresh();
  }
}

void Control::set_visible(bool visible) {
  visible_ = visible;
  if (window_) ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
  show_enabled();
}

void Control::set_enabled(bool enabled) {
  enabled_ = enabled;
  show_enabled();
}

// The platform looks for access keys among hidden controls, too.
void Control::show_enabled() const {
  if (window_) EnableWindow(window_, enabled_ && visible_);
}

void Control::focus() {
  if (window_) SetFocus(window_);
}

TwipSize Control::natural_size(Twips width) const { return measure(form_.metrics(), width); }

// In whole pixels, so that both are rounded alike.
Twips Control::text_top(Twips top) const {
  const Metrics& metrics = form_.metrics();
  return metrics.twips(metrics.pixels(top) + text_inset(metrics));
}

TwipSize Control::measure(const Metrics& metrics, Twips) const {
  return metrics.text_size(text_, DT_NOPREFIX);
}

void Control::refresh_texts() {
  if (text_id_) text_ = localized(text_id_);
}

LRESULT Control::send(UINT message, WPARAM w, LPARAM l) const {
  return window_ ? SendMessageW(window_, message, w, l) : 0;
}

void Control::create_window(HWND form, const Metrics& metrics) {
  DWORD style = style_ | WS_CHILD;
  if (visible_) style |= WS_VISIBLE;
  if (!enabled_ || !visible_) style |= WS_DISABLED;
  window_ = CreateWindowExW(extended_style_, window_class_, L"", style, 0, 0, 0, 0, form,
                            reinterpret_cast<HMENU>(static_cast<INT_PTR>(id_)), module_instance(),
                            nullptr);
  if (!window_) throw automation_error(ErrorCode::kOutOfMemory, L"a dialog could not be opened");
  send(WM_SETFONT, reinterpret_cast<WPARAM>(metrics.font()));
  fill_window();
}

void Control::drop_window() {
  if (!window_) return;
  read_window();
  window_ = nullptr;
}

void Control::show_text(const std::wstring& marked_text) {
  if (window_) SetWindowTextW(window_, marked_text.c_str());
}

void Control::protect(const std::function<void()>& reaction) const { form_.protect(reaction); }

void Control::move_window(const Metrics& metrics) {
  if (!window_) return;
  SetWindowPos(window_, nullptr, metrics.pixels(box_.left), metrics.pixels(box_.top),
               metrics.pixels(box_.width), metrics.pixels(window_height(metrics)),
               SWP_NOZORDER | SWP_NOACTIVATE);
  InvalidateRect(window_, nullptr, TRUE);
  on_moved();
}

Label::Label(Form& form, int id) : Label(form, id, SS_NOPREFIX) {}

Label::Label(Form& form, int id, DWORD style)
    : Control(form, id, WC_STATICW, SS_LEFT | SS_EDITCONTROL | style) {}

TwipSize Label::measure(const Metrics& metrics, Twips width) const {
  const UINT breaking = width > 0 ? DT_WORDBREAK | DT_EDITCONTROL : 0;
  return metrics.text_size(text_, DT_NOPREFIX | DT_EXPANDTABS | breaking, width);
}

Icon::Icon(Form& form, int id, LPCWSTR platform_icon)
    : Control(form, id, WC_STATICW, SS_ICON | SS_REALSIZECONTROL), platform_icon_(platform_icon) {}

void Icon::fill_window() {
  const int size = form_.metrics().pixels(kIconSize);
  // By number the platform gives the shared icon only, in one size; copies may have any.
  const HANDLE shared =
      LoadImageW(nullptr, platform_icon_, IMAGE_ICON, 0, 0, LR_SHARED | LR_DEFAULTSIZE);
  icon_.reset(static_cast<HICON>(CopyImage(shared, IMAGE_ICON, size, size, LR_COPYFROMRESOURCE)));
  send(STM_SETICON, reinterpret_cast<WPARAM>(icon_.get()));
}

TwipSize Icon::measure(const Metrics&, Twips) const { return {kIconSize, kIconSize}; }

void Icon::read_window() { icon_.reset(); }

Button::Button(Form& form, int id, std::function<void()> clicked)
    : Button(form, id, WS_TABSTOP | BS_PUSHBUTTON, std::move(clicked)) {}

Button::Button(Form& form, int id, DWORD style, std::function<void()> clicked)
    : Control(form, id, WC_BUTTONW, style), clicked_(std::move(clicked)) {}

TwipSize Button::measure(const Metrics& metrics, Twips) const {
  const TwipSize text = metrics.text_size(text_, DT_NOPREFIX | DT_SINGLELINE);
  return {std::max(kButtonWidth, text.width + 2 * kButtonPadding),
          std::max(kButtonHeight, text.height + kButtonPadding)};
}

void Button::on_notification(WORD code) {
  if (code == BN_CLICKED) clicked_();
}

ChoiceButton::ChoiceButton(Form& form, int id, bool first, std::function<void()> clicked)
    : Button(form, id, BS_AUTORADIOBUTTON | BS_PUSHLIKE | (first ? WS_GROUP | WS_TABSTOP : 0),
             std::move(clicked)) {}

void ChoiceButton::set_chosen(bool chosen) {
  chosen_ = chosen;
  fill_window();
}

void ChoiceButton::fill_window() { send(BM_SETCHECK, chosen_ ? BST_CHECKED : BST_UNCHECKED); }

CheckBox::CheckBox(Form& form, int id)
    : Control(form, id, WC_BUTTONW, WS_TABSTOP | BS_AUTOCHECKBOX) {}

bool CheckBox::checked() const { return window() ? send(BM_GETCHECK) == BST_CHECKED : checked_; }

void CheckBox::set_checked(bool checked) {
  checked_ = checked;
  fill_window();
}

TwipSize CheckBox::measure(const Metrics& metrics, Twips) const {
  const TwipSize text = metrics.text_size(text_, DT_NOPREFIX | DT_SINGLELINE);
  return {text.width + kCheckMark, text.height + metrics.twips(4)};
}

void CheckBox::fill_window() { send(BM_SETCHECK, checked_ ? BST_CHECKED : BST_UNCHECKED); }

void CheckBox::read_window() { checked_ = checked(); }

Frame::Frame(Form& form, int id) : Control(form, id, WC_BUTTONW, BS_GROUPBOX) {}

TwipSize Frame::measure(const Metrics& metrics, Twips) const {
  const TwipSize text = metrics.text_size(text_, DT_NOPREFIX | DT_SINGLELINE);
  return {text.width + kHeadingMargin, text.height};
}

void Frame::fit_heading(Twips width) {
  const Metrics& metrics = form_.metrics();
  show_text(without_access_key(metrics.shortened(text_, width - kHeadingMargin)));
}

TextBox::TextBox(Form& form, int id, Kind kind)
    : Control(form, id, WC_EDITW, text_box_style(kind),
              kind == Kind::kScrolledReading ? 0 : WS_EX_CLIENTEDGE),
      kind_(kind),
      mask_(kind == Kind::kPassword ? L'*' : L'\0'),
      locked_(kind == Kind::kScrolledReading) {}

std::wstring TextBox::typed_text() const { return window() ? window_text(window()) : text(); }

void TextBox::set_mask(wchar_t mask) {
  mask_ = mask;
  send(EM_SETPASSWORDCHAR, mask);
  if (window()) InvalidateRect(window(), nullptr, TRUE);
}

void TextBox::set_locked(bool locked) {
  locked_ = locked;
  send(EM_SETREADONLY, locked);
}

void TextBox::select_all() { send(EM_SETSEL, 0, -1); }

int TextBox::text_inset(const Metrics&) const { return edge_inset(); }

std::pair<DWORD, DWORD> TextBox::selection() const {
  DWORD first = 0;
  DWORD end = 0;
  send(EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&end));
  return {first, end};
}

bool TextBox::has_selection() const {
  const auto [first, end] = selection();
  return first != end;
}

TwipSize TextBox::measure(const Metrics& metrics, Twips width) const {
  return {width, field_size(metrics, 0).height};
}

void TextBox::fill_window() {
  send(EM_SETPASSWORDCHAR, mask_);
  send(EM_SETREADONLY, locked_);
  if (kind_ == Kind::kScrolledReading) text_ = with_text_box_breaks(text_);
  SetWindowTextW(window(), text_.c_str());
}

void TextBox::read_window() { text_ = typed_text(); }

void TextBox::on_notification(WORD code) {
  if (code != EN_SETFOCUS) return;
  if (kind_ == Kind::kScrolledReading) {
    show_beginning();
  } else {
    select_all();
  }
}

// The dialog manager selects a text as a whole before it gives it the focus, also when a dialog
// opens: a long one would stand at its end. What the user selected stays.
void TextBox::show_beginning() {
  const auto [first, end] = selection();
  if (first != 0 || end != static_cast<DWORD>(GetWindowTextLengthW(window()))) return;
  send(EM_SETSEL, 0, 0);
  send(EM_SCROLLCARET);
}

}  // namespace pv
