// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/symbol/symbol_preview.h"

#include "platform/symbol_picture.h"

namespace pv {
namespace {

constexpr int kMargin = 6;  // pixels on each side: enough to see where the symbol ends

}  // namespace

SymbolPreview::SymbolPreview(Form& form, int id, const SymbolDrawing& drawing)
    : Canvas(form, id, false, WS_EX_STATICEDGE), drawing_(drawing) {}

// In pixels whatever the resolution, as pictures are.
TwipSize SymbolPreview::measure(const Metrics& metrics, Twips) const {
  const int edge = GetSystemMetrics(SM_CXBORDER);
  const Twips side = metrics.twips(Symbol::kSide + 2 * (kMargin + edge));
  return {side, side};
}

void SymbolPreview::paint(HDC device, const SIZE& size) {
  const int left = static_cast<int>(size.cx - Symbol::kSide) / 2;
  const int top = static_cast<int>(size.cy - Symbol::kSide) / 2;
  if (drawing_.is_unreadable()) {
    return paint_hatch(device, {left, top, left + Symbol::kSide, top + Symbol::kSide});
  }
  paint_symbol(device, drawing_.symbol(), left, top, Symbol::kSide);
}

}  // namespace pv
