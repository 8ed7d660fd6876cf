// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CTxm.h"
#include "com/call.h"

// Password levels: what the access word of an item asks for, and what is open on the device.
namespace pv {

AccessRules CTxm::rules_of(_CItem* item) const {
  return access_rules(result_of(item, &_CItem::get_Access));
}

// An access word that cannot be read needs a level that no password opens.
short CTxm::needed_level(_CItem* item, int AccessRules::*level) const {
  int needed = kClosedLevel;
  attempt([&] { needed = rules_of(item).*level; });
  return static_cast<short>(needed);
}

bool CTxm::allows(_CItem* item, int AccessRules::*level) const {
  return password_ >= needed_level(item, level);
}

short CTxm::password_from_device() const { return server_.read_password(station()).value_or(0); }

STDMETHODIMP CTxm::GetPassword(short* result) noexcept {
  return method_with_result(result, [&] { return password_from_device(); });
}

STDMETHODIMP CTxm::GetReadPWLevel(_CItem* item, short* result) noexcept {
  return method_with_result(result, [&] { return needed_level(item, &AccessRules::read_level); });
}

STDMETHODIMP CTxm::GetWritePWLevel(_CItem* item, short* result) noexcept {
  return method_with_result(result, [&] { return needed_level(item, &AccessRules::write_level); });
}

STDMETHODIMP CTxm::IsReadable(_CItem* item, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return allows(item, &AccessRules::read_level); });
}

STDMETHODIMP CTxm::IsWriteable(_CItem* item, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return allows(item, &AccessRules::write_level); });
}

STDMETHODIMP CTxm::IsPasswordMask(_CItem* item, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return rules_of(item).is_masked; });
}

STDMETHODIMP CTxm::IsUpdatePW(_CItem* item, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return rules_of(item).updates_password; });
}

}  // namespace pv
