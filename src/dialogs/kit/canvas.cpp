// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/canvas.h"

#include <commctrl.h>
#include <oleacc.h>
#include <windowsx.h>

namespace pv {
namespace {

constexpr UINT_PTR kSubclass = 1;

}  // namespace

// A static control with a procedure before its own: a window class of ours would have to be
// registered, and outlive the DLL.
Canvas::Canvas(Form& form, int id, bool takes_focus, DWORD extended_style)
    : Control(form, id, WC_STATICW, SS_NOTIFY | (takes_focus ? static_cast<DWORD>(WS_TABSTOP) : 0),
              extended_style),
      takes_focus_(takes_focus) {}

void Canvas::repaint() const {
  if (window()) InvalidateRect(window(), nullptr, FALSE);
}

void Canvas::fill_window() {
  SetWindowSubclass(window(), procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
  accessible_ = std::make_unique<AccessibleWindow>(window(), [this] { return describe(); });
}

void Canvas::read_window() {
  accessible_.reset();
  RemoveWindowSubclass(window(), procedure, kSubclass);
}

AccessibleDescription Canvas::describe() const { return {text(), ROLE_SYSTEM_GRAPHIC, L""}; }

void Canvas::tell_value() const {
  if (accessible_) accessible_->tell_value();
}

SIZE Canvas::inner_size() const {
  RECT inside{};
  GetClientRect(window(), &inside);
  return {inside.right, inside.bottom};
}

void Canvas::paint_hatch(HDC device, const RECT& area) {
  const HBRUSH brush = CreateHatchBrush(HS_BDIAGONAL, GetSysColor(COLOR_GRAYTEXT));
  SetBkColor(device, GetSysColor(COLOR_BTNFACE));
  FillRect(device, &area, brush);
  DeleteObject(brush);
}

void Canvas::paint_buffered() {
  PAINTSTRUCT painting;
  const HDC device = BeginPaint(window(), &painting);
  const SIZE size = inner_size();
  const HDC memory = CreateCompatibleDC(device);
  const HBITMAP bitmap =
      CreateCompatibleBitmap(device, static_cast<int>(size.cx), static_cast<int>(size.cy));
  const HGDIOBJ previous = SelectObject(memory, bitmap);
  const RECT all{0, 0, size.cx, size.cy};
  FillRect(memory, &all, GetSysColorBrush(COLOR_BTNFACE));
  protect([&] { paint(memory, size); });
  BitBlt(device, 0, 0, static_cast<int>(size.cx), static_cast<int>(size.cy), memory, 0, 0, SRCCOPY);
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
  EndPaint(window(), &painting);
}

bool Canvas::react(UINT message, WPARAM w, LPARAM l) {
  const POINT at{GET_X_LPARAM(l), GET_Y_LPARAM(l)};
  switch (message) {
    case WM_PAINT:
      paint_buffered();
      return true;
    case WM_ERASEBKGND:
      return true;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      repaint();
      return false;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      if (takes_focus_) SetFocus(window());
      SetCapture(window());
      pointer_down(at, message == WM_RBUTTONDOWN || message == WM_RBUTTONDBLCLK);
      return true;
    case WM_MOUSEMOVE:
      // Moves without a button come from the platform when windows change under the pointer.
      if (GetCapture() == window() && (w & (MK_LBUTTON | MK_RBUTTON))) pointer_moved(at);
      return true;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
      if (GetCapture() == window()) ReleaseCapture();
      return true;
    case WM_CAPTURECHANGED:
      pointer_up();
      return true;
    case WM_KEYDOWN:
      return key_down(w);
    default:
      return false;
  }
}

LRESULT CALLBACK Canvas::procedure(HWND window, UINT message, WPARAM w, LPARAM l, UINT_PTR,
                                   DWORD_PTR canvas) {
  const auto self = reinterpret_cast<Canvas*>(canvas);
  if (message == WM_GETDLGCODE) return self->takes_focus_ ? DLGC_WANTARROWS : DLGC_STATIC;
  bool handled = true;
  self->protect([&] { handled = self->react(message, w, l); });
  if (!handled) return DefSubclassProc(window, message, w, l);
  return message == WM_ERASEBKGND ? TRUE : 0;
}

}  // namespace pv
