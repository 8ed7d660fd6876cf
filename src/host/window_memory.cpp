// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "host/window_memory.h"

#include "com/lenient.h"
#include "platform/locale.h"
#include "platform/profile.h"
#include "platform/screen.h"

namespace pv {
namespace {

constexpr short kNormal = 0;
constexpr short kMinimized = 1;
constexpr short kMaximized = 2;
constexpr short kSizable = 2;
constexpr short kSizableToolWindow = 5;

void put_bound(const LateBound& form, std::wstring_view property, double bound) {
  form.put(property, Variant(static_cast<float>(bound)));
}

// As the form gives it: only numbers in single precision have seven digits.
std::wstring bound_text(const LateBound& form, std::wstring_view property) {
  const Variant bound = form.get(property);
  return bound.vt == VT_R4 ? format_number(bound.fltVal) : format_number(to_double(bound));
}

}  // namespace

bool save_placement(const LateBound& form, const PlacementSlot& slot) {
  const short state = to_short(form.get(L"WindowState"));
  if (state == kMinimized || state == kMaximized) form.put(L"WindowState", Variant(kNormal));
  const std::wstring left = bound_text(form, L"Left");
  const std::wstring top = bound_text(form, L"Top");
  const std::wstring width = bound_text(form, L"Width");
  const std::wstring height = bound_text(form, L"Height");
  return write_profile(slot.file, slot.section, slot.key,
                       format_placement({left, top, width, height}, state));
}

bool store_placement(const WindowPlacement& placement, const PlacementSlot& slot) {
  return write_profile(slot.file, slot.section, slot.key,
                       format_placement(placement, decimal_separator()));
}

std::optional<WindowPlacement> stored_placement(const PlacementSlot& slot) {
  const auto saved =
      parse_placement(read_profile(slot.file, slot.section, slot.key, L""), decimal_separator());
  if (!saved) return std::nullopt;
  const ScreenSize screen = screen_size_in_twips();
  return fitted(*saved, screen.width, screen.height);
}

bool restore_placement(const LateBound& form, const PlacementSlot& slot) {
  const auto placement = stored_placement(slot);
  if (!placement) return false;
  const short border = to_short(form.get(L"BorderStyle"));
  put_bound(form, L"Left", placement->left);
  put_bound(form, L"Top", placement->top);
  if (border == kSizable || border == kSizableToolWindow) {
    put_bound(form, L"Width", placement->width);
    put_bound(form, L"Height", placement->height);
  }
  form.put(L"WindowState", Variant(placement->state));
  return true;
}

}  // namespace pv
