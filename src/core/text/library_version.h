// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

#include "core/text/settings_text.h"

namespace pv {

/// The library's own name, "pvItems32": also the title of messages that have none.
std::wstring library_title();

/// Version and comments as the settings files and the version members show them.
FileStamp library_stamp();

/// File name, version and comments as one record.
std::wstring library_identification();

/// major "." minor "." revision, the last two with at least two digits.
std::wstring format_version(long major, long minor, long revision);

}  // namespace pv
