// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/photograph.h"

namespace pv::dialogs_test {
namespace {

std::size_t row_size(const Picture& picture) {
  return static_cast<std::size_t>((picture.width * 3 + 3) / 4 * 4);
}

}  // namespace

COLORREF Picture::at(LONG x, LONG y) const {
  const std::size_t first =
      static_cast<std::size_t>(height - 1 - y) * row_size(*this) + static_cast<std::size_t>(x) * 3;
  const auto part = [&](std::size_t i) { return static_cast<BYTE>(bits[first + i]); };
  return RGB(part(2), part(1), part(0));
}

BITMAPINFOHEADER header_of(const Picture& picture) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = picture.width;
  header.biHeight = picture.height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  return header;
}

Picture photograph(const RECT& place) {
  Picture picture{place.right - place.left, place.bottom - place.top, {}};
  BITMAPINFO description{};
  description.bmiHeader = header_of(picture);
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(screen, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ previous = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, picture.width, picture.height, screen, place.left, place.top, SRCCOPY);
  GdiFlush();
  const std::size_t row = row_size(picture);
  const auto first = static_cast<const char*>(bits);
  picture.bits.assign(first, first + row * static_cast<std::size_t>(picture.height));
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

}  // namespace pv::dialogs_test
