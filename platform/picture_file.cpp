#include "platform/picture_file.h"

#include <cstring>
#include <new>

#include "com/boundary.h"
#include "com/variant.h"
#include "platform/files.h"
#include "util/picture_bytes.h"

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

std::wstring name_of(const Ref<ITypeInfo>& type) {
  if (!type) return {};
  BSTR name = nullptr;
  const HRESULT named = type->GetDocumentation(MEMBERID_NIL, &name, nullptr, nullptr, nullptr);
  const Bstr owner = Bstr::adopt(name);
  if (named == E_OUTOFMEMORY) throw std::bad_alloc();
  return std::wstring(view_of(name));
}

// A dispatch interface is named after its class, with a mark or letter before it.
std::wstring without_prefix(std::wstring name) {
  const bool lettered = name.size() > 1 && name[0] == L'I' && IsCharUpperW(name[1]);
  if (lettered || name.starts_with(L'_')) name.erase(0, 1);
  return name;
}

}  // namespace

Ref<IPictureDisp> picture_from_file(const std::wstring& file) {
  const auto bytes = read_file(file);
  if (!bytes || !is_whole_picture(*bytes)) throw automation_error(ErrorCode::kInvalidCall, file);
  Ref<IPictureDisp> picture;
  check(OleLoadPicture(stream_of(*bytes).get(), static_cast<LONG>(bytes->size()), FALSE,
                       __uuidof(IPictureDisp), reinterpret_cast<void**>(picture.receive())));
  return picture;
}

std::wstring type_name_of(IDispatch* object) {
  Ref<ITypeInfo> type;
  if (const auto provider = query<IProvideClassInfo>(object)) {
    if (SUCCEEDED(provider->GetClassInfo(type.receive())) && type) return name_of(type);
  }
  if (!object || FAILED(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, type.receive()))) return {};
  return without_prefix(name_of(type));
}

}  // namespace pv
