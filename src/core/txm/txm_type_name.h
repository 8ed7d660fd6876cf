// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace pv {

/// Model name of a transmitter type; "Unknown" for any other number.
std::wstring txm_type_name(int type);

}  // namespace pv
