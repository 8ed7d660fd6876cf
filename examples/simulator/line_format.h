// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace fluxor {

/// How characters are sent on a line.
struct LineFormat {
  int baud = 0;   // bits per second; 0 when nobody knows
  int bits = 10;  // of a character: start bit, data bits, parity bit if there is one, stop bits

  double seconds_per_character() const { return baud > 0 ? static_cast<double>(bits) / baud : 0; }
};

/// What a terminal is set to. A pseudo-terminal keeps speed and stop bits; it has eight data bits
/// and no parity whatever was asked for.
LineFormat line_format(int descriptor);

}  // namespace fluxor
