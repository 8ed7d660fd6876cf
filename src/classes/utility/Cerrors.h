// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/utility/CError.h"
#include "com/collection.h"

namespace pv {

AUTOMATION_CLASS(Cerrors)

/// A log of errors.
class Cerrors final : public Collection<Cerrors, CError, Missing::kRaises> {
 public:
  STDMETHODIMP Remove(VARIANT index) noexcept override;
  STDMETHODIMP Add(VARIANT number, BSTR description, DATE when, VARIANT tag,
                   _CError** result) noexcept override;
  STDMETHODIMP ReIndex() noexcept override;

 private:
  void number_members();
};

}  // namespace pv
