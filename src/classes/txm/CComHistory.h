// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/collection.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CComHistory)

/// The newest record stands at position 1.
class CComHistory final : public Collection<CComHistory, _CComDetail, Missing::kRaises> {
 public:
  STDMETHODIMP Add(_CComDetail* detail, _CComDetail** result) noexcept override;
  STORED(Maximum, short, maximum_)

 private:
  short maximum_ = 16;
};

}  // namespace pv
