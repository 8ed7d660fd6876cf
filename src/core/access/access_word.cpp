// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/access/access_word.h"

#include <limits>

#include "core/errors/automation_error.h"

namespace pv {
namespace {

constexpr int kWriteMask = 7;
constexpr int kReadMask = 56;
constexpr int kReadUnit = 8;
constexpr int kUpdateFlag = 64;
constexpr int kMaskFlag = 128;

}  // namespace

AccessRules access_rules(std::int16_t word) {
  return {(word & kReadMask) / kReadUnit, word & kWriteMask, (word & kUpdateFlag) != 0,
          (word & kMaskFlag) != 0};
}

std::int16_t access_word(const AccessRules& rules) {
  const long word = static_cast<long>(rules.read_level) * kReadUnit + rules.write_level +
                    (rules.updates_password ? kUpdateFlag : 0) + (rules.is_masked ? kMaskFlag : 0);
  using Limits = std::numeric_limits<std::int16_t>;
  if (word < Limits::min() || word > Limits::max()) {
    throw automation_error(ErrorCode::kOverflow, L"access word " + std::to_wstring(word));
  }
  return static_cast<std::int16_t>(word);
}

}  // namespace pv
