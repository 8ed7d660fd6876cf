// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/string_ids.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace pv {
namespace {

TEST(LocalizedId, AddsOneBlockPerLanguage) {
  EXPECT_EQ(localized_id(200, 1), 200);
  EXPECT_EQ(localized_id(200, 2), 1200);
  EXPECT_EQ(localized_id(200, 6), 5200);
  EXPECT_EQ(localized_id(200, 0), -800);
  EXPECT_EQ(localized_id(-5, 3), 1995);
}

TEST(LocalizedId, IsNarrowedToSixteenBits) {
  EXPECT_EQ(localized_id(0x10000 + 200, 1), 200);
  EXPECT_EQ(localized_id(32767, 2), static_cast<std::int16_t>(33767 - 65536));
  EXPECT_EQ(localized_id(200, 100), static_cast<std::int16_t>(99200 - 131072));
  EXPECT_EQ(localized_id(0, -32768), static_cast<std::int16_t>(-32769000 + 500 * 65536));
}

TEST(LocalizedId, WrapsInThirtyTwoBits) {
  EXPECT_EQ(localized_id(INT32_MAX, 2), static_cast<std::int16_t>(999));
  EXPECT_EQ(localized_id(INT32_MIN, 0), static_cast<std::int16_t>(-1000));
}

}  // namespace
}  // namespace pv
