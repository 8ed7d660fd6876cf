// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"

namespace pv {

/// Opens a topic of the host's help file. Does nothing for topic 0, without a help file, or on a
/// platform without the help viewer.
void show_help_topic(HWND window, int topic);

}  // namespace pv
