// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "dialogs/kit/metrics.h"

namespace pv {

/// Of a field with edges that shows one line of text of this width.
TwipSize field_size(const Metrics& metrics, Twips text_width);

/// Pixels between the upper edge of a field and its text.
int edge_inset();

/// What the arrow of a list or picker adds to its width.
Twips arrow_width(const Metrics& metrics);

}  // namespace pv
