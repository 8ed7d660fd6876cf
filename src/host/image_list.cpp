// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "host/image_list.h"

#include "com/failure.h"
#include "platform/letter_case.h"

namespace pv {
namespace {

bool has_key(const Variant& image, const std::wstring& key) {
  const LateBound object(to_object(image));
  return key_case().same(to_text(object.get(L"Key")), key);
}

// Called like a method: script objects answer to nothing else. Controls, whose Item is a property,
// are asked again as such.
Variant image_at(const LateBound& images, const VARIANT& index) {
  return images.call(L"Item", {index});
}

bool finds(const LateBound& images, const std::wstring& key) {
  bool found = false;
  attempt([&] {
    const Bstr wanted(key);
    found = has_key(image_at(images, value(wanted)), key);
  });
  return found;
}

// For collections that do not look for keys.
bool lists(const LateBound& images, const std::wstring& key) {
  bool found = false;
  attempt([&] {
    const long count = to_long(images.get(L"Count"));
    for (long i = 1; i <= count && !found; ++i) found = has_key(image_at(images, value(i)), key);
  });
  return found;
}

}  // namespace

bool ImageList::has(const std::wstring& key) const {
  const LateBound collection = images();
  return finds(collection, key) || lists(collection, key);
}

void ImageList::add(const std::wstring& key, IDispatch* picture) const {
  const Bstr text(key);
  images().call(L"Add", {Variant::missing(), value(text), value(picture)});
}

}  // namespace pv
