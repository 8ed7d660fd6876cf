#pragma once

namespace fluxor {

/// Bits per second that a terminal is set to; 0 when nobody knows.
int line_speed(int descriptor);

}  // namespace fluxor
