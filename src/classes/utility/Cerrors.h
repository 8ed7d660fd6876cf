#pragma once

#include "classes/utility/CError.h"
#include "com/collection.h"

namespace pv {

class Cerrors final
    : public Collection<Cerrors, _Cerrors, ::Cerrors, CError, _CError, Missing::kRaises> {
 public:
  static constexpr const wchar_t* kClassName = L"Cerrors";

  STDMETHODIMP Remove(VARIANT index) noexcept override;
  STDMETHODIMP Add(VARIANT number, BSTR description, DATE when, VARIANT tag,
                   _CError** result) noexcept override;
  STDMETHODIMP ReIndex() noexcept override;

 private:
  void number_members();
};

}  // namespace pv
