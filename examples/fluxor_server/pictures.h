// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "library.h"

namespace fluxor {

/// The picture with a number: 200 the connected transmitter, 201 the one that is not, any other the
/// button of a function.
ComPtr<IPictureDisp> make_picture(short number);

}  // namespace fluxor
