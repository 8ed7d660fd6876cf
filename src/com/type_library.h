// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/automation.h"
#include "com/ref.h"

namespace pv {

/// The type library inside our own module; the registry is never asked.
Ref<ITypeLib> own_type_library();

/// The description of an interface or class of ours.
Ref<ITypeInfo> own_type_info(REFGUID guid);

}  // namespace pv
