#include "platform/folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "com/automation.h"
#include "platform/files.h"

namespace pv {
namespace {

namespace fs = std::filesystem;

// From the root on, with backslashes; empty when the platform knows no such path.
std::wstring full_path(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  const auto room = static_cast<DWORD>(full.size());
  full.resize(GetFullPathNameW(path.c_str(), room, full.data(), nullptr));
  return full;
}

// Names that differ in case alone stand in a fixed order, too.
bool comes_before(const std::wstring& a, const std::wstring& b) {
  const int order =
      CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE | SORT_STRINGSORT, a.data(),
                     static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
  return order == CSTR_EQUAL ? a < b : order == CSTR_LESS_THAN;
}

}  // namespace

std::optional<FolderContent> folder_content(const std::wstring& path) {
  if (path.empty() || !is_file_name(path)) return std::nullopt;
  std::error_code failure;
  fs::path folder = full_path(path);
  if (fs::is_regular_file(folder, failure)) folder = folder.parent_path();
  fs::directory_iterator entries(folder, failure);
  if (failure) return std::nullopt;
  FolderContent content;
  for (const fs::directory_iterator end; entries != end; entries.increment(failure)) {
    if (failure) break;
    const bool is_folder = entries->is_directory(failure);
    (is_folder ? content.folders : content.files).push_back(entries->path().wstring());
  }
  std::sort(content.folders.begin(), content.folders.end(), comes_before);
  std::sort(content.files.begin(), content.files.end(), comes_before);
  return content;
}

}  // namespace pv
