// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/folder.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "platform/files.h"

namespace pv {
namespace {

// From the root on, with backslashes; empty when the platform knows no such path.
std::wstring full_path(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  const auto capacity = static_cast<DWORD>(full.size());
  full.resize(GetFullPathNameW(path.c_str(), capacity, full.data(), nullptr));
  return full;
}

// The folder that a path names, or that holds the file that it names, with a backslash at its end;
// empty when there is neither.
std::wstring existing_folder(const std::wstring& path) {
  if (path.empty() || !is_file_name(path)) return {};
  std::wstring folder = full_path(path);
  const DWORD attributes = GetFileAttributesW(folder.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return {};
  if (!(attributes & FILE_ATTRIBUTE_DIRECTORY)) folder.resize(folder.rfind(L'\\') + 1);
  if (!folder.ends_with(L'\\')) folder += L'\\';
  return folder;
}

struct SearchCloser {
  void operator()(HANDLE search) const { FindClose(search); }
};
using Search = std::unique_ptr<void, SearchCloser>;

bool is_itself_or_parent(std::wstring_view name) { return name == L"." || name == L".."; }

// Names that differ in case alone stand in a fixed order, too.
bool comes_before(const std::wstring& a, const std::wstring& b) {
  const int order =
      CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE | SORT_STRINGSORT, a.data(),
                     static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()));
  return order == CSTR_EQUAL ? a < b : order == CSTR_LESS_THAN;
}

}  // namespace

FolderContent folder_content(const std::wstring& path) {
  FolderContent content;
  const std::wstring folder = existing_folder(path);
  if (folder.empty()) return content;
  for_each_entry(folder + L"*", [&](const WIN32_FIND_DATAW& entry) {
    if (is_itself_or_parent(entry.cFileName)) return;
    const bool is_folder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    (is_folder ? content.folders : content.files).push_back(folder + entry.cFileName);
  });
  std::sort(content.folders.begin(), content.folders.end(), comes_before);
  std::sort(content.files.begin(), content.files.end(), comes_before);
  return content;
}

void for_each_entry(const std::wstring& path,
                    const std::function<void(const WIN32_FIND_DATAW&)>& look) {
  WIN32_FIND_DATAW entry;
  const HANDLE found = FindFirstFileW(path.c_str(), &entry);
  if (found == INVALID_HANDLE_VALUE) return;
  const Search search(found);
  do {
    look(entry);
  } while (FindNextFileW(found, &entry));
}

}  // namespace pv
