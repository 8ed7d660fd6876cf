// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CDListMember.h"

#include "com/text_properties.h"
#include "core/text/settings_text.h"

namespace pv {

template ClassEntry class_entry<CDListMember>();

namespace {

constexpr std::size_t kFields = 3;

}  // namespace

STDMETHODIMP CDListMember::Load(VARIANT members, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    std::wstring text;
    if (!attempt([&] { text = to_text(dereferenced(members)); })) return false;
    const bool complete = split_record(text, kRecordSeparator, kFields).size() == kFields;
    record_ = parse_list_member(text, record_);
    return complete;
  });
}

STDMETHODIMP CDListMember::Save(BSTR* result) noexcept {
  return method_with_result(result, [&] { return format_list_member(record_); });
}

STDMETHODIMP CDListMember::Copy(_CDListMember* dest, _CDListMember** result) noexcept {
  return method_with_result(result, [&] {
    put_together<_CDListMember>(
        dest, {{&_CDListMember::get_Key, &_CDListMember::put_Key, record_.key},
               {&_CDListMember::get_Caption, &_CDListMember::put_Caption, record_.caption},
               {&_CDListMember::get_Tag, &_CDListMember::put_Tag, record_.tag}});
    return Ref<_CDListMember>(dest);
  });
}

}  // namespace pv
