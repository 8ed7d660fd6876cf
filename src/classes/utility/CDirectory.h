#pragma once

#include "classes/utility/CDirEntry.h"
#include "com/collection.h"

namespace pv {

class CDirectory final : public Collection<CDirectory, _CDirectory, ::CDirectory, CDirEntry,
                                           _CDirEntry, Missing::kRaises> {
 public:
  static constexpr const wchar_t* kClassName = L"CDirectory";

  STDMETHODIMP Add(BSTR path, DirectoryTypes type, BSTR key, _CDirEntry** result) noexcept override;
  STDMETHODIMP GetFileList(BSTR path, BSTR filter, _CDirectory** result) noexcept override;
};

}  // namespace pv
