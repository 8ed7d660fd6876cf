// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "platform/resources.h"

#include "com/automation.h"
#include "com/failure.h"
#include "com/module.h"

namespace pv {
namespace {

void destroy(const PICTDESC& description) {
  if (description.picType == PICTYPE_BITMAP) DeleteObject(description.bmp.hbitmap);
  if (description.picType == PICTYPE_ICON) DestroyIcon(description.icon.hicon);
}

// The picture owns what it shows; a picture that was not made owns nothing.
Ref<IPictureDisp> picture_of(PICTDESC& description) {
  Ref<IPictureDisp> picture;
  const HRESULT made = OleCreatePictureIndirect(&description, __uuidof(IPictureDisp), TRUE,
                                                reinterpret_cast<void**>(picture.put()));
  if (FAILED(made)) destroy(description);
  check(made);
  return picture;
}

HANDLE load_image(short id, UINT type, UINT flags) {
  const HANDLE image = LoadImageW(
      module_instance(), MAKEINTRESOURCEW(static_cast<std::uint16_t>(id)), type, 0, 0, flags);
  if (!image) throw automation_error(ErrorCode::kInvalidCall, L"picture " + std::to_wstring(id));
  return image;
}

}  // namespace

std::optional<std::wstring> resource_text(std::uint16_t id) {
  const wchar_t* text = nullptr;
  const int length = LoadStringW(module_instance(), id, reinterpret_cast<wchar_t*>(&text), 0);
  if (length <= 0) return std::nullopt;
  return std::wstring(text, static_cast<std::size_t>(length));
}

std::optional<std::wstring> resource_label(std::uint16_t id) {
  const HRSRC label = FindResourceW(module_instance(), MAKEINTRESOURCEW(id), L"LABEL");
  if (!label) return std::nullopt;
  const auto length = static_cast<int>(SizeofResource(module_instance(), label));
  const void* const utf8 = LockResource(LoadResource(module_instance(), label));
  std::wstring text(static_cast<std::size_t>(length), L'\0');  // UTF-16 needs no more units
  text.resize(static_cast<std::size_t>(MultiByteToWideChar(
      CP_UTF8, 0, static_cast<const char*>(utf8), length, text.data(), length)));
  return text;
}

Ref<IPictureDisp> bitmap_picture(HBITMAP bitmap) {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_BITMAP;
  description.bmp.hbitmap = bitmap;
  return picture_of(description);
}

Ref<IPictureDisp> resource_bitmap(short id) {
  // A section keeps the colour depth of the resource.
  return bitmap_picture(static_cast<HBITMAP>(load_image(id, IMAGE_BITMAP, LR_CREATEDIBSECTION)));
}

Ref<IPictureDisp> resource_icon(short id) {
  PICTDESC description{};
  description.cbSizeofstruct = sizeof description;
  description.picType = PICTYPE_ICON;
  description.icon.hicon = static_cast<HICON>(load_image(id, IMAGE_ICON, 0));
  return picture_of(description);
}

}  // namespace pv
