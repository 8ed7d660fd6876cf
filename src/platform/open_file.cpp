// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/open_file.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace pv {

OpenFile::OpenFile(int descriptor)
    : descriptor_(descriptor),
      handle_(descriptor < 0 ? INVALID_HANDLE_VALUE
                             : reinterpret_cast<HANDLE>(_get_osfhandle(descriptor))) {}

std::optional<std::string> OpenFile::rest() const {
  std::string content;
  char block[16384];
  for (;;) {
    DWORD read = 0;
    if (!ReadFile(handle_, block, sizeof block, &read, nullptr)) return std::nullopt;
    if (read == 0) return content;
    content.append(block, read);
  }
}

bool OpenFile::seek(unsigned long long position) const {
  LARGE_INTEGER target{};
  target.QuadPart = static_cast<LONGLONG>(position);
  return SetFilePointerEx(handle_, target, nullptr, FILE_BEGIN) != 0;
}

unsigned long long OpenFile::position() const {
  LARGE_INTEGER here{};
  return SetFilePointerEx(handle_, {}, &here, FILE_CURRENT)
             ? static_cast<unsigned long long>(here.QuadPart)
             : 0;
}

// Through the C library, which alone knows whether the file was opened for appending; in binary
// mode, because the lines bring their ends along.
bool OpenFile::write(std::string_view content) const {
  if (handle_ == INVALID_HANDLE_VALUE) return false;
  const int former_mode = _setmode(descriptor_, _O_BINARY);
  const auto size = static_cast<unsigned>(content.size());
  const bool written = _write(descriptor_, content.data(), size) == static_cast<int>(size);
  _setmode(descriptor_, former_mode);
  return written;
}

}  // namespace pv
