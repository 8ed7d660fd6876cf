// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"

namespace pv {

/// The window of this thread in which the user works, as the owner of dialogs for which the host
/// names none: the active one, or else any that can be seen and used. None when there is no such
/// window; a hidden or minimised owner would take its dialog along.
HWND host_window();

}  // namespace pv
