// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/symbols/picture_bytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace pv {
namespace {

/// Bytes of numbers, the lowest first.
class Bytes {
 public:
  Bytes& add(std::size_t size, std::uint32_t number) {
    for (; size > 0; --size, number >>= 8) bytes_ += static_cast<char>(number & 255);
    return *this;
  }
  Bytes& fill(std::size_t size) {
    bytes_.append(size, '\0');
    return *this;
  }
  const std::string& text() const { return bytes_; }

 private:
  std::string bytes_;
};

struct Bitmap {
  std::uint32_t head = 40;
  std::uint32_t width = 3;
  std::uint32_t height = 2;
  std::uint32_t bits = 24;
  std::uint32_t compression = 0;
  std::uint32_t size_of_points = 0;
  std::uint32_t colours = 0;
  std::size_t before_points = 0;  // masks and palette
  std::size_t points = 24;        // rows are filled up to four bytes
};

std::string file_of(const Bitmap& bitmap) {
  const auto offset = static_cast<std::uint32_t>(14 + bitmap.head + bitmap.before_points);
  Bytes bytes;
  bytes.add(2, 0x4D42).add(4, 0).add(4, 0).add(4, offset).add(4, bitmap.head);
  if (bitmap.head == 12) {
    bytes.add(2, bitmap.width).add(2, bitmap.height).add(2, 1).add(2, bitmap.bits);
  } else {
    bytes.add(4, bitmap.width).add(4, bitmap.height).add(2, 1).add(2, bitmap.bits);
    bytes.add(4, bitmap.compression).add(4, bitmap.size_of_points).add(4, 0).add(4, 0);
    bytes.add(4, bitmap.colours).add(4, 0).fill(bitmap.head - 40);
  }
  return bytes.fill(bitmap.before_points + bitmap.points).text();
}

class WholeBitmap : public testing::TestWithParam<Bitmap> {};

TEST_P(WholeBitmap, IsAPictureAndNoBeginningOfItIs) {
  const std::string file = file_of(GetParam());
  EXPECT_TRUE(is_whole_picture(file));
  EXPECT_TRUE(is_whole_picture(file + "more"));
  for (std::size_t size = 0; size < file.size(); ++size) {
    // A copy of exactly these bytes: reading behind them would be seen.
    EXPECT_FALSE(is_whole_picture(std::string(file, 0, size))) << size;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, WholeBitmap,
    testing::Values(
        Bitmap{}, Bitmap{.height = static_cast<std::uint32_t>(-2)}, Bitmap{.head = 12},
        Bitmap{.head = 108}, Bitmap{.head = 124},
        Bitmap{.head = 12, .bits = 1, .before_points = 6, .points = 8},
        Bitmap{.bits = 1, .before_points = 8, .points = 8},
        Bitmap{.bits = 4, .before_points = 64, .points = 8},
        Bitmap{.bits = 4, .colours = 2, .before_points = 8, .points = 8},
        Bitmap{.width = 5, .bits = 8, .before_points = 1024, .points = 16},
        Bitmap{.bits = 16, .points = 16},
        Bitmap{.bits = 16, .compression = 3, .before_points = 12, .points = 16},
        Bitmap{.bits = 32, .colours = 9, .points = 24},
        Bitmap{
            .bits = 8, .compression = 1, .size_of_points = 10, .before_points = 1024, .points = 10},
        Bitmap{
            .bits = 4, .compression = 2, .size_of_points = 7, .before_points = 64, .points = 7}));

class SenselessBitmap : public testing::TestWithParam<Bitmap> {};

TEST_P(SenselessBitmap, IsNoPicture) {
  EXPECT_FALSE(is_whole_picture(file_of(GetParam()) + std::string(100'000, '\0')));
}

constexpr std::uint32_t kHuge = 0x7FFFFFFF;
constexpr std::uint32_t kLowest = 0x80000000;

INSTANTIATE_TEST_SUITE_P(
    Kinds, SenselessBitmap,
    testing::Values(Bitmap{.width = 0}, Bitmap{.height = 0}, Bitmap{.width = kLowest},
                    Bitmap{.height = kLowest}, Bitmap{.width = kHuge, .height = kHuge},
                    Bitmap{.width = kHuge, .height = kLowest, .bits = 32}, Bitmap{.bits = 0},
                    Bitmap{.bits = 33}, Bitmap{.bits = 0xFFFF}, Bitmap{.compression = 4},
                    Bitmap{.compression = 5}, Bitmap{.bits = 8, .compression = 1},
                    Bitmap{.bits = 8, .compression = 1, .size_of_points = 0xFFFFFFFF},
                    Bitmap{.bits = 8, .colours = 0xFFFFFFFF}, Bitmap{.head = 12, .width = 0}));

TEST(PictureBytes, HaveAHeadOfAKnownSize) {
  std::string file = file_of({}) + std::string(1000, '\0');
  for (const char size : {'\0', '\x0B', '\x0D', '\x27'}) {
    file[14] = size;
    EXPECT_FALSE(is_whole_picture(file)) << int{size};
  }
  file.replace(14, 4, 4, '\xFF');
  EXPECT_FALSE(is_whole_picture(file));
}

TEST(PictureBytes, HavePointsBehindAnyOffsetInTheFile) {
  std::string file = file_of({});
  file.replace(10, 4, 4, '\xFF');
  EXPECT_FALSE(is_whole_picture(file));
}

TEST(PictureBytes, OfIconsAndCursorsHaveTheirWholeDirectory) {
  for (const std::uint32_t kind : {0x10000u, 0x20000u}) {
    const std::string file = Bytes().add(4, kind).add(2, 2).fill(32).text();
    EXPECT_TRUE(is_whole_picture(file));
    EXPECT_FALSE(is_whole_picture(file.substr(0, file.size() - 1)));
    EXPECT_FALSE(is_whole_picture(Bytes().add(4, kind).add(2, 0).fill(32).text()));
  }
}

TEST(PictureBytes, OfOtherFormatsAreLeftToThePlatform) {
  EXPECT_TRUE(is_whole_picture("GIF89a and more"));
  EXPECT_TRUE(is_whole_picture("this is no picture"));
  EXPECT_FALSE(is_whole_picture("GIF89a."));
  EXPECT_FALSE(is_whole_picture(""));
}

}  // namespace
}  // namespace pv
