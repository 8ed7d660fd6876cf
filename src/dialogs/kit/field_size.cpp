// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/kit/field_size.h"

namespace pv {
namespace {

constexpr Twips kFieldMargin = 60;  // left and right of the text; half of it above and below

}  // namespace

TwipSize field_size(const Metrics& metrics, Twips text_width) {
  const Twips edges = metrics.twips(2 * GetSystemMetrics(SM_CXEDGE));
  return {text_width + edges + 2 * kFieldMargin, metrics.line_height() + edges + kFieldMargin};
}

// Inside its edge the platform leaves one pixel free.
int edge_inset() { return GetSystemMetrics(SM_CYEDGE) + 1; }

Twips arrow_width(const Metrics& metrics) {
  return metrics.twips(GetSystemMetrics(SM_CXVSCROLL)) + 2 * kFieldMargin;
}

}  // namespace pv
