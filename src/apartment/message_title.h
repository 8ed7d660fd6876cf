// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace pv {

/// Title of the library's own messages: that of the application object, else the library's.
std::wstring message_title();

}  // namespace pv
