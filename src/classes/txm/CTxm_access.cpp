#include "classes/txm/CTxm.h"
#include "com/fetch.h"

// Password levels: what the access word of an item asks for, and what is open on the device.
namespace pv {
namespace {

// Any other answer refuses, also one that is no number: a text, Null or an object.
bool is_true(const Variant& answer) {
  bool result = false;
  attempt([&] { result = double_of(answer) == VARIANT_TRUE; });
  return result;
}

}  // namespace

AccessRules CTxm::rules_of(_CItem* item) const {
  return access_rules(fetch(item, &_CItem::get_Access));
}

// An access word that cannot be read asks for a level that nobody has.
short CTxm::needed_level(_CItem* item, int AccessRules::*level) const {
  int needed = kClosedLevel;
  attempt([&] { needed = rules_of(item).*level; });
  return static_cast<short>(needed);
}

bool CTxm::allows(_CItem* item, int AccessRules::*level) const {
  return password_ >= needed_level(item, level);
}

short CTxm::password_from_device() const {
  short level = 0;
  const Bstr settings(com_settings_);
  const Variant answer = server_.call(
      L"ReadPassword", {value(address_), ref(level), value(com_port_), value(settings)});
  return is_true(answer) ? level : short{0};
}

STDMETHODIMP CTxm::GetPassword(short* result) noexcept {
  return returning(result, [&] { return password_from_device(); });
}

STDMETHODIMP CTxm::GetReadPWLevel(_CItem* item, short* result) noexcept {
  return returning(result, [&] { return needed_level(item, &AccessRules::read_level); });
}

STDMETHODIMP CTxm::GetWritePWLevel(_CItem* item, short* result) noexcept {
  return returning(result, [&] { return needed_level(item, &AccessRules::write_level); });
}

STDMETHODIMP CTxm::IsReadable(_CItem* item, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return allows(item, &AccessRules::read_level); });
}

STDMETHODIMP CTxm::IsWriteable(_CItem* item, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return allows(item, &AccessRules::write_level); });
}

STDMETHODIMP CTxm::IsPasswordMask(_CItem* item, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return rules_of(item).is_masked; });
}

STDMETHODIMP CTxm::IsUpdatePW(_CItem* item, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] { return rules_of(item).updates_password; });
}

}  // namespace pv
