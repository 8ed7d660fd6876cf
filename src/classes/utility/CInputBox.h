// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "dialogs/input_box.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CInputBox)

/// All objects of a thread use the one input form of that thread.
class CInputBox final : public AutomationObject<CInputBox> {
 public:
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
