// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/metrics.h"

#include <algorithm>
#include <cwchar>

namespace pv {
namespace {

class ScreenContext {
 public:
  ScreenContext() : context_(GetDC(nullptr)) {}
  ~ScreenContext() { ReleaseDC(nullptr, context_); }
  ScreenContext(const ScreenContext&) = delete;
  ScreenContext& operator=(const ScreenContext&) = delete;
  operator HDC() const { return context_; }

 private:
  HDC context_;
};

int screen_dpi() { return GetDeviceCaps(ScreenContext(), LOGPIXELSX); }

int dpi_for_tests() {
  wchar_t text[16];
  const DWORD length = GetEnvironmentVariableW(L"PV_DIALOG_DPI", text, std::size(text));
  const long dpi = length > 0 && length < std::size(text) ? std::wcstol(text, nullptr, 10) : 0;
  return dpi >= 48 && dpi <= 960 ? static_cast<int>(dpi) : 0;
}

// Hosts that know about mixed resolutions have windows of their own resolution, from Windows 10 on.
int window_dpi(HWND window) {
  using GetDpiForWindow = UINT(WINAPI*)(HWND);
  const auto get_dpi = reinterpret_cast<GetDpiForWindow>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32"), "GetDpiForWindow")));
  return window && get_dpi ? static_cast<int>(get_dpi(window)) : 0;
}

int dialog_dpi(HWND owner) {
  if (const int dpi = dpi_for_tests()) return dpi;
  if (const int dpi = window_dpi(owner)) return dpi;
  return screen_dpi();
}

HFONT create_message_font(int dpi) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LOGFONTW& font = metrics.lfMessageFont;
  font.lfHeight = MulDiv(font.lfHeight, dpi, screen_dpi());
  font.lfWidth = 0;
  return CreateFontIndirectW(&font);
}

}  // namespace

Metrics::Metrics(HWND owner) : dpi_(dialog_dpi(owner)), font_(create_message_font(dpi_)) {}

TwipSize Metrics::text_size(const std::wstring& text, UINT format, Twips width) const {
  const ScreenContext context;
  const HGDIOBJ previous = SelectObject(context, font());
  TEXTMETRICW line{};
  GetTextMetricsW(context, &line);
  RECT area{0, 0, pixels(width), 0};
  // Length by terminator: a window shows its text only up to a NUL, too.
  DrawTextW(context, text.c_str(), -1, &area, format | DT_CALCRECT);
  SelectObject(context, previous);
  return {twips(area.right), twips(std::max(area.bottom, line.tmHeight))};
}

std::wstring Metrics::shortened(const std::wstring& text, Twips width) const {
  constexpr wchar_t kEllipsis = L'\x2026';
  const auto fits = [&](const std::wstring& candidate) {
    return text_size(candidate, DT_NOPREFIX | DT_SINGLELINE).width <= width;
  };
  if (fits(text)) return text;
  std::size_t length = 0;
  for (std::size_t too_long = text.size(); length + 1 < too_long;) {
    const std::size_t middle = (length + too_long) / 2;
    (fits(text.substr(0, middle) + kEllipsis) ? length : too_long) = middle;
  }
  return text.substr(0, length) + kEllipsis;
}

}  // namespace pv
