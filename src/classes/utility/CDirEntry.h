// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CDirEntry)

/// A file or folder.
class CDirEntry final : public AutomationObject<CDirEntry> {
 public:
  CDirEntry() = default;
  CDirEntry(std::wstring_view path, DirectoryTypes type) : type_(type), path_(path) {}

  STORED(DirType, DirectoryTypes, type_)
  STORED(Path, BSTR, path_)
  STORED(Tag, VARIANT, tag_)
  STDMETHODIMP putref_Tag(VARIANT value) noexcept override { return put_Tag(value); }

 private:
  DirectoryTypes type_ = dirFile;
  std::wstring path_;
  Variant tag_;
};

}  // namespace pv
