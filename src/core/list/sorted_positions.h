// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The order of a sorted collection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pv {

/// For each position of the sorted sequence the 0-based position that its member has now. Equal
/// keys keep their order, in both directions; n log n.
std::vector<std::size_t> sorted_positions(const std::vector<std::int16_t>& keys, bool ascending);

}  // namespace pv
