// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CDirectory.h"

#include "core/text/wildcard.h"
#include "platform/folder.h"
#include "platform/letter_case.h"

namespace pv {

template ClassEntry class_entry<CDirectory>();

namespace {

std::wstring file_title_of(const std::wstring& path) { return path.substr(path.rfind(L'\\') + 1); }

}  // namespace

STDMETHODIMP CDirectory::Add(BSTR path, DirectoryTypes type, BSTR key,
                             _CDirEntry** result) noexcept {
  return method_with_result(result, [&] {
    auto entry = make<CDirEntry>(view_of(path), type);
    list_.append(entry, view_of(key));
    return entry;
  });
}

STDMETHODIMP CDirectory::GetFileList(BSTR path, BSTR filter, _CDirectory** result) noexcept {
  return method_with_result(result, [&] {
    const auto content = folder_content(std::wstring(view_of(path)));
    const std::wstring pattern = upper_case(std::wstring(view_of(filter)));
    Members found = no_members();
    for (const std::wstring& folder : content.folders) {
      found.append(make<CDirEntry>(folder, dirFolder));
    }
    for (const std::wstring& file : content.files) {
      const bool wanted = pattern.empty() || matches(upper_case(file_title_of(file)), pattern);
      if (wanted) found.append(make<CDirEntry>(file, dirFile));
    }
    std::swap(list_, found);
    return Ref<_CDirectory>(this);
  });
}

}  // namespace pv
