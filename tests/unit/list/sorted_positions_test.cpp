// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/list/sorted_positions.h"

#include <gtest/gtest.h>

#include <random>

namespace pv {
namespace {

using Positions = std::vector<std::size_t>;

/// The order as it is defined: members are moved one by one inside the collection.
Positions order_by_moving(const std::vector<std::int16_t>& keys, bool ascending) {
  struct Member {
    std::int16_t key;
    std::size_t origin;
  };
  std::vector<Member> members;
  for (std::size_t i = 0; i < keys.size(); ++i) members.push_back({keys[i], i});
  for (std::size_t i = 0; i < members.size(); ++i) {
    for (std::size_t j = 0; j <= i; ++j) {
      const bool moves =
          ascending ? members[i].key < members[j].key : members[i].key > members[j].key;
      if (!moves) continue;
      const Member member = members[i];
      members.erase(members.begin() + static_cast<std::ptrdiff_t>(i));
      members.insert(members.begin() + static_cast<std::ptrdiff_t>(j), member);
      break;
    }
  }
  Positions positions;
  for (const Member& member : members) positions.push_back(member.origin);
  return positions;
}

TEST(SortedPositions, OrdersByNumber) {
  EXPECT_EQ(sorted_positions({10, 9, 100}, true), (Positions{1, 0, 2}));
  EXPECT_EQ(sorted_positions({10, 9, 100}, false), (Positions{2, 0, 1}));
  EXPECT_EQ(sorted_positions({-32768, 32767, 0}, true), (Positions{0, 2, 1}));
}

TEST(SortedPositions, KeepsTheOrderOfEqualKeysInBothDirections) {
  EXPECT_EQ(sorted_positions({2, 1, 2, 1}, true), (Positions{1, 3, 0, 2}));
  EXPECT_EQ(sorted_positions({2, 1, 2, 1}, false), (Positions{0, 2, 1, 3}));
}

TEST(SortedPositions, OfNothingIsEmpty) {
  EXPECT_TRUE(sorted_positions({}, true).empty());
  EXPECT_EQ(sorted_positions({5}, false), Positions{0});
}

TEST(SortedPositions, EqualsMovingTheMembersOneByOne) {
  std::mt19937 random(5);
  for (int round = 0; round < 2000; ++round) {
    const int size = std::uniform_int_distribution<int>(0, 40)(random);
    const int spread = std::uniform_int_distribution<int>(0, 1)(random) == 0 ? 5 : 32767;
    std::vector<std::int16_t> keys;
    for (int i = 0; i < size; ++i) {
      keys.push_back(
          static_cast<std::int16_t>(std::uniform_int_distribution<int>(-spread, spread)(random)));
    }
    for (const bool ascending : {true, false}) {
      ASSERT_EQ(sorted_positions(keys, ascending), order_by_moving(keys, ascending));
    }
  }
}

}  // namespace
}  // namespace pv
