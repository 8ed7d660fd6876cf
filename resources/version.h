// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// The identity of the library, for its version resource and its own version members.
#define PV_VERSION_MAJOR 1
#define PV_VERSION_MINOR 0
#define PV_VERSION_REVISION 0
#define PV_LIBRARY_NAME "pvItems32"
#ifdef _WIN64
#define PV_COMMENTS "pvItems32 release build, 64 bit"
#else
#define PV_COMMENTS "pvItems32 release build, 32 bit"
#endif
