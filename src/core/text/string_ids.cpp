// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/string_ids.h"

#include "resources/text_ids.h"

namespace pv {

std::int16_t localized_id(std::int32_t base, std::int16_t language) {
  // Unsigned, because signed arithmetic must not wrap.
  const std::uint32_t offset = TEXT_BLOCK * (static_cast<std::uint32_t>(language) - 1U);
  return static_cast<std::int16_t>(static_cast<std::uint32_t>(base) + offset);
}

}  // namespace pv
