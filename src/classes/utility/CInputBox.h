#pragma once

#include "com/object.h"
#include "dialogs/input_box.h"
#include "pvItems32.h"

namespace pv {

/// All objects of a thread use the one input form of that thread.
class CInputBox final : public Dual<CInputBox, _CInputBox, ::CInputBox> {
 public:
  static constexpr const wchar_t* kClassName = L"CInputBox";

  STDMETHODIMP ShowMe(VARIANT prompt, VARIANT title, VARIANT initial, VARIANT unit,
                      IDispatch* owner, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP ShowMePW(VARIANT prompt, VARIANT title, VARIANT initial, VARIANT unit,
                        IDispatch* owner, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP ShowMeDT(VARIANT prompt, VARIANT title, VARIANT initial, VARIANT unit,
                        IDispatch* owner, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP get_Value(VARIANT* result) noexcept override;
  STDMETHODIMP CloseMe() noexcept override;
};

}  // namespace pv
