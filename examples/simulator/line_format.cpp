// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Apart from the other uses of terminals: the kernel's own header does not go with <termios.h>,
// whose speeds are codes and have none for a speed that was set as a number.

#include "line_format.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace fluxor {
namespace {

int data_bits(unsigned flags) {
  switch (flags & CSIZE) {
    case CS5:
      return 5;
    case CS6:
      return 6;
    case CS7:
      return 7;
    default:
      return 8;
  }
}

}  // namespace

LineFormat line_format(int descriptor) {
  termios2 settings{};
  if (ioctl(descriptor, TCGETS2, &settings) != 0) return {};
  const unsigned flags = settings.c_cflag;
  const int parity = (flags & PARENB) != 0 ? 1 : 0;
  const int stop_bits = (flags & CSTOPB) != 0 ? 2 : 1;
  return {static_cast<int>(settings.c_ospeed), 1 + data_bits(flags) + parity + stop_bits};
}

}  // namespace fluxor
