#include "util/CDirectory.h"

#include "platform/folder.h"
#include "util/wildcard.h"

namespace pv {
namespace {

std::wstring upper(std::wstring text) {
  CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
  return text;
}

std::wstring file_title_of(const std::wstring& path) { return path.substr(path.rfind(L'\\') + 1); }

}  // namespace

Ref<CDirEntry> CDirectory::add(std::wstring_view path, DirectoryTypes type, std::wstring_view key) {
  const auto entry = make<CDirEntry>(path, type);
  list_.append(entry, key);
  return entry;
}

STDMETHODIMP CDirectory::Add(BSTR path, DirectoryTypes type, BSTR key,
                             _CDirEntry** result) noexcept {
  return returning(result, [&] { return add(view_of(path), type, view_of(key)); });
}

STDMETHODIMP CDirectory::GetFileList(BSTR path, BSTR filter, _CDirectory** result) noexcept {
  return returning(result, [&] {
    list_.clear();
    const auto content = folder_content(std::wstring(view_of(path)));
    const std::wstring pattern = upper(std::wstring(view_of(filter)));
    for (const std::wstring& folder : content.folders) add(folder, dirFolder);
    for (const std::wstring& file : content.files) {
      if (pattern.empty() || matches(upper(file_title_of(file)), pattern)) add(file, dirFile);
    }
    return Ref<_CDirectory>(this);
  });
}

}  // namespace pv
