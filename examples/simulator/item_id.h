// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace fluxor {

/// The items that the device itself works with.
enum ItemID : int {
  kVolumeFlow = 1,
  kMassFlow = 2,
  kDensity = 3,
  kTemperature = 4,
  kPressure = 5,
  kVelocity = 6,
  kRelativeFlow = 7,
  kDeviceState = 8,
  kTotalSource = 20,
  kVolumeTotal = 21,
  kMassTotal = 22,
  kBatchTotal = 23,
  kBatchPreset = 24,
  kTotalReset = 25,
  kFullScaleFlow = 30,
  kLowFlowCutOff = 31,
  kFlowDamping = 32,
  kMeasuredDirection = 33,
  kNominalDiameter = 34,
  kCalibrationFactor = 35,
  kTubeFrequency = 50,
  kPhaseShift = 51,
  kPt1000 = 55,
  kOperatingTime = 58,
  kOutput1 = 70,
  kOutput2 = 71,
  kOutput1Current = 72,
  kOutput2Current = 73,
  kPulseFrequency = 75,
  kPulseQuantity = 76,
  kBusAddress = 100,
  kBaudRate = 101,
  kParity = 102,
  kResponseTimeOut = 104,
  kDisplayLanguage = 105,
  kTagName = 110,
  kSoftwareVersion = 112,
  kEnterPassword = 140,
  kPasswordLevel = 141,
  kChangePasswords = 142,
};

}  // namespace fluxor
