// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace fluxor {

class Device;

/// What happens in the pipe during `seconds` that end at the device's time `clock`: cold water
/// flows unevenly through the sensor, and everything that the device derives from it follows.
void run_process(Device& device, double clock, double seconds);

}  // namespace fluxor
