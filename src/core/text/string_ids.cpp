#include "core/text/string_ids.h"

namespace pv {

std::int16_t localized_id(std::int32_t base, std::int16_t language) {
  // Unsigned, because signed arithmetic must not wrap.
  const auto block = 1000U * (static_cast<std::uint32_t>(language) - 1U);
  return static_cast<std::int16_t>(static_cast<std::uint32_t>(base) + block);
}

}  // namespace pv
