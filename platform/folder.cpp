#include "platform/folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "com/automation.h"

namespace pv {
namespace {

namespace fs = std::filesystem;

bool comes_before(const std::wstring& a, const std::wstring& b) {
  return CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE | SORT_STRINGSORT, a.data(),
                        static_cast<int>(a.size()), b.data(),
                        static_cast<int>(b.size())) == CSTR_LESS_THAN;
}

}  // namespace

std::optional<FolderContent> folder_content(const std::wstring& path) {
  std::error_code failure;
  fs::path folder = fs::absolute(path, failure);
  if (failure || path.empty()) return std::nullopt;
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
