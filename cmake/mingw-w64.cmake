# SPDX-FileCopyrightText: the pvItems32 authors
# SPDX-License-Identifier: MIT

# Windows from Linux, with the POSIX thread model (std::mutex and std::thread work). The including
# toolchain file names the processor.
set(PV_TARGET ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${PV_TARGET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${PV_TARGET}-g++-posix)
set(CMAKE_RC_COMPILER ${PV_TARGET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${PV_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
