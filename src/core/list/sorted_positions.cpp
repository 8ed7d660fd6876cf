// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/list/sorted_positions.h"

#include <algorithm>
#include <numeric>

namespace pv {

std::vector<std::size_t> sorted_positions(const std::vector<std::int16_t>& keys, bool ascending) {
  std::vector<std::size_t> positions(keys.size());
  std::iota(positions.begin(), positions.end(), std::size_t{0});
  std::stable_sort(positions.begin(), positions.end(), [&](std::size_t a, std::size_t b) {
    return ascending ? keys[a] < keys[b] : keys[a] > keys[b];
  });
  return positions;
}

}  // namespace pv
