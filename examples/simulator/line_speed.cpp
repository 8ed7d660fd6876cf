// Apart from the other uses of terminals: the kernel's own header does not go with <termios.h>,
// whose speeds are codes and have none for a speed that was set as a number.

#include "line_speed.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace fluxor {

int line_speed(int descriptor) {
  termios2 settings{};
  if (ioctl(descriptor, TCGETS2, &settings) != 0) return 0;
  return static_cast<int>(settings.c_ospeed);
}

}  // namespace fluxor
