// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CLanguage.h"

#include "platform/resources.h"

namespace pv {

template ClassEntry class_entry<CLanguage>();

STDMETHODIMP CLanguage::Picture(IPictureDisp** result) noexcept {
  return method_with_result(result, [&] { return resource_bitmap(picture_id_); });
}

STDMETHODIMP CLanguage::Icon(IPictureDisp** result) noexcept {
  return method_with_result(result, [&] { return resource_icon(picture_id_); });
}

}  // namespace pv
