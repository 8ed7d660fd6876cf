#include "classes/utility/CLanguage.h"

#include "platform/resources.h"

namespace pv {

STDMETHODIMP CLanguage::Picture(IPictureDisp** result) noexcept {
  return returning(result, [&] { return resource_bitmap(picture_id_); });
}

STDMETHODIMP CLanguage::Icon(IPictureDisp** result) noexcept {
  return returning(result, [&] { return resource_icon(picture_id_); });
}

}  // namespace pv
