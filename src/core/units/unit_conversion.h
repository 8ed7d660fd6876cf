// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// From base values to engineering units and back, and the text that is shown for them.
#pragma once

#include <memory_resource>
#include <string>

#include "core/units/dimension_file.h"

namespace pv {

/// What format_in_unit shows; the values are those of the published ShowModeTypes.
enum class ShowMode { kValueOnly = 0, kUnitOnly = 1, kValueAndUnit = 2 };

/// base * slope + offset.
double to_unit(double base, double slope, double offset);

/// (unit - offset) / slope; where that fails, as it does for slope 0, slope counts as 1.
double to_base(double unit, double slope, double offset);

/// `value` with `decimals` decimals: 0 to 8 as they are, more as 8, any negative number the general
/// text. `memory` holds the text, here and below.
std::pmr::wstring format_decimals(double value, long decimals, wchar_t decimal,
                                  std::pmr::polymorphic_allocator<wchar_t> memory = {});

/// The text of a base value in `unit`: value, caption, or both with a blank between. A dirty value
/// is "?". Empty for an unknown mode and where a value to be shown is beyond the range of a double.
std::pmr::wstring format_in_unit(double base, const UnitRecord& unit, long decimals, long mode,
                                 bool dirty, wchar_t decimal,
                                 std::pmr::polymorphic_allocator<wchar_t> memory = {});

}  // namespace pv
