// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/screen.h"

#include <windows.h>

namespace pv {

ScreenSize screen_size_in_twips() {
  constexpr double kTwipsPerInch = 1440;
  const HDC screen = GetDC(nullptr);
  const double dpi_x = GetDeviceCaps(screen, LOGPIXELSX);
  const double dpi_y = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return {GetSystemMetrics(SM_CXSCREEN) * kTwipsPerInch / dpi_x,
          GetSystemMetrics(SM_CYSCREEN) * kTwipsPerInch / dpi_y};
}

}  // namespace pv
