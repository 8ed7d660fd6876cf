// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>

#include "com/object.h"
#include "core/units/dimension_file.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CDimension)

/// A physical quantity with its units.
class CDimension final : public AutomationObject<CDimension> {
 public:
  CDimension();
  CDimension(std::wstring_view key, std::wstring_view caption, Ref<_CUnits> units)
      : key_(key), caption_(caption), units_(std::move(units)) {}
  /// The dimension at an index of a file; its key is its caption.
  CDimension(std::shared_ptr<const DimensionFile> file, std::size_t index)
      : key_(file->caption(index)), caption_(key_), file_(std::move(file)), file_index_(index) {}

  STORED(Key, BSTR, key_)
  STORED(Caption, BSTR, caption_)
  STDMETHODIMP get_Units(_CUnits** value) noexcept override;
  STDMETHODIMP putref_Units(_CUnits* value) noexcept override;
  STDMETHODIMP Copy(_CDimension* dest, _CDimension** result) noexcept override;

  const std::wstring& caption() const { return caption_; }
  /// The units of a file are read on first use.
  Ref<_CUnits> units() const;
  void rename(std::wstring_view name) { key_ = caption_ = name; }
  void copy_to(_CDimension* dest) const;

 private:
  std::wstring key_;
  std::wstring caption_;
  mutable Ref<_CUnits> units_;
  mutable std::shared_ptr<const DimensionFile> file_;  // until the units are read
  std::size_t file_index_ = 0;
};

}  // namespace pv
