// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/symbols/picture_bytes.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace pv {
namespace {

constexpr std::size_t kShortestPicture = 8;
constexpr std::size_t kFileHead = 14;

/// A number of a header, its lowest byte first. What lies behind the end counts as 0.
std::uint32_t number_at(std::string_view bytes, std::size_t offset, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = size; i-- > 0;) {
    const std::size_t at = offset + i;
    number = number << 8 | (at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0u);
  }
  return number;
}

enum Compression : std::uint32_t { kNone = 0, kRunLength8 = 1, kRunLength4 = 2, kMasks = 3 };

/// What the two kinds of bitmap header say.
struct BitmapHead {
  std::uint64_t size = 0;  // of the header and all up to the pixels
  std::int64_t width = 0;
  std::int64_t height = 0;  // negative: from the top down
  std::uint32_t bits = 0;
  std::uint32_t compression = kNone;
  std::uint64_t data = 0;  // of compressed pixels
};

std::uint64_t palette_entries(std::uint32_t bits, std::uint32_t used) {
  if (bits > 8) return 0;
  return used > 0 ? used : std::uint64_t{1} << bits;
}

BitmapHead core_head(std::string_view bytes) {
  BitmapHead head;
  head.width = number_at(bytes, kFileHead + 4, 2);
  head.height = number_at(bytes, kFileHead + 6, 2);
  head.bits = number_at(bytes, kFileHead + 10, 2);
  head.size = 12 + 3 * palette_entries(head.bits, 0);
  return head;
}

BitmapHead info_head(std::string_view bytes, std::uint32_t size) {
  BitmapHead head;
  head.width = static_cast<std::int32_t>(number_at(bytes, kFileHead + 4, 4));
  head.height = static_cast<std::int32_t>(number_at(bytes, kFileHead + 8, 4));
  head.bits = number_at(bytes, kFileHead + 14, 2);
  head.compression = number_at(bytes, kFileHead + 16, 4);
  head.data = number_at(bytes, kFileHead + 20, 4);
  const std::uint64_t masks = head.compression == kMasks && size == 40 ? 12 : 0;
  head.size = size + masks + 4 * palette_entries(head.bits, number_at(bytes, kFileHead + 32, 4));
  return head;
}

/// The size of the pixel data; 0 when the header makes no sense.
std::uint64_t data_size(const BitmapHead& head) {
  if (head.width <= 0 || head.height == 0 || head.bits == 0 || head.bits > 32) return 0;
  if (head.compression == kRunLength8 || head.compression == kRunLength4) return head.data;
  if (head.compression != kNone && head.compression != kMasks) return 0;
  const std::uint64_t row = (static_cast<std::uint64_t>(head.width) * head.bits + 31) / 32 * 4;
  return row * static_cast<std::uint64_t>(std::abs(head.height));
}

bool is_whole_bitmap(std::string_view bytes) {
  const std::uint32_t points = number_at(bytes, 10, 4);
  const std::uint32_t size = number_at(bytes, kFileHead, 4);
  if (size != 12 && size < 40) return false;
  const BitmapHead head = size == 12 ? core_head(bytes) : info_head(bytes, size);
  const std::uint64_t data = data_size(head);
  return data > 0 && kFileHead + head.size <= bytes.size() && points + data <= bytes.size();
}

bool is_whole_icon_directory(std::string_view bytes) {
  const std::uint32_t images = number_at(bytes, 4, 2);
  return images > 0 && 6 + std::size_t{16} * images <= bytes.size();
}

}  // namespace

bool is_whole_picture(std::string_view bytes) {
  if (bytes.size() < kShortestPicture) return false;
  if (bytes.starts_with("BM")) return is_whole_bitmap(bytes);
  const std::uint32_t kind = number_at(bytes, 0, 4);
  constexpr std::uint32_t kIcon = 0x10000, kCursor = 0x20000;
  return (kind != kIcon && kind != kCursor) || is_whole_icon_directory(bytes);
}

}  // namespace pv
