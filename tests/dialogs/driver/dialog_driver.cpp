// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/dialog_driver.h"

#include <gtest/gtest.h>

#include <cwctype>
#include <iterator>
#include <memory>

namespace pv::dialogs_test {
namespace {

constexpr UINT kAnswerLimit = 20000;
constexpr UINT kRunFunction = WM_APP + 1;
constexpr int kLastButton = 1002;
constexpr int kFirstButton = 1000;
constexpr wchar_t kMessageBox[] = L"frmMsgBox";
constexpr int kPrompt = 1010;
constexpr int kStopIcon = 1020;

LRESULT ask_window(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0) {
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, message, w, l, SMTO_NORMAL, kAnswerLimit, &result);
  return static_cast<LRESULT>(result);
}

struct DialogSearch {
  const wchar_t* form;
  std::vector<HWND> found;
};

BOOL CALLBACK collect_dialog(HWND window, LPARAM search_address) {
  const auto search = reinterpret_cast<DialogSearch*>(search_address);
  wchar_t window_class[32];
  GetClassNameW(window, window_class, static_cast<int>(std::size(window_class)));
  const bool ours = lstrcmpW(window_class, L"#32770") == 0 && GetPropW(window, search->form);
  if (ours && IsWindowVisible(window)) search->found.push_back(window);
  return TRUE;
}

// Message boxes may have no Cancel, so they are answered; other forms can always be closed.
void close_by_any_means(const Dialog& dialog, const wchar_t* form) {
  if (lstrcmpW(form, kMessageBox) != 0) dialog.close();
  for (int id = kLastButton; id >= kFirstButton && GetPropW(dialog.window(), kMessageBox); --id) {
    if (!dialog.shows(id)) continue;
    dialog.click(id);
    break;
  }
  EXPECT_TRUE(dialog.wait_closed()) << "the dialog stays open";
}

}  // namespace

bool wait_until(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    Sleep(1);
  }
  return true;
}

std::wstring Dialog::text_of(HWND window) {
  std::wstring text(static_cast<std::size_t>(ask_window(window, WM_GETTEXTLENGTH)) + 1, L'\0');
  const LRESULT length =
      ask_window(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::wstring Dialog::caption(int id) const {
  const std::wstring marked = text(id);
  std::wstring shown;
  for (std::size_t i = 0; i < marked.size(); ++i) {
    if (marked[i] == L'&' && i + 1 < marked.size()) ++i;
    shown += marked[i];
  }
  return shown;
}

wchar_t Dialog::access_key(int id) const {
  const std::wstring marked = text(id);
  for (std::size_t i = 0; i + 1 < marked.size(); ++i) {
    if (marked[i] != L'&') continue;
    if (marked[i + 1] != L'&') return static_cast<wchar_t>(std::towlower(marked[i + 1]));
    ++i;
  }
  return L'\0';
}

HWND Dialog::focus_window() const {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
  return info.hwndFocus;
}

int Dialog::focused() const { return GetDlgCtrlID(focus_window()); }

void Dialog::press_key(WORD key) const {
  hold_key(key);
  release_key(key);
}

void Dialog::hold_key(WORD key) const {
  EXPECT_TRUE(wait_until([this] { return IsChild(window_, focus_window()); }));
  PostMessageW(focus_window(), WM_KEYDOWN, key, 1);
}

void Dialog::release_key(WORD key) const {
  PostMessageW(focus_window(), WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void Dialog::press_alt(wchar_t letter) const {
  EXPECT_TRUE(wait_until([this] { return IsChild(window_, focus_window()); }));
  constexpr LPARAM kAltIsDown = 1 << 29;
  PostMessageW(focus_window(), WM_SYSCHAR, letter, kAltIsDown);
}

bool Dialog::bring_to_front() const {
  return wait_until([this] {
    if (GetForegroundWindow() == window_ && IsChild(window_, focus_window())) return true;
    SetForegroundWindow(window_);
    return false;
  });
}

bool Dialog::stroke(WORD key, WORD with, const std::function<bool()>& condition) const {
  for (int attempt = 0; attempt < 5 && bring_to_front(); ++attempt) {
    stroke_key(key, with);
    if (wait_until(condition, std::chrono::seconds(3))) return true;
  }
  return false;
}

// Posted messages are handled in their order: when the mark arrived, so did all before it.
void Dialog::drain() const {
  const HWND button = control(kFirstButton);
  PostMessageW(button, BM_SETSTATE, TRUE, 0);
  EXPECT_TRUE(
      wait_until([&] { return (ask_window(button, BM_GETSTATE) & BST_PUSHED) || !open(); }));
  ask_window(button, BM_SETSTATE, FALSE);
}

void Dialog::type(int id, const std::wstring& text) const {
  ask(id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

LRESULT Dialog::ask(int id, UINT message, WPARAM w, LPARAM l) const {
  return ask_window(control(id), message, w, l);
}

std::pair<int, int> Dialog::selection(int id) const {
  const LRESULT range = ask(id, EM_GETSEL);
  return {LOWORD(range), HIWORD(range)};
}

RECT Dialog::pixels(int id) const {
  RECT rectangle{};
  GetWindowRect(control(id), &rectangle);
  MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&rectangle), 2);
  return rectangle;
}

TwipRect Dialog::twips(int id, int dpi) const {
  const RECT place = pixels(id);
  return {MulDiv(place.left, 1440, dpi), MulDiv(place.top, 1440, dpi),
          MulDiv(place.right, 1440, dpi), MulDiv(place.bottom, 1440, dpi)};
}

SIZE Dialog::outer() const {
  RECT rectangle{};
  GetWindowRect(window_, &rectangle);
  return {rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
}

SIZE Dialog::inner() const {
  RECT rectangle{};
  GetClientRect(window_, &rectangle);
  return {rectangle.right, rectangle.bottom};
}

void stroke_key(WORD key, WORD with) {
  std::vector<INPUT> inputs;
  const auto add = [&](WORD which, DWORD flags) {
    if (!which) return;
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = which;
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  add(with, 0);
  add(key, 0);
  add(key, KEYEVENTF_KEYUP);
  add(with, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

std::vector<HWND> open_dialogs(DWORD thread, const wchar_t* form) {
  DialogSearch search{form, {}};
  EnumThreadWindows(thread, collect_dialog, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

Dialog wait_for_dialog(DWORD thread, const wchar_t* form, std::size_t count) {
  std::vector<HWND> found;
  const bool there = wait_until([&] {
    found = open_dialogs(thread, form);
    return found.size() >= count;
  });
  EXPECT_TRUE(there) << "no dialog appeared";
  const Dialog dialog(there ? found.front() : nullptr);
  // Its thread answers only once it is laid out and waits for the user.
  if (there) ask_window(dialog.window(), WM_NULL);
  return dialog;
}

void drive(const wchar_t* form, const std::function<void()>& shower, const Script& script) {
  const DWORD thread = GetCurrentThreadId();
  const std::jthread driver([&] {
    const Dialog dialog = wait_for_dialog(thread, form);
    if (!dialog.window()) return;
    script(dialog);
    if (dialog.open()) close_by_any_means(dialog, form);
  });
  shower();
}

Message answer_message(const Dialog& over) {
  const DWORD thread = GetWindowThreadProcessId(over.window(), nullptr);
  const Dialog box = wait_for_dialog(thread, kMessageBox);
  if (!box.window()) return {};
  Message message{box.title(), box.text(kPrompt), box.shows(kStopIcon)};
  box.click(kFirstButton);
  EXPECT_TRUE(box.wait_closed());
  EXPECT_TRUE(wait_until([&] { return !over.open() || IsWindowEnabled(over.window()); }));
  return message;
}

long show(const Utility& utility, const Box& box, const Script& script) {
  long answer = -1;
  drive(
      kMessageBox, [&] { answer = utility.message_box(box); }, script);
  return answer;
}

HostWindow::HostWindow() {
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  WNDCLASSW window_class{};
  window_class.lpfnWndProc = procedure;
  window_class.hInstance = instance;
  window_class.lpszClassName = L"HostWindow";
  RegisterClassW(&window_class);
  window_ = CreateWindowW(L"HostWindow", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 400,
                          300, nullptr, nullptr, instance, nullptr);
  child_ = CreateWindowW(L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20, window_, nullptr,
                         instance, nullptr);
}

HostWindow::~HostWindow() {
  if (IsWindow(window_)) DestroyWindow(window_);
}

void HostWindow::send(std::function<void()> function) const {
  auto owned = std::make_unique<std::function<void()>>(std::move(function));
  ask_window(window_, kRunFunction, 0, reinterpret_cast<LPARAM>(owned.release()));
}

void HostWindow::post(std::function<void()> function) const {
  auto owned = std::make_unique<std::function<void()>>(std::move(function));
  PostMessageW(window_, kRunFunction, 0, reinterpret_cast<LPARAM>(owned.release()));
}

LRESULT CALLBACK HostWindow::procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message != kRunFunction) return DefWindowProcW(window, message, w, l);
  const std::unique_ptr<std::function<void()>> function(
      reinterpret_cast<std::function<void()>*>(l));
  (*function)();
  return 0;
}

Resolution::Resolution(int dpi) {
  SetEnvironmentVariableW(L"PV_DIALOG_DPI", std::to_wstring(dpi).c_str());
}

Resolution::~Resolution() { SetEnvironmentVariableW(L"PV_DIALOG_DPI", nullptr); }

}  // namespace pv::dialogs_test
