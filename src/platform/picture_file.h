// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "com/automation.h"
#include "com/ref.h"

namespace pv {

/// A picture object of a bitmap or icon file; throws when there is none.
Ref<IPictureDisp> picture_from_file(const std::wstring& file);

}  // namespace pv
