#pragma once

#include "com/object.h"
#include "core/items/version_file.h"
#include "pvItems32.h"

namespace pv {

class CVerItem final : public Dual<CVerItem, _CVerItem, ::CVerItem> {
 public:
  static constexpr const wchar_t* kClassName = L"CVerItem";

  CVerItem() = default;
  explicit CVerItem(VersionEntry entry) : entry_(std::move(entry)) {}

  STORED(Key, BSTR, entry_.key)
  STORED(IndexKey, BSTR, entry_.index_key)
  STDMETHODIMP Copy(_CVerItem* dest, _CVerItem** result) noexcept override;

  const VersionEntry& record() const { return entry_; }

 private:
  VersionEntry entry_;
};

}  // namespace pv
