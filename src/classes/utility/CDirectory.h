// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/utility/CDirEntry.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CDirectory)

/// Lists the folders and files of a folder.
class CDirectory final : public Collection<CDirectory, CDirEntry, Missing::kRaises> {
 public:
  STDMETHODIMP Add(BSTR path, DirectoryTypes type, BSTR key, _CDirEntry** result) noexcept override;
  STDMETHODIMP GetFileList(BSTR path, BSTR filter, _CDirectory** result) noexcept override;
};

}  // namespace pv
