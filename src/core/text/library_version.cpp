// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/text/library_version.h"

#include "core/text/ascii.h"
#include "core/text/number_text.h"
#include "resources/version.h"

namespace pv {

std::wstring library_title() { return widen_ascii(PV_LIBRARY_NAME); }

FileStamp library_stamp() {
  return {format_version(PV_VERSION_MAJOR, PV_VERSION_MINOR, PV_VERSION_REVISION),
          widen_ascii(PV_COMMENTS)};
}

std::wstring library_identification() {
  return library_title() + L".dll|" + format_integer(PV_VERSION_MAJOR) + L"." +
         format_padded(PV_VERSION_MINOR, 2) + L"." + format_padded(PV_VERSION_REVISION, 4) + L"|" +
         widen_ascii(PV_COMMENTS) + L"|";
}

std::wstring format_version(long major, long minor, long revision) {
  return format_integer(major) + L"." + format_padded(minor, 2) + L"." + format_padded(revision, 2);
}

}  // namespace pv
