// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/units/unit_conversion.h"

#include <algorithm>
#include <cmath>

#include "core/text/number_text.h"

namespace pv {
namespace {

using Memory = std::pmr::polymorphic_allocator<wchar_t>;

/// Empty when the value is beyond the range of a double.
std::pmr::wstring value_text(double base, const UnitRecord& unit, long decimals, bool dirty,
                             wchar_t decimal, Memory memory) {
  if (dirty) return {L"?", memory};
  const double value = to_unit(base, unit.slope, unit.offset);
  if (!std::isfinite(value)) return std::pmr::wstring(memory);
  return format_decimals(value, decimals, decimal, memory);
}

}  // namespace

double to_unit(double base, double slope, double offset) { return base * slope + offset; }

double to_base(double unit, double slope, double offset) {
  const double difference = unit - offset;
  // Asked beforehand, because a host may have the floating-point unit trap divisions by zero.
  if (slope == 0) return difference;
  const double base = difference / slope;
  return std::isfinite(base) ? base : difference;
}

std::pmr::wstring format_decimals(double value, long decimals, wchar_t decimal, Memory memory) {
  if (decimals < 0) return std::pmr::wstring(format_number(value, decimal), memory);
  return format_fixed(value, static_cast<int>(std::min(decimals, 8L)), decimal, memory);
}

std::pmr::wstring format_in_unit(double base, const UnitRecord& unit, long decimals, long mode,
                                 bool dirty, wchar_t decimal, Memory memory) {
  const auto wanted = [mode](ShowMode known) { return mode == static_cast<long>(known); };
  if (wanted(ShowMode::kUnitOnly)) return std::pmr::wstring(unit.caption, memory);
  if (!wanted(ShowMode::kValueOnly) && !wanted(ShowMode::kValueAndUnit)) {
    return std::pmr::wstring(memory);
  }
  std::pmr::wstring text = value_text(base, unit, decimals, dirty, decimal, memory);
  if (wanted(ShowMode::kValueAndUnit) && !text.empty()) text.append(L" ").append(unit.caption);
  return text;
}

}  // namespace pv
