#pragma once

#include <string>
#include <vector>

namespace pv {

/// What a folder holds, by full path, each kind in the order of the names without regard to case.
struct FolderContent {
  std::vector<std::wstring> folders;
  std::vector<std::wstring> files;
};

/// The content of a folder, or of the folder that holds a file; empty when it cannot be opened.
FolderContent folder_content(const std::wstring& path);

}  // namespace pv
