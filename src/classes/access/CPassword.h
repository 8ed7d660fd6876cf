// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CPassword)

/// One numbered password.
class CPassword final : public AutomationObject<CPassword> {
 public:
  STORED(Current, BSTR, current_)
  STORED(Index, short, index_)
  STORED(Reference, BSTR, reference_)
  STDMETHODIMP Status(VARIANT_BOOL* result) noexcept override;

  /// Two empty texts are equal: a password without reference needs no entry.
  bool is_open() const { return current_ == reference_; }
  short index() const { return index_; }
  void set_index(short index) { index_ = index; }
  void assign(std::wstring_view reference, std::wstring_view current);
  const std::wstring& reference() const { return reference_; }
  const std::wstring& current() const { return current_; }

 private:
  std::wstring current_;
  short index_ = 0;
  std::wstring reference_;
};

}  // namespace pv
