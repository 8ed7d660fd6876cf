// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CLanguages.h"

#include "apartment/localized.h"
#include "apartment/thread_state.h"
#include "com/call.h"

namespace pv {

template ClassEntry class_entry<CLanguages>();

namespace {

constexpr DISPID kOnLanguageChange = 1;

struct Registered {
  const wchar_t* name;
  const wchar_t* extension;
  short picture_id;
};

constexpr Registered kLanguages[] = {
    {L"English (US)", L"us", 101}, {L"Hungarian", L"hu", 102}, {L"German", L"ger", 103},
    {L"Italian", L"ita", 104},     {L"French", L"fra", 105},   {L"Dutch", L"nl", 106},
};

Ref<CLanguage> language_at(long index, BSTR name, short picture_id, BSTR extension) {
  auto language = make<CLanguage>();
  const Ref<_CLanguage> properties = language;
  call(properties, &_CLanguage::put_Name, name);
  call(properties, &_CLanguage::put_PictureID, picture_id);
  call(properties, &_CLanguage::put_Extension, extension);
  call(properties, &_CLanguage::put_Index, static_cast<short>(index));
  return language;
}

}  // namespace

CLanguages::CLanguages() { register_all(); }

void CLanguages::register_all() {
  Members registered = no_members();
  for (const Registered& each : kLanguages) {
    registered.append(
        language_at(registered.size() + 1, Bstr(each.name), each.picture_id, Bstr(each.extension)));
  }
  std::swap(list_, registered);
  activate(pvEnglish);
}

void CLanguages::activate(pvLanguageTypes language) {
  // Copied before anything changes: if memory runs out, nobody has been notified yet.
  const ThreadState* const state = existing_thread_state();
  const auto watches = state ? state->language_watches : std::vector<LanguageWatch*>();
  active_ = language;
  Variant index(static_cast<long>(language));
  fire(kOnLanguageChange, static_cast<VARIANT>(index));
  for (const LanguageWatch* watch : watches) watch->notify();
}

STDMETHODIMP CLanguages::Add(VARIANT key, BSTR name, short picture_id, BSTR extension,
                             _CLanguage** result) noexcept {
  return method_with_result(result, [&] {
    auto language = language_at(list_.size() + 1, name, picture_id, extension);
    call<_CLanguage>(language.get(), &_CLanguage::put_Key, key);
    list_.append(language, optional_text(key));
    return language;
  });
}

STDMETHODIMP CLanguages::RegisterLanguages(short* result) noexcept {
  return method_with_result(result, [&] {
    register_all();
    return list_.size();
  });
}

STDMETHODIMP CLanguages::get_ActiveLanguageID(pvLanguageTypes* result) noexcept {
  return method_with_result(result, [&] { return active_; });
}

STDMETHODIMP CLanguages::put_ActiveLanguageID(pvLanguageTypes value) noexcept {
  return method([&] { activate(value); });
}

STDMETHODIMP CLanguages::get_ActiveLanguage(_CLanguage** result) noexcept {
  return method_with_result(result, [&] { return list_.at(static_cast<long>(active_)); });
}

}  // namespace pv
