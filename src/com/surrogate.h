// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/registration.h"

namespace pv {

/// Lets hosts that cannot load the library themselves, such as those with the other number of bits,
/// use it through the platform's surrogate process. All classes belong to the one application
/// `app_id`, "{...}", which never changes. The classes have to be registered in the same scope:
/// else

/// REGDB_E_CLASSNOTREG, and nothing is written.
HRESULT register_surrogate(Registration scope, const wchar_t* app_id) noexcept;

/// Leaves the classes as they were before; what is not there is no failure.
HRESULT unregister_surrogate(Registration scope, const wchar_t* app_id) noexcept;

}  // namespace pv
