#include "util/CLanguages.h"

#include "com/fetch.h"
#include "com/thread_state.h"
#include "util/localized.h"

namespace pv {
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

}  // namespace

CLanguages::CLanguages() { register_all(); }

Ref<CLanguage> CLanguages::add(std::wstring_view key, BSTR name, short picture_id, BSTR extension) {
  const auto language = make<CLanguage>();
  call<_CLanguage>(language.get(), &_CLanguage::put_Name, name);
  call<_CLanguage>(language.get(), &_CLanguage::put_PictureID, picture_id);
  call<_CLanguage>(language.get(), &_CLanguage::put_Extension, extension);
  call<_CLanguage>(language.get(), &_CLanguage::put_Index, static_cast<short>(list_.size() + 1));
  list_.append(language, key);
  return language;
}

void CLanguages::register_all() {
  list_.clear();
  for (const Registered& language : kLanguages) {
    add({}, Bstr(language.name), language.picture_id, Bstr(language.extension));
  }
  activate(pvEnglish);
}

void CLanguages::activate(pvLanguageTypes language) {
  active_ = language;
  Variant index(static_cast<long>(language));
  fire(kOnLanguageChange, static_cast<VARIANT>(index));
  if (const ThreadState* state = existing_thread_state()) {
    const auto watches = state->language_watches;
    for (const LanguageWatch* watch : watches) watch->notify();
  }
}

STDMETHODIMP CLanguages::Add(VARIANT key, BSTR name, short picture_id, BSTR extension,
                             _CLanguage** result) noexcept {
  return returning(result, [&] {
    const auto language = add(optional_text(key), name, picture_id, extension);
    call<_CLanguage>(language.get(), &_CLanguage::put_Key, key);
    return language;
  });
}

STDMETHODIMP CLanguages::RegisterLanguages(short* result) noexcept {
  return returning(result, [&] {
    register_all();
    return list_.size();
  });
}

STDMETHODIMP CLanguages::get_ActiveLanguageID(pvLanguageTypes* result) noexcept {
  return returning(result, [&] { return active_; });
}

STDMETHODIMP CLanguages::put_ActiveLanguageID(pvLanguageTypes value) noexcept {
  return doing([&] { activate(value); });
}

STDMETHODIMP CLanguages::get_ActiveLanguage(_CLanguage** result) noexcept {
  return returning(result, [&] { return list_.at(static_cast<long>(active_)); });
}

}  // namespace pv
