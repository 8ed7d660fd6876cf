// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "core/text/file_name.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CFile)

/// Splits a file name into its parts and builds it again.
class CFile final : public AutomationObject<CFile> {
 public:
  STDMETHODIMP get_FullName(BSTR* result) noexcept override;
  STDMETHODIMP put_FullName(BSTR value) noexcept override;
  STORED(Drive, BSTR, parts_.drive)
  STORED(Path, BSTR, parts_.path)
  STORED(Name, BSTR, parts_.name)
  STORED(Extension, BSTR, parts_.extension)
  STDMETHODIMP Clear() noexcept override;
  STDMETHODIMP GetDrive(BSTR file_name, BSTR* result) noexcept override;
  STDMETHODIMP GetPath(BSTR file_name, BSTR* result) noexcept override;
  STDMETHODIMP GetName(BSTR file_name, BSTR* result) noexcept override;
  STDMETHODIMP GetExtension(BSTR file_name, BSTR* result) noexcept override;
  STDMETHODIMP MakeFullName(BSTR* result) noexcept override;
  STDMETHODIMP FileTitle(BSTR* result) noexcept override;
  STDMETHODIMP CreateFileName(BSTR drive_and_path, BSTR title, BSTR* result) noexcept override;
  STDMETHODIMP ModifyPath(BSTR new_drive_and_path) noexcept override;

 private:
  FileName parts_;
};

}  // namespace pv
