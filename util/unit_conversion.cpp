#include "util/unit_conversion.h"

#include <algorithm>
#include <cmath>

#include "util/number_text.h"

namespace pv {
namespace {

/// Empty when the value is beyond the range of a double.
std::wstring value_text(double base, const UnitRecord& unit, long decimals, bool dirty,
                        wchar_t decimal) {
  if (dirty) return L"?";
  const double value = to_unit(base, unit.slope, unit.offset);
  return std::isfinite(value) ? number_shown(value, decimals, decimal) : L"";
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

std::wstring number_shown(double value, long decimals, wchar_t decimal) {
  if (decimals < 0) return general_text(value, decimal);
  return fixed_text(value, static_cast<int>(std::min(decimals, 8L)), decimal);
}

std::wstring unit_text(double base, const UnitRecord& unit, long decimals, long mode, bool dirty,
                       wchar_t decimal) {
  const auto wanted = [mode](ShowMode known) { return mode == static_cast<long>(known); };
  if (wanted(ShowMode::kUnitOnly)) return unit.caption;
  if (!wanted(ShowMode::kValueOnly) && !wanted(ShowMode::kValueAndUnit)) return {};
  std::wstring value = value_text(base, unit, decimals, dirty, decimal);
  if (wanted(ShowMode::kValueOnly) || value.empty()) return value;
  return value + L" " + unit.caption;
}

}  // namespace pv
