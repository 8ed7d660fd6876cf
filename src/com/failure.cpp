#include "com/failure.h"

namespace pv {

void raise_failure(HRESULT result) {
  if (result == E_OUTOFMEMORY || result == hresult_of(ErrorCode::kOutOfMemory)) {
    throw std::bad_alloc();
  }
  Ref<IErrorInfo> info;
  GetErrorInfo(0, info.put());
  throw com_failure(result, info);
}

Ref<IErrorInfo> make_error_info(const std::wstring& source, const std::wstring& description) {
  Ref<ICreateErrorInfo> creator;
  if (FAILED(CreateErrorInfo(creator.put()))) return {};
  creator->SetSource(const_cast<wchar_t*>(source.c_str()));
  creator->SetDescription(const_cast<wchar_t*>(description.c_str()));
  return query<IErrorInfo>(creator.get());
}

}  // namespace pv
