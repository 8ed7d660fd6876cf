// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/form.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "com/module.h"
#include "core/errors/automation_error.h"
#include "core/forms/access_keys.h"
#include "dialogs/kit/help.h"
#include "dialogs/kit/modal_scope.h"
#include "platform/letter_case.h"
#include "resources/text_ids.h"

namespace pv {
namespace {

constexpr DWORD kFormStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;

// A dialog template with no controls, no menu and the dialog class itself. Templates begin at a
// double word, though their parts are packed to words.
struct alignas(DWORD) EmptyTemplate {
  // The extended style keeps a form whose border is none of a dialog without an icon.
  explicit EmptyTemplate(DWORD border) {
    header.style = kFormStyle | border;
    header.dwExtendedStyle = WS_EX_DLGMODALFRAME;
  }

  DLGTEMPLATE header{};
  WORD menu = 0;
  WORD window_class = 0;
  WORD title = 0;
};

// Keeps the edge of a window of this length inside [low, high), the near edge before the far one.
LONG kept_inside(LONG edge, LONG length, LONG low, LONG high) {
  return std::max(low, std::min(edge, high - length));
}

class Finally {
 public:
  explicit Finally(std::function<void()> action) : action_(std::move(action)) {}
  ~Finally() { action_(); }
  Finally(const Finally&) = delete;
  Finally& operator=(const Finally&) = delete;

 private:
  std::function<void()> action_;
};

}  // namespace

Form::Form(const wchar_t* name, int help_topic) : name_(name), help_topic_(help_topic) {}

Form::~Form() = default;

bool Form::show_modal(HWND owner) {
  if (shown_) return false;
  const HWND root = IsWindow(owner) ? GetAncestor(owner, GA_ROOT) : nullptr;
  shown_ = true;
  ok_ = false;
  done_ = false;
  failure_ = nullptr;
  {
    const VisualStyles styles;
    const Finally closing([this] { close_window(); });
    // Ends before the window closes: its owner can be activated only while it is enabled.
    const ModalScope modal(root);
    open(root);
    const LanguageWatch watch([this] { refresh(); });
    run();
  }
  if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
  return true;
}

void Form::hide() {
  if (std::exchange(done_, true)) return;
  // When this runs inside a sent message, the loop still waits for a posted one.
  PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void Form::finish(bool ok) {
  ok_ = ok;
  hide();
}

void Form::set_answers(Button& ok, Button& cancel) {
  ok.set_caption(TEXT_OK);
  cancel.set_caption(TEXT_CANCEL);
  for (Button* const answer : {&ok, &cancel}) answer->set_access_key(false);
  set_default(ok);
}

void Form::refresh() {
  if (!window_) return;
  for (Control* control : controls_) control->refresh_texts();
  show_captions();
  layout();
  move_windows();
}

void Form::set_caption(int text_id) {
  caption_id_ = text_id;
  refresh();
}

std::wstring Form::title() const { return caption_id_ ? localized(caption_id_) : title_; }

void Form::set_title(std::wstring title) {
  caption_id_ = 0;
  title_ = std::move(title);
  refresh();
}

void Form::resize_inner(const TwipSize& size) {
  const TwipSize border = frame();
  resize_outer({size.width + border.width, size.height + border.height});
}

TwipSize Form::frame() const {
  RECT outer{};
  RECT inner{};
  GetWindowRect(window_, &outer);
  GetClientRect(window_, &inner);
  return {metrics_->twips(static_cast<int>(outer.right - outer.left - inner.right)),
          metrics_->twips(static_cast<int>(outer.bottom - outer.top - inner.bottom))};
}

TwipSize Form::work_area() const {
  const RECT area = work_area_pixels();
  return {metrics_->twips(static_cast<int>(area.right - area.left)),
          metrics_->twips(static_cast<int>(area.bottom - area.top))};
}

TwipSize Form::wanted_inner(const TwipSize& smallest) {
  const TwipSize border = frame();
  smallest_ = {smallest.width + border.width, smallest.height + border.height};
  return {std::max(smallest_.width, wanted_.width) - border.width,
          std::max(smallest_.height, wanted_.height) - border.height};
}

TwipBox Form::outer_box() const {
  RECT place{};
  GetWindowRect(window_, &place);
  return {metrics_->twips(static_cast<int>(place.left)),
          metrics_->twips(static_cast<int>(place.top)),
          metrics_->twips(static_cast<int>(place.right - place.left)),
          metrics_->twips(static_cast<int>(place.bottom - place.top))};
}

void Form::place_outer(const TwipBox& box) {
  const POINT corner{metrics_->pixels(box.left), metrics_->pixels(box.top)};
  monitor_ = MonitorFromPoint(corner, MONITOR_DEFAULTTONEAREST);
  SetWindowPos(window_, nullptr, static_cast<int>(corner.x), static_cast<int>(corner.y), 0, 0,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSIZE);
  placed_ = true;
  wanted_ = {box.width, box.height};
}

RECT Form::work_area_pixels() const {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(monitor_, &monitor);
  return monitor.rcWork;
}

void Form::open(HWND owner) {
  const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_DATE_CLASSES};
  InitCommonControlsEx(&classes);
  metrics_.emplace(owner);
  monitor_ = MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY);
  placed_ = false;
  wanted_ = smallest_ = {};
  const EmptyTemplate no_controls(sizable_ ? WS_THICKFRAME : DS_MODALFRAME);
  window_ = CreateDialogIndirectParamW(module_instance(), &no_controls.header, owner, procedure,
                                       reinterpret_cast<LPARAM>(this));
  if (!window_) throw automation_error(ErrorCode::kOutOfMemory, L"a dialog could not be opened");
  SetPropW(window_, name_, reinterpret_cast<HANDLE>(1));
  for (Control* control : controls_) control->create_window(window_, *metrics_);
  const UINT close_state = close_box_enabled_ ? MF_ENABLED : MF_GRAYED;
  EnableMenuItem(GetSystemMenu(window_, FALSE), SC_CLOSE, MF_BYCOMMAND | close_state);
  on_opening();
  refresh();
  ShowWindow(window_, SW_SHOW);
  focus_first();
}

// Hidden controls keep their keys without showing them, so that no key moves when they appear.
void Form::show_captions() {
  const auto has_mnemonic = [](const Control* control) {
    return control->caption() == Control::Caption::kMnemonic;
  };
  std::vector<std::wstring> captions;
  for (const Control* control : controls_)
    if (has_mnemonic(control)) captions.push_back(control->text());
  const std::vector<std::wstring> marked = with_access_keys(captions, key_case());
  auto next = marked.begin();
  for (Control* control : controls_) {
    const std::wstring* const with_key = has_mnemonic(control) ? &*next++ : nullptr;
    if (with_key && control->visible()) control->show_text(*with_key);
    if (control->caption() == Control::Caption::kEscaped || (with_key && !control->visible()))
      control->show_text(without_access_key(control->text()));
    if (control->caption() == Control::Caption::kLiteral) control->show_text(control->text());
  }
  SetWindowTextW(window_, title().c_str());
}

void Form::move_windows() {
  for (Control* control : controls_) control->move_window(*metrics_);
  RECT place{};
  GetWindowRect(window_, &place);
  const LONG width = metrics_->pixels(outer_.width);
  const LONG height = metrics_->pixels(outer_.height);
  const RECT area = work_area_pixels();
  if (!placed_) {
    place.left = area.left + (area.right - area.left - width) / 2;
    place.top = area.top + (area.bottom - area.top - height) / 2;
    placed_ = true;
  }
  moving_ = true;
  SetWindowPos(window_, nullptr, kept_inside(place.left, width, area.left, area.right),
               kept_inside(place.top, height, area.top, area.bottom), width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
  moving_ = false;
}

void Form::focus_first() {
  if (default_id_) SendMessageW(window_, DM_SETDEFID, static_cast<WPARAM>(default_id_), 0);
  const Control* first = first_focus();
  const HWND target = first ? first->window() : GetNextDlgTabItem(window_, nullptr, FALSE);
  SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(target), TRUE);
}

void Form::run() {
  while (!done_) {
    MSG message;
    const BOOL received = GetMessageW(&message, nullptr, 0, 0);
    if (received < 0) return;
    if (received == 0) {
      // The host is to end: its own loop must hear of it, too.
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    if (translate(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool Form::translate(MSG& message) {
  if (!window_ || (message.hwnd != window_ && !IsChild(window_, message.hwnd))) return false;
  if (preview_message(message)) return true;
  const bool down = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
  const bool up = message.message == WM_KEYUP || message.message == WM_SYSKEYUP;
  if (down || up) {
    if (preview_key(message.wParam, down)) return true;
    if (down && message.wParam == VK_F1) {
      show_help_topic(window_, help_topic_);
      return true;
    }
  }
  return window_ && IsDialogMessageW(window_, &message);
}

void Form::close_window() {
  if (window_) DestroyWindow(window_);
  metrics_.reset();
  shown_ = false;
}

void Form::forget_window() {
  protect([this] { on_closing(); });
  for (Control* control : controls_) control->drop_window();
  RemovePropW(window_, name_);
  window_ = nullptr;
  hide();
}

void Form::limit_size(MINMAXINFO& limits) const {
  limits.ptMinTrackSize = {metrics_->pixels(smallest_.width), metrics_->pixels(smallest_.height)};
}

void Form::follow_size() {
  if (!sizable_ || moving_ || !IsWindowVisible(window_)) return;
  const TwipBox box = outer_box();
  wanted_ = {box.width, box.height};
  layout();
  move_windows();
}

bool Form::handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_COMMAND:
      if (LOWORD(w) == IDCANCEL) {
        on_escape();
      } else {
        notify(LOWORD(w), HIWORD(w));
      }
      return true;
    case WM_CLOSE:
      on_close();
      return true;
    case WM_ACTIVATE:
      if (LOWORD(w) == WA_INACTIVE) on_deactivated();
      return false;
    case WM_SIZE:
      follow_size();
      return false;
    case WM_GETMINMAXINFO:
      if (sizable_) limit_size(*reinterpret_cast<MINMAXINFO*>(l));
      return sizable_;
    case WM_DESTROY:
      forget_window();
      return true;
    default:
      return false;
  }
}

void Form::notify(int id, WORD code) {
  for (Control* control : controls_) {
    if (control->id() != id) continue;
    control->on_notification(code);
    return;
  }
}

// The platform calls where no exception may pass: it waits for the end of the show.
void Form::protect(const std::function<void()>& reaction) {
  try {
    reaction();
  } catch (...) {
    failure_ = std::current_exception();
    hide();
  }
}

INT_PTR CALLBACK Form::procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(window, DWLP_USER, l);
    return FALSE;
  }
  const auto form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, DWLP_USER));
  if (!form || !form->window_) return FALSE;
  bool handled = true;
  form->protect([&] { handled = form->handle(message, w, l); });
  return handled;
}

}  // namespace pv
