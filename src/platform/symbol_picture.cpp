// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/symbol_picture.h"

#include <array>
#include <memory>
#include <string>
#include <type_traits>

#include "com/failure.h"
#include "platform/resources.h"

namespace pv {
namespace {

constexpr long kLargest = 1024;

struct BitmapDescription {
  BITMAPINFOHEADER header{};
  std::array<RGBQUAD, Symbol::kColours> palette{};

  BITMAPINFO* info() { return reinterpret_cast<BITMAPINFO*>(this); }
};

// One byte a pixel, rows from the top.
BitmapDescription symbol_description() {
  BitmapDescription description;
  BITMAPINFOHEADER& header = description.header;
  header.biSize = sizeof header;
  header.biWidth = Symbol::kSide;
  header.biHeight = -Symbol::kSide;
  header.biPlanes = 1;
  header.biBitCount = 8;
  header.biClrUsed = Symbol::kColours;
  for (std::uint8_t i = 0; i < Symbol::kColours; ++i) {
    const Rgb colour = symbol_colour(i);
    description.palette[i] = {colour.blue, colour.green, colour.red, 0};
  }
  return description;
}

BITMAPINFO picture_description(int size) {
  BITMAPINFO description{};
  description.bmiHeader.biSize = sizeof description.bmiHeader;
  description.bmiHeader.biWidth = size;
  description.bmiHeader.biHeight = size;
  description.bmiHeader.biPlanes = 1;
  description.bmiHeader.biBitCount = 24;
  return description;
}

struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const { DeleteObject(bitmap); }
};
struct DeviceDeleter {
  void operator()(HDC device) const { DeleteDC(device); }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;
using Device = std::unique_ptr<std::remove_pointer_t<HDC>, DeviceDeleter>;

}  // namespace

COLORREF symbol_colour_ref(std::uint8_t number) {
  const Rgb colour = symbol_colour(number);
  return RGB(colour.red, colour.green, colour.blue);
}

void paint_symbol(HDC device, const Symbol& symbol, int left, int top, int size) {
  BitmapDescription description = symbol_description();
  // Enlarged pixels stay squares; of a reduced symbol no pixel is mixed from several.
  SetStretchBltMode(device, COLORONCOLOR);
  StretchDIBits(device, left, top, size, size, 0, 0, Symbol::kSide, Symbol::kSide,
                symbol.pixels.data(), description.info(), DIB_RGB_COLORS, SRCCOPY);
}

Ref<IPictureDisp> symbol_picture(const Symbol& symbol, long size) {
  if (size < 1 || size > kLargest) {
    throw automation_error(ErrorCode::kInvalidCall, L"symbol size " + std::to_wstring(size));
  }
  const BITMAPINFO description = picture_description(size);
  const Device device(CreateCompatibleDC(nullptr));
  void* bits = nullptr;
  Bitmap bitmap(CreateDIBSection(device.get(), &description, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!device || !bitmap) throw std::bad_alloc();
  const HGDIOBJ previous = SelectObject(device.get(), bitmap.get());
  paint_symbol(device.get(), symbol, 0, 0, size);
  SelectObject(device.get(), previous);
  return bitmap_picture(bitmap.release());
}

}  // namespace pv
