// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

namespace pv::test {

/// The platform of this run forgets to release the class objects through which it creates objects
/// for free threads. The library is never free to be unloaded then, and the program does not ask
/// for it.
bool platform_keeps_class_objects();

/// The platform of this run forgets to release what its stubs allocate for arguments of calls by
/// name, and the program does not count that as left at its end.
bool platform_keeps_arguments();

}  // namespace pv::test
