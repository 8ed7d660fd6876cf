// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "limits.h"

#include "item_id.h"

namespace fluxor {
namespace {

struct Limit {
  int item;
  double low, high;
};

// Of the first variable, in base units.
constexpr Limit kLimits[] = {
    {kTotalSource, 0, 1},
    {kBatchPreset, 0, 1e6},
    {kTotalReset, 0, 1},
    {kFullScaleFlow, 0.01, 1000},
    {kLowFlowCutOff, 0, 100},
    {kFlowDamping, 0, 100},
    {kMeasuredDirection, 0, 2},
    {kNominalDiameter, 1, 1000},
    {kCalibrationFactor, 0.5, 2},
    {kPulseQuantity, 1e-6, 1000},
    {kBusAddress, 1, 99},
    {kBaudRate, 0, 4},
    {kParity, 0, 2},
    {kResponseTimeOut, 50, 10000},
    {kDisplayLanguage, 1, 6},
};

}  // namespace

bool is_within_limits(int item, const std::vector<Field>& fields) {
  for (const Limit& limit : kLimits) {
    if (limit.item != item || fields.empty()) continue;
    const double* value = std::get_if<double>(&fields.front().value);
    return value && *value >= limit.low && *value <= limit.high;
  }
  return true;
}

bool is_measured(int item) {
  constexpr int kMeasured[] = {
      kVolumeFlow,    kMassFlow,       kDensity,        kTemperature,    kPressure,      kVelocity,
      kRelativeFlow,  kDeviceState,    kBatchTotal,     kTubeFrequency,  kPhaseShift,    kPt1000,
      kOperatingTime, kOutput1Current, kOutput2Current, kPulseFrequency, kPasswordLevel,
  };
  for (const int measured : kMeasured) {
    if (measured == item) return true;
  }
  return false;
}

}  // namespace fluxor
