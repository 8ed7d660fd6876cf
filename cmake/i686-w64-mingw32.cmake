# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# 32-bit Windows.
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
