#include "core/text/library_version.h"

#include "core/text/number_text.h"
#include "resources/version.h"

namespace pv {
namespace {

std::wstring widened(const char* ascii) {
  const std::string_view text(ascii);
  return std::wstring(text.begin(), text.end());
}

}  // namespace

std::wstring library_title() { return widened(PV_LIBRARY_NAME); }

FileStamp library_stamp() {
  return {version_text(PV_VERSION_MAJOR, PV_VERSION_MINOR, PV_VERSION_REVISION),
          widened(PV_COMMENTS)};
}

std::wstring library_identification() {
  return library_title() + L".dll|" + integer_text(PV_VERSION_MAJOR) + L"." +
         zero_padded(PV_VERSION_MINOR, 2) + L"." + zero_padded(PV_VERSION_REVISION, 4) + L"|" +
         widened(PV_COMMENTS) + L"|";
}

std::wstring version_text(long major, long minor, long revision) {
  return integer_text(major) + L"." + zero_padded(minor, 2) + L"." + zero_padded(revision, 2);
}

}  // namespace pv
