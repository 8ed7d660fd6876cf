#pragma once

#include "com/object.h"
#include "pvItems32.h"

namespace pv {

AUTOMATION_CLASS(CDimension)

/// A physical quantity with its units.
class CDimension final : public AutomationObject<CDimension> {
 public:
  CDimension();
  CDimension(std::wstring_view key, std::wstring_view caption, Ref<_CUnits> units)
      : key_(key), caption_(caption), units_(std::move(units)) {}

  STORED(Key, BSTR, key_)
  STORED(Caption, BSTR, caption_)
  STORED_OBJECT(Units, _CUnits, units_)
  STDMETHODIMP Copy(_CDimension* dest, _CDimension** result) noexcept override;

  const std::wstring& caption() const { return caption_; }
  const Ref<_CUnits>& units() const { return units_; }
  void rename(std::wstring_view name) { key_ = caption_ = name; }
  void copy_to(_CDimension* dest) const;

 private:
  std::wstring key_;
  std::wstring caption_;
  Ref<_CUnits> units_;
};

}  // namespace pv
