// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "classes/items/CItem.h"
#include "classes/items/CVersions.h"
#include "com/collection.h"
#include "com/event_source.h"
#include "core/items/item_file.h"

namespace pv {

AUTOMATION_CLASS_WITH_EVENTS(CItems)

/// The item database of a transmitter.
class CItems final : public EventSource<Collection<CItems, CItem, Missing::kIsNothing>> {
 public:
  CItems() : versions_(make<CVersions>()) {}

  STDMETHODIMP get_Item(VARIANT index, _CItem** result) noexcept override;
  STDMETHODIMP get_Count(long* result) noexcept override;
  STORED(Changed, VARIANT_BOOL, changed_)
  STDMETHODIMP LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP Add(BSTR key, short item_id, VARIANT_BOOL by_meaning, short access,
                   VARIANT_BOOL historian, VARIANT_BOOL restore, float smart_wait, short length,
                   _CVariables* variables, _CItem** result) noexcept override;
  STDMETHODIMP get_AllItemCount(long* result) noexcept override;
  STORED(Version, BSTR, version_)
  STDMETHODIMP get_Versions(_CVersions** result) noexcept override;

  // Maintenance (CItems_maintenance.cpp).
  STDMETHODIMP Sort(VARIANT_BOOL ascending, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP ChangeID(short index, short new_id, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP ChangeKey(VARIANT old_key, VARIANT new_key, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP SaveTextSettings(BSTR file_name, _CItem* item, short variable,
                                VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP LoadItemSymbols(IDispatch* control, BSTR path, long* result) noexcept override;

 private:
  Ref<CItem> find(const VARIANT& index) const;
  std::wstring lookup_key(const VARIANT& index) const;
  long version_item_count() const;
  Ref<CItem> add(ItemRecord record, _CVariables* variables);
  bool load(const std::wstring& file_name, std::vector<std::wstring>& refused);
  std::vector<Ref<CItem>> present_items() const;
  bool sort(bool ascending);
  void change_id(short index, short new_id);
  void change_key(const VARIANT& old_key, std::wstring_view new_key);
  bool save_texts(const std::wstring& file_name, _CItem* item, short variable) const;

  bool changed_ = false;
  std::wstring version_;
  Ref<CVersions> versions_;
};

}  // namespace pv
