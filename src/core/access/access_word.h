// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace pv {

/// The rules in an item's access word.
struct AccessRules {
  int read_level = 0;             // password level that reading needs; 0 always, 1 to 4 PW1 to PW4
  int write_level = 0;            // the same for writing
  bool updates_password = false;  // the level is read again after a write
  bool is_masked = false;         // the value is shown as "*"
};

/// A level that no password opens: stands for an access word that cannot be read.
inline constexpr int kClosedLevel = 7;

/// Bits 8 to 15 are not interpreted.
AccessRules access_rules(std::int16_t word);

/// The access word of the rules. A level of -1 counts as it stands, as a missing choice does.
/// Throws kOverflow when the word leaves 16 bits.
std::int16_t access_word(const AccessRules& rules);

}  // namespace pv
