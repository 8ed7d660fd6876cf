// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What is wrong with the layout of an open dialog, found with the platform's own text measures.

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "tests/dialogs/driver/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

constexpr LONG kMargin = 7;  // around everything, at least
constexpr LONG kButtonEdges = 8;
constexpr LONG kCheckMark = 18;  // the box and its gap at 96 dpi; it grows with the font
constexpr LONG kHeadingMargin = 16;

struct Part {
  HWND window;
  int id;
  std::wstring window_class;
  std::wstring text;
  RECT place;   // in the dialog
  SIZE inside;  // what can be drawn on
};

class TextMeasure {
 public:
  explicit TextMeasure(HWND control)
      : control_(control),
        context_(GetDC(control)),
        previous_(SelectObject(context_,
                               reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)))) {}
  ~TextMeasure() {
    SelectObject(context_, previous_);
    ReleaseDC(control_, context_);
  }
  TextMeasure(const TextMeasure&) = delete;
  TextMeasure& operator=(const TextMeasure&) = delete;

  SIZE size(const std::wstring& text, UINT format, LONG width = 0) const {
    RECT area{0, 0, width, 0};
    DrawTextW(context_, text.c_str(), -1, &area, format | DT_CALCRECT);
    return {area.right, area.bottom};
  }

 private:
  HWND control_;
  HDC context_;
  HGDIOBJ previous_;
};

bool is_class(const Part& part, const wchar_t* name) {
  return lstrcmpiW(part.window_class.c_str(), name) == 0;
}

DWORD button_type(const Part& part) {
  return static_cast<DWORD>(GetWindowLongW(part.window, GWL_STYLE)) & BS_TYPEMASK;
}

bool is_frame(const Part& part) {
  return is_class(part, L"Button") && button_type(part) == BS_GROUPBOX;
}

SIZE needed_by_button(const Part& part, const TextMeasure& measure) {
  const SIZE text = measure.size(part.text, DT_SINGLELINE);
  if (button_type(part) == BS_AUTOCHECKBOX) {
    const LONG mark = std::max(kCheckMark, measure.size(L"M", DT_SINGLELINE).cy);
    return {text.cx + mark, text.cy};
  }
  if (is_frame(part)) return {text.cx + kHeadingMargin, text.cy};
  return {text.cx + kButtonEdges, text.cy + kButtonEdges};
}

SIZE needed_by_list(const Part& part, const TextMeasure& measure) {
  LONG width = 0;
  const LRESULT entries = SendMessageW(part.window, CB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < entries; ++i) {
    wchar_t entry[256] = L"";
    SendMessageW(part.window, CB_GETLBTEXT, static_cast<WPARAM>(i),
                 reinterpret_cast<LPARAM>(entry));
    width = std::max(width, measure.size(entry, DT_SINGLELINE | DT_NOPREFIX).cx);
  }
  return {width + GetSystemMetrics(SM_CXVSCROLL) + kButtonEdges, 0};
}

SIZE needed(const Part& part) {
  const TextMeasure measure(part.window);
  if (is_class(part, L"Static")) {
    const bool marks = (GetWindowLongW(part.window, GWL_STYLE) & SS_NOPREFIX) == 0;
    return measure.size(part.text, DT_WORDBREAK | DT_EDITCONTROL | (marks ? 0 : DT_NOPREFIX),
                        part.inside.cx);
  }
  if (is_class(part, L"Button")) return needed_by_button(part, measure);
  if (is_class(part, L"ComboBox")) return needed_by_list(part, measure);
  if (is_class(part, L"SysDateTimePick32")) {
    const SIZE text = measure.size(part.text, DT_SINGLELINE | DT_NOPREFIX);
    return {text.cx + GetSystemMetrics(SM_CXVSCROLL) + kButtonEdges, text.cy};
  }
  return {0, measure.size(L"M", DT_SINGLELINE).cy};
}

std::vector<Part> visible_parts(HWND dialog) {
  std::vector<Part> parts;
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    if (!IsWindowVisible(child)) continue;
    Part part{child, GetDlgCtrlID(child), {}, {}, {}, {}};
    wchar_t text[1024] = L"";
    GetClassNameW(child, text, static_cast<int>(std::size(text)));
    part.window_class = text;
    SendMessageW(child, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    part.text = text;
    GetWindowRect(child, &part.place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&part.place), 2);
    RECT inside{};
    GetClientRect(child, &inside);
    part.inside = {inside.right, inside.bottom};
    parts.push_back(part);
  }
  return parts;
}

bool contains(const RECT& outer, const RECT& inner) {
  return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
         outer.bottom >= inner.bottom;
}

// Only a frame may have others on it.
bool collide(const Part& one, const Part& other) {
  RECT common{};
  if (!IntersectRect(&common, &one.place, &other.place)) return false;
  return !(is_frame(one) && contains(one.place, other.place)) &&
         !(is_frame(other) && contains(other.place, one.place));
}

// Of a text in the font of title bars, with the close box and its surroundings.
LONG title_width(const std::wstring& title) {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  const HDC context = GetDC(nullptr);
  const HFONT font = CreateFontIndirectW(&metrics.lfCaptionFont);
  const HGDIOBJ previous = SelectObject(context, font);
  SIZE size{};
  GetTextExtentPoint32W(context, title.c_str(), static_cast<int>(title.size()), &size);
  SelectObject(context, previous);
  DeleteObject(font);
  ReleaseDC(nullptr, context);
  return size.cx + 2 * GetSystemMetrics(SM_CXFIXEDFRAME) + GetSystemMetrics(SM_CXSIZE);
}

// On the monitor of the owner.
RECT work_area(HWND dialog) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  const HWND owner = GetWindow(dialog, GW_OWNER);
  GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
  return monitor.rcWork;
}

RECT place_of(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

}  // namespace

bool Dialog::is_centred() const {
  const RECT area = work_area(window_);
  const RECT place = place_of(window_);
  const auto even = [](LONG before, LONG after) { return std::abs(before - after) <= 1; };
  return even(place.left - area.left, area.right - place.right) &&
         even(place.top - area.top, area.bottom - place.bottom);
}

std::string Dialog::layout_faults() const {
  std::string faults;
  const std::vector<Part> parts = visible_parts(window_);
  if (parts.empty()) return "no controls";
  RECT inside{};
  GetClientRect(window_, &inside);
  InflateRect(&inside, -kMargin, -kMargin);
  if (title_width(title()) > outer().cx) faults += "the title is cut off\n";
  if (!contains(work_area(window_), place_of(window_))) faults += "leaves the screen\n";
  for (auto part = parts.begin(); part != parts.end(); ++part) {
    const std::string name = "control " + std::to_string(part->id);
    const SIZE size = needed(*part);
    if (size.cx > part->inside.cx) faults += name + " is too narrow\n";
    if (size.cy > part->inside.cy) faults += name + " is too low\n";
    if (!contains(inside, part->place)) faults += name + " stands too near the edge\n";
    for (auto other = part + 1; other != parts.end(); ++other)
      if (collide(*part, *other))
        faults += name + " meets control " + std::to_string(other->id) + "\n";
  }
  return faults;
}

}  // namespace pv::dialogs_test
