#pragma once

#include "classes/utility/CFunction.h"
#include "com/collection.h"

namespace pv {

class CFunctions final : public Collection<CFunctions, _CFunctions, ::CFunctions, CFunction,
                                           _CFunction, Missing::kRaises> {
 public:
  static constexpr const wchar_t* kClassName = L"CFunctions";

  STDMETHODIMP Add(VARIANT key, IDispatch* server_form, DATE version_date, BSTR version,
                   short picture_id, FunctionTypes* type, short protection,
                   _CFunction** result) noexcept override;
};

}  // namespace pv
