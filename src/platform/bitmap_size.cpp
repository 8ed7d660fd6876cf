// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/bitmap_size.h"

#include <windows.h>

namespace pv {

BitmapSize bitmap_size(long bitmap, long dc) {
  const auto handle = reinterpret_cast<HGDIOBJ>(bitmap);
  BITMAP description{};
  const bool known = GetObjectA(handle, sizeof description, &description) == sizeof description;
  const HDC memory = CreateCompatibleDC(reinterpret_cast<HDC>(dc));
  const HGDIOBJ former = known ? SelectObject(memory, handle) : nullptr;
  if (former) SelectObject(memory, former);  // the caller's bitmap must outlive the context
  DeleteDC(memory);
  if (!known) return {};
  return {description.bmWidth, description.bmHeight};
}

}  // namespace pv
