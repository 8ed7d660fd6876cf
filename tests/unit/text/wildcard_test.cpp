// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/wildcard.h"

#include <gtest/gtest.h>

#include <string>

namespace pv {
namespace {

struct Case {
  const wchar_t* text;
  const wchar_t* pattern;
  bool matched;
};

class Wildcard : public testing::TestWithParam<Case> {};

TEST_P(Wildcard, MatchesTheWholeText) {
  const Case& each = GetParam();
  EXPECT_EQ(matches(each.text, each.pattern), each.matched)
      << testing::PrintToString(std::wstring(each.text)) << " against "
      << testing::PrintToString(std::wstring(each.pattern));
}

INSTANTIATE_TEST_SUITE_P(
    Elements, Wildcard,
    testing::Values(Case{L"", L"", true}, Case{L"A", L"", false}, Case{L"", L"*", true},
                    Case{L"", L"?", false}, Case{L"LOG.TXT", L"LOG.TXT", true},
                    Case{L"LOG.TXT", L"log.txt", false}, Case{L"LOG.TXT", L"*.TXT", true},
                    Case{L"LOG.TXT.BAK", L"*.TXT", false}, Case{L"A.TXT.TXT", L"*.TXT", true},
                    Case{L"DAY1.CSV", L"DAY#.CSV", true}, Case{L"DAYX.CSV", L"DAY#.CSV", false},
                    Case{L"DAY1.CSV", L"DAY?.CSV", true}, Case{L"DAY12.CSV", L"DAY?.CSV", false},
                    Case{L"ABC", L"A*C", true}, Case{L"AC", L"A*C", true},
                    Case{L"ABCD", L"A*C", false}, Case{L"AXBXC", L"A*B*C", true},
                    Case{L"AAAB", L"*AB", true}, Case{L"AB", L"**B", true}));

INSTANTIATE_TEST_SUITE_P(Lists, Wildcard,
                         testing::Values(Case{L"B", L"[ABC]", true}, Case{L"D", L"[ABC]", false},
                                         Case{L"B", L"[A-C]", true}, Case{L"D", L"[A-C]", false},
                                         Case{L"D", L"[!A-C]", true}, Case{L"B", L"[!A-C]", false},
                                         Case{L"5", L"[A-C5]", true}, Case{L"-", L"[-A]", true},
                                         Case{L"*", L"[*]", true}, Case{L"X", L"[*]", false},
                                         Case{L"?", L"[?]", true}, Case{L"#", L"[#]", true},
                                         Case{L"!", L"[!]", true}, Case{L"AB", L"A[]B", true},
                                         Case{L"A", L"[A", false}, Case{L"", L"[]", true},
                                         Case{L"AXC", L"*[X]C", true},
                                         Case{L"FILE7.DAT", L"*[0-9].DAT", true},
                                         Case{L"FILE.DAT", L"*[0-9].DAT", false}));

TEST(WildcardCost, ManyStarsDoNotMakeItSlow) {
  const std::wstring text(5000, L'A');
  std::wstring pattern;
  for (int i = 0; i < 200; ++i) pattern += L"*A";
  EXPECT_TRUE(matches(text, pattern));
  EXPECT_FALSE(matches(text, pattern + L"B"));
}

}  // namespace
}  // namespace pv
