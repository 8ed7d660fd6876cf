// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "com/automation.h"

namespace pv {

/// What a folder holds, by full path, each kind in the order of the names without regard to case.
struct FolderContent {
  std::vector<std::wstring> folders;
  std::vector<std::wstring> files;
};

/// The content of a folder, or of the folder that holds a file; empty when it cannot be opened.
FolderContent folder_content(const std::wstring& path);

/// Looks at every entry that fits a path with the platform's wildcards in its last part.
void for_each_entry(const std::wstring& path,
                    const std::function<void(const WIN32_FIND_DATAW&)>& look);

}  // namespace pv
