// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/utility/CFunction.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(CFunctions)

/// The functions of a transmitter.
class CFunctions final : public Collection<CFunctions, CFunction, Missing::kRaises> {
 public:
  STDMETHODIMP Add(VARIANT key, IDispatch* server_form, DATE version_date, BSTR version,
                   short picture_id, FunctionTypes* type, short protection,
                   _CFunction** result) noexcept override;
};

}  // namespace pv
