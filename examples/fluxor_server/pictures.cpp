// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "pictures.h"

#include <olectl.h>

#include <array>

namespace fluxor {
namespace {

constexpr int kSize = 16;  // pixels each way
constexpr short kConnected = 200, kNotConnected = 201;

using Color = DWORD;  // 0x00RRGGBB, as a device-independent bitmap of 32 bits holds it
constexpr Color kBackground = 0xF0F0F0, kGreen = 0x2E9E4F, kGray = 0x8A8A8A, kBlue = 0x2F6FB5;

using Pixels = std::array<Color, kSize * kSize>;

// A filled circle.
Pixels lamp(Color color) {
  Pixels pixels{};
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      const int right = 2 * x - (kSize - 1);
      const int down = 2 * y - (kSize - 1);
      const bool inside = right * right + down * down <= 13 * 13;
      pixels[static_cast<std::size_t>(y * kSize + x)] = inside ? color : kBackground;
    }
  }
  return pixels;
}

Color color_of(short number) {
  if (number == kConnected) return kGreen;
  return number == kNotConnected ? kGray : kBlue;
}

HBITMAP to_bitmap(const Pixels& pixels) {
  BITMAPINFO information{};
  information.bmiHeader.biSize = sizeof information.bmiHeader;
  information.bmiHeader.biWidth = kSize;
  information.bmiHeader.biHeight = -kSize;  // the first row is on top
  information.bmiHeader.biPlanes = 1;
  information.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &information, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!bitmap) throw CallFailure(E_OUTOFMEMORY, L"There is no room for a picture.");
  std::copy(pixels.begin(), pixels.end(), static_cast<Color*>(bits));
  return bitmap;
}

}  // namespace

ComPtr<IPictureDisp> make_picture(short number) {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = to_bitmap(lamp(color_of(number)));
  ComPtr<IPictureDisp> picture;
  check(OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE,
                                 reinterpret_cast<void**>(picture.GetAddressOf())));
  return picture;
}

}  // namespace fluxor
