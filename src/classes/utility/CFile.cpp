// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CFile.h"

namespace pv {

template ClassEntry class_entry<CFile>();

STDMETHODIMP CFile::get_FullName(BSTR* result) noexcept {
  return method_with_result(result, [&] { return parts_.full_name; });
}

STDMETHODIMP CFile::put_FullName(BSTR value) noexcept {
  return method([&] { parts_ = parse_file_name(view_of(value)); });
}

STDMETHODIMP CFile::Clear() noexcept {
  return method([&] { parts_ = {}; });
}

STDMETHODIMP CFile::GetDrive(BSTR file_name, BSTR* result) noexcept {
  return method_with_result(result, [&] { return drive_of(view_of(file_name)); });
}

STDMETHODIMP CFile::GetPath(BSTR file_name, BSTR* result) noexcept {
  return method_with_result(result, [&] { return path_of(view_of(file_name)); });
}

STDMETHODIMP CFile::GetName(BSTR file_name, BSTR* result) noexcept {
  return method_with_result(result, [&] { return name_of(view_of(file_name)); });
}

STDMETHODIMP CFile::GetExtension(BSTR file_name, BSTR* result) noexcept {
  return method_with_result(result, [&] { return extension_of(view_of(file_name)); });
}

STDMETHODIMP CFile::MakeFullName(BSTR* result) noexcept {
  return method_with_result(result, [&] { return parts_.full_name = make_full_name(parts_); });
}

STDMETHODIMP CFile::FileTitle(BSTR* result) noexcept {
  return method_with_result(result, [&] { return file_title(parts_); });
}

STDMETHODIMP CFile::CreateFileName(BSTR drive_and_path, BSTR title, BSTR* result) noexcept {
  return method_with_result(
      result, [&] { return create_file_name(view_of(drive_and_path), view_of(title)); });
}

STDMETHODIMP CFile::ModifyPath(BSTR new_drive_and_path) noexcept {
  return method([&] { parts_ = at_path(view_of(new_drive_and_path)); });
}

}  // namespace pv
