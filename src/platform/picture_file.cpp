// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/picture_file.h"

#include <cstring>
#include <new>

#include "com/failure.h"
#include "com/variant.h"
#include "core/symbols/picture_bytes.h"
#include "platform/files.h"

namespace pv {
namespace {

Ref<IStream> stream_of(const std::string& bytes) {
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  if (!memory) throw std::bad_alloc();
  std::memcpy(GlobalLock(memory), bytes.data(), bytes.size());
  GlobalUnlock(memory);
  Ref<IStream> stream;
  const HRESULT created = CreateStreamOnHGlobal(memory, TRUE, stream.put());
  if (FAILED(created)) GlobalFree(memory);
  check(created);
  return stream;
}

}  // namespace

Ref<IPictureDisp> picture_from_file(const std::wstring& file) {
  const auto bytes = read_file(file);
  if (!bytes || !is_whole_picture(*bytes)) throw automation_error(ErrorCode::kInvalidCall, file);
  Ref<IPictureDisp> picture;
  check(OleLoadPicture(stream_of(*bytes).get(), static_cast<LONG>(bytes->size()), FALSE,
                       __uuidof(IPictureDisp), reinterpret_cast<void**>(picture.put())));
  return picture;
}

}  // namespace pv
