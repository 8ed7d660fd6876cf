// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Numbers of localised texts.
#pragma once

#include <cstdint>

namespace pv {

/// The string id of the text `base` (its English id) in `language` (1 = English, each language one
/// block of ids further): wrapping 32-bit arithmetic, narrowed to 16 bits.
std::int16_t localized_id(std::int32_t base, std::int16_t language);

}  // namespace pv
