// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CError)

/// An error of the host's log.
class CError final : public AutomationObject<CError> {
 public:
  STORED(Number, long, number_)
  STORED(Description, BSTR, description_)
  STORED(When, DATE, when_)
  STORED(Tag, VARIANT, tag_)
  STDMETHODIMP putref_Tag(VARIANT value) noexcept override { return put_Tag(value); }
  STORED(Index, long, index_)

 private:
  long number_ = 0;
  std::wstring description_;
  DATE when_ = 0;
  Variant tag_;
  long index_ = 0;
};

}  // namespace pv
