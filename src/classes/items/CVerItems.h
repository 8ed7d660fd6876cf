#pragma once

#include "classes/items/CVerItem.h"
#include "com/collection.h"

namespace pv {

class CVerItems final : public Collection<CVerItems, _CVerItems, ::CVerItems, CVerItem, _CVerItem,
                                          Missing::kIsNothing> {
 public:
  static constexpr const wchar_t* kClassName = L"CVerItems";

  STDMETHODIMP Add(BSTR key, BSTR index_key, _CVerItem** result) noexcept override;
  STDMETHODIMP ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept override;

  /// Error: kKeyInUse.
  Ref<CVerItem> add(const VersionEntry& entry);
};

}  // namespace pv
