// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "process.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "device.h"
#include "item_id.h"

namespace fluxor {
namespace {

// The working point around which the values move.
constexpr double kFlow = 3.5;                      // l/s
constexpr double kWaterTemperature = 20;           // °C
constexpr double kWaterDensity = 998.2;            // kg/m3
constexpr double kExpansion = 0.00021;             // per K
constexpr double kLinePressure = 2.4;              // bar
constexpr double kResonance = 182.46;              // Hz
constexpr double kPhasePerFlow = 0.4375 / 3.4937;  // degrees per kg/s

constexpr double kVolumeCounts = 1;  // value of the total source

double wave(double clock, double period) { return std::sin(2 * std::numbers::pi * clock / period); }

void measure(Device& device, double clock) {
  double flow = kFlow * (1 + 0.06 * wave(clock, 47) + 0.02 * wave(clock, 3.7));
  if (flow < device.number(kLowFlowCutOff)) flow = 0;
  const double temperature = kWaterTemperature + 1.5 * wave(clock, 600);
  const double density = kWaterDensity * (1 - kExpansion * (temperature - kWaterTemperature));
  device.set_number(kVolumeFlow, flow);
  device.set_number(kTemperature, temperature);
  device.set_number(kDensity, density);
  device.set_number(kMassFlow, flow * density / 1000);
  device.set_number(kPressure, kLinePressure + 0.05 * wave(clock, 31));
  device.set_number(kTubeFrequency, kResonance * std::sqrt(kWaterDensity / density));
  device.set_number(kPhaseShift, flow * density / 1000 * kPhasePerFlow);
  device.set_number(kPt1000,
                    1000 * (1 + 3.9083e-3 * temperature - 5.775e-7 * temperature * temperature));
}

void derive(Device& device) {
  const double flow = device.number(kVolumeFlow);
  const double radius = device.number(kNominalDiameter) / 2000;  // m
  if (radius > 0) {
    device.set_number(kVelocity, flow / 1000 / (std::numbers::pi * radius * radius));
  }
  if (const double full = device.number(kFullScaleFlow); full > 0) {
    device.set_number(kRelativeFlow, flow / full * 100);
  }
}

bool counts_volume(const Device& device) { return device.number(kTotalSource) == kVolumeCounts; }

// Per second of the quantity that batch counter and pulse output count: m3 or kg.
double counted_flow(const Device& device) {
  return counts_volume(device) ? device.number(kVolumeFlow) / 1000 : device.number(kMassFlow);
}

void count(Device& device, double seconds) {
  const auto add = [&](int item, double quantity) {
    device.set_number(item, device.number(item) + quantity);
  };
  add(kVolumeTotal, device.number(kVolumeFlow) / 1000 * seconds);
  add(kMassTotal, device.number(kMassFlow) * seconds);
  add(kOperatingTime, seconds / 3600);
  add(kBatchTotal, counted_flow(device) * seconds);
  const double preset = device.number(kBatchPreset);
  if (preset > 0 && device.number(kBatchTotal) >= preset) device.set_number(kBatchTotal, 0);
}

double output_current(const Device& device, int output) {
  const auto assigned = static_cast<int>(device.number(output, 1));
  const double low = device.number(output, 2);
  const double high = device.number(output, 3);
  if (assigned == 0 || low == high) return 4;
  return std::clamp(4 + 16 * (device.number(assigned) - low) / (high - low), 3.8, 20.5);
}

void put_out(Device& device) {
  device.set_number(kOutput1Current, output_current(device, kOutput1));
  device.set_number(kOutput2Current, output_current(device, kOutput2));
  if (const double pulse = device.number(kPulseQuantity); pulse > 0) {
    device.set_number(kPulseFrequency, counted_flow(device) / pulse);
  }
}

}  // namespace

void run_process(Device& device, double clock, double seconds) {
  measure(device, clock);
  derive(device);
  count(device, seconds);
  put_out(device);
}

}  // namespace fluxor
