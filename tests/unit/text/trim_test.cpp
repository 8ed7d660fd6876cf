#include "core/text/trim.h"

#include <gtest/gtest.h>

namespace pv {
namespace {

TEST(Trimmed, KeepsLeadingBlanksAndDropsTheOthers) {
  EXPECT_EQ(trimmed(L"  a b c "), L"  abc");
  EXPECT_EQ(trimmed(L"a  b"), L"ab");
  EXPECT_EQ(trimmed(L"abc   "), L"abc");
  EXPECT_EQ(trimmed(L" x"), L" x");
}

TEST(Trimmed, KeepsATextOfBlanks) {
  EXPECT_EQ(trimmed(L""), L"");
  EXPECT_EQ(trimmed(L"   "), L"   ");
}

TEST(Trimmed, KnowsNoOtherBlankThanTheSpace) {
  EXPECT_EQ(trimmed(L"\ta\t b\n c\x00A0"), L"\ta\tb\nc\x00A0");
  EXPECT_EQ(trimmed(L"\t a"), L"\ta");
}

}  // namespace
}  // namespace pv
