#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

class CError final : public Dual<CError, _CError, ::CError> {
 public:
  static constexpr const wchar_t* kClassName = L"CError";

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
