#include "classes/access/CPassword.h"

namespace pv {

STDMETHODIMP CPassword::Status(VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return is_open(); });
}

void CPassword::assign(std::wstring_view reference, std::wstring_view current) {
  reference_ = reference;
  current_ = current;
}

}  // namespace pv
