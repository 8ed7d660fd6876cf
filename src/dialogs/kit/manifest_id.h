// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

// Read by the resource compiler, too. 2 is the number that the loader expects of a DLL.
#define PV_VISUAL_STYLES_MANIFEST 2
