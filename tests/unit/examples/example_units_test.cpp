// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Proves the example table of dimensions and units: standard order, exact factors.
#include <gtest/gtest.h>

#include <map>
#include <numbers>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/units/unit_conversion.h"
#include "example_data.h"

namespace {

using UnitName = std::pair<std::wstring, std::wstring>;  // dimension, unit

std::string printable(const UnitName& name) {
  const std::wstring text = name.first + L" " + name.second;
  return {text.begin(), text.end()};
}

class ExampleUnits : public example_data::ExampleData {
 protected:
  double convert(const std::wstring& dimension, double value, const std::wstring& from,
                 const std::wstring& to) const {
    const pv::UnitRecord source = unit({dimension, from}), target = unit({dimension, to});
    return pv::to_unit(pv::to_base(value, source.slope, source.offset), target.slope,
                       target.offset);
  }

  pv::UnitRecord unit(const UnitName& name) const {
    for (const auto& dimension : dimensions_)
      for (const auto& candidate : dimension.units)
        if (dimension.caption == name.first && candidate.caption == name.second) return candidate;
    ADD_FAILURE() << "there is no unit " << printable(name);
    return {};
  }
};

TEST_F(ExampleUnits, TwentyTwoDimensionsStandInTheStandardOrder) {
  const std::vector<std::wstring> order{
      L"Percentage",      L"Phase",     L"Mass flow", L"Current",      L"Frequency",
      L"Temperature",     L"Density",   L"Mass",      L"No dimension", L"Volume",
      L"Volumetric flow", L"Wait time", L"Voltage",   L"AD code",      L"Time",
      L"Resistance",      L"None",      L"Baud",      L"Time-out",     L"Pressure",
      L"Velocity",        L"Battery"};
  ASSERT_EQ(dimensions_.size(), order.size());
  for (std::size_t i = 0; i < order.size(); ++i) EXPECT_EQ(dimensions_[i].caption, order[i]);
}

// Units are found by caption, in whatever case.
TEST_F(ExampleUnits, CaptionsDifferByMoreThanTheirCase) {
  for (const auto& dimension : dimensions_) {
    std::set<std::wstring> seen;
    for (const auto& unit : dimension.units) {
      EXPECT_TRUE(seen.insert(example_data::folded(unit.caption)).second)
          << printable({dimension.caption, unit.caption});
    }
  }
}

TEST_F(ExampleUnits, FirstUnitIsTheBase) {
  for (const auto& dimension : dimensions_) {
    ASSERT_FALSE(dimension.units.empty());
    EXPECT_EQ(dimension.units[0].slope, 1);
    EXPECT_EQ(dimension.units[0].offset, 0);
  }
}

// One unit of each kind, measured in base units, from its definition: inch 0.0254 m, pound
// 0.45359237 kg, US gallon 231 cubic inches, standard gravity 9.80665 m/s2.
TEST_F(ExampleUnits, EveryUnitHasTheFactorOfItsDefinition) {
  constexpr double kPi = std::numbers::pi, kFoot = 0.3048, kPound = 0.45359237;
  constexpr double kGallon = 231 * 0.254 * 0.254 * 0.254;  // l
  constexpr double kCubicFoot = kFoot * kFoot * kFoot;     // m3
  const std::map<UnitName, double> sizes{
      {{L"Percentage", L"%"}, 1},
      {{L"Percentage", L"1/1"}, 100},
      {{L"Percentage", L"ppm"}, 1e-4},
      {{L"Phase", L"\u00B0"}, 1},
      {{L"Phase", L"rad"}, 180 / kPi},
      {{L"Phase", L"mrad"}, 0.18 / kPi},
      {{L"Phase", L"gon"}, 0.9},
      {{L"Mass flow", L"kg/s"}, 1},
      {{L"Mass flow", L"kg/min"}, 1.0 / 60},
      {{L"Mass flow", L"kg/h"}, 1.0 / 3600},
      {{L"Mass flow", L"t/h"}, 1000.0 / 3600},
      {{L"Mass flow", L"g/s"}, 0.001},
      {{L"Mass flow", L"lb/min"}, kPound / 60},
      {{L"Mass flow", L"lb/h"}, kPound / 3600},
      {{L"Current", L"mA"}, 1},
      {{L"Current", L"A"}, 1000},
      {{L"Current", L"\u00B5A"}, 0.001},
      {{L"Frequency", L"Hz"}, 1},
      {{L"Frequency", L"kHz"}, 1000},
      {{L"Frequency", L"1/min"}, 1.0 / 60},
      {{L"Temperature", L"\u00B0C"}, 1},
      {{L"Temperature", L"K"}, 1},
      {{L"Temperature", L"\u00B0F"}, 5.0 / 9},
      {{L"Temperature", L"\u00B0R"}, 5.0 / 9},
      {{L"Density", L"kg/m3"}, 1},
      {{L"Density", L"g/cm3"}, 1000},
      {{L"Density", L"kg/l"}, 1000},
      {{L"Density", L"g/l"}, 1},
      {{L"Density", L"lb/ft3"}, kPound / kCubicFoot},
      {{L"Density", L"lb/gal"}, kPound / (kGallon / 1000)},
      {{L"Mass", L"kg"}, 1},
      {{L"Mass", L"t"}, 1000},
      {{L"Mass", L"lb"}, kPound},
      {{L"Mass", L"g"}, 0.001},
      {{L"Mass", L"oz"}, kPound / 16},
      {{L"No dimension", L"-"}, 1},
      {{L"Volume", L"m3"}, 1},
      {{L"Volume", L"l"}, 0.001},
      {{L"Volume", L"hl"}, 0.1},
      {{L"Volume", L"gal"}, kGallon / 1000},
      {{L"Volume", L"ft3"}, kCubicFoot},
      {{L"Volume", L"bbl"}, 42 * kGallon / 1000},
      {{L"Volumetric flow", L"l/s"}, 1},
      {{L"Volumetric flow", L"l/min"}, 1.0 / 60},
      {{L"Volumetric flow", L"l/h"}, 1.0 / 3600},
      {{L"Volumetric flow", L"m3/h"}, 1000.0 / 3600},
      {{L"Volumetric flow", L"gal/min"}, kGallon / 60},
      {{L"Volumetric flow", L"ft3/min"}, kCubicFoot * 1000 / 60},
      {{L"Volumetric flow", L"m3/s"}, 1000},
      {{L"Wait time", L"s"}, 1},
      {{L"Wait time", L"ms"}, 0.001},
      {{L"Voltage", L"V"}, 1},
      {{L"Voltage", L"mV"}, 0.001},
      {{L"AD code", L"digit"}, 1},
      {{L"AD code", L"kdigit"}, 1000},
      {{L"Time", L"h"}, 1},
      {{L"Time", L"min"}, 1.0 / 60},
      {{L"Time", L"s"}, 1.0 / 3600},
      {{L"Time", L"d"}, 24},
      {{L"Resistance", L"Ohm"}, 1},
      {{L"Resistance", L"kOhm"}, 1000},
      {{L"None", L"none"}, 1},
      {{L"Baud", L"Bd"}, 1},
      {{L"Baud", L"kBd"}, 1000},
      {{L"Time-out", L"ms"}, 1},
      {{L"Time-out", L"s"}, 1000},
      {{L"Pressure", L"bar"}, 1},
      {{L"Pressure", L"kPa"}, 0.01},
      {{L"Pressure", L"mbar"}, 0.001},
      {{L"Pressure", L"Pa"}, 1e-5},
      {{L"Pressure", L"MPa"}, 10},
      {{L"Pressure", L"psi"}, kPound * 9.80665 / (0.0254 * 0.0254) * 1e-5},
      {{L"Pressure", L"atm"}, 1.01325},
      {{L"Velocity", L"m/s"}, 1},
      {{L"Velocity", L"cm/s"}, 0.01},
      {{L"Velocity", L"km/h"}, 1 / 3.6},
      {{L"Velocity", L"ft/s"}, kFoot},
      {{L"Velocity", L"ft/min"}, kFoot / 60},
      {{L"Battery", L"V"}, 1},
      {{L"Battery", L"mV"}, 0.001},
  };
  std::size_t units = 0;
  for (const auto& dimension : dimensions_) {
    for (const auto& unit : dimension.units) {
      const UnitName name{dimension.caption, unit.caption};
      ASSERT_TRUE(sizes.contains(name)) << printable(name);
      EXPECT_NEAR(unit.slope * sizes.at(name), 1, 5e-15) << printable(name);
      EXPECT_EQ(unit.offset != 0,
                dimension.caption == L"Temperature" && &unit != &dimension.units[0])
          << printable(name);
      ++units;
    }
  }
  EXPECT_EQ(units, sizes.size());
}

TEST_F(ExampleUnits, ConversionsOfRoundNumbersAreExact) {
  EXPECT_EQ(convert(L"Temperature", 0, L"\u00B0C", L"K"), 273.15);
  EXPECT_EQ(convert(L"Temperature", 0, L"\u00B0C", L"\u00B0F"), 32);
  EXPECT_EQ(convert(L"Temperature", 100, L"\u00B0C", L"\u00B0F"), 212);
  EXPECT_EQ(convert(L"Temperature", 212, L"\u00B0F", L"\u00B0C"), 100);
  EXPECT_EQ(convert(L"Temperature", 0, L"\u00B0C", L"\u00B0R"), 491.67);
  EXPECT_EQ(convert(L"Pressure", 1, L"bar", L"Pa"), 100000);
  EXPECT_EQ(convert(L"Pressure", 101325, L"Pa", L"bar"), 1.01325);
  EXPECT_EQ(convert(L"Pressure", 250, L"kPa", L"mbar"), 2500);
  EXPECT_EQ(convert(L"Volumetric flow", 10, L"l/s", L"m3/h"), 36);
  EXPECT_EQ(convert(L"Volumetric flow", 3.6, L"m3/h", L"l/min"), 60);
  EXPECT_EQ(convert(L"Mass flow", 1, L"kg/s", L"kg/h"), 3600);
  EXPECT_EQ(convert(L"Mass flow", 3.6, L"t/h", L"kg/s"), 1);
  EXPECT_EQ(convert(L"Volume", 2, L"m3", L"l"), 2000);
  EXPECT_EQ(convert(L"Time", 90, L"min", L"h"), 1.5);
  EXPECT_EQ(convert(L"Velocity", 36, L"km/h", L"m/s"), 10);
}

}  // namespace
