// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "com/failure.h"

namespace pv {

bool is_out_of_memory(HRESULT result) {
  return result == E_OUTOFMEMORY || result == hresult_of(ErrorCode::kOutOfMemory);
}

void raise_foreign_failure(HRESULT result) {
  Ref<IErrorInfo> info;
  GetErrorInfo(0, info.put());
  throw com_failure(result, info);
}

void raise_failure(HRESULT result) {
  if (is_out_of_memory(result)) throw std::bad_alloc();
  raise_foreign_failure(result);
}

Ref<IErrorInfo> make_error_info(const std::wstring& source, const std::wstring& description,
                                const std::wstring& help_file, DWORD help_context) {
  Ref<ICreateErrorInfo> creator;
  if (FAILED(CreateErrorInfo(creator.put()))) return {};
  creator->SetSource(const_cast<wchar_t*>(source.c_str()));
  creator->SetDescription(const_cast<wchar_t*>(description.c_str()));
  if (!help_file.empty()) creator->SetHelpFile(const_cast<wchar_t*>(help_file.c_str()));
  creator->SetHelpContext(help_context);
  return query<IErrorInfo>(creator.get());
}

}  // namespace pv
