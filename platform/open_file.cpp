#include "platform/open_file.h"

#include <io.h>
#include <windows.h>

namespace pv {

OpenFile::OpenFile(int descriptor)
    : handle_(descriptor < 0 ? INVALID_HANDLE_VALUE
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

bool OpenFile::write(std::string_view content) const {
  DWORD written = 0;
  return WriteFile(handle_, content.data(), static_cast<DWORD>(content.size()), &written,
                   nullptr) &&
         written == content.size();
}

}  // namespace pv
