#include "platform/picture_file.h"

#include <cstring>

#include "com/boundary.h"
#include "com/variant.h"
#include "platform/files.h"

namespace pv {
namespace {

Ref<IStream> stream_of(const std::string& bytes) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  if (!memory) throw std::bad_alloc();
  std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
  GlobalUnlock(memory);
  Ref<IStream> stream;
  const HRESULT created = CreateStreamOnHGlobal(memory, TRUE, stream.receive());
  if (FAILED(created)) GlobalFree(memory);
  check(created);
  return stream;
}

Ref<ITypeInfo> class_info_of(IDispatch* object) {
  Ref<ITypeInfo> info;
  if (const auto provider = query<IProvideClassInfo>(object))
    provider->GetClassInfo(info.receive());
  if (!info) object->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.receive());
  return info;
}

}  // namespace

Ref<IPictureDisp> picture_from_file(const std::wstring& file) {
  const auto bytes = read_file(file);
  if (!bytes || bytes->empty()) throw automation_error(ErrorCode::kInvalidCall, file);
  Ref<IPictureDisp> picture;
  check(OleLoadPicture(stream_of(*bytes).get(), static_cast<LONG>(bytes->size()), FALSE,
                       __uuidof(IPictureDisp), reinterpret_cast<void**>(picture.receive())));
  return picture;
}

std::wstring type_name_of(IDispatch* object) {
  if (!object) return {};
  const Ref<ITypeInfo> info = class_info_of(object);
  BSTR name = nullptr;
  if (!info || FAILED(info->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr))) {
    return {};
  }
  std::wstring text(view_of(name));
  SysFreeString(name);
  // A dispatch interface is named after its class, with a letter or mark before it.
  if (!text.empty() && (text.front() == L'_' || text.starts_with(L"II"))) text.erase(0, 1);
  return text;
}

}  // namespace pv
